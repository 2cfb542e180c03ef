// The printed plate map, written as a PDF and read back with pdftotext; the template
// manager through its widgets.
#include "FakePrompt.h"
#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "core/WellList.h"
#include "store/clsPlates.h"
#include "ui/PlateMapPrinter.h"
#include "ui/frmLayoutTemplates.h"
#include "worksheet/PlateTemplates.h"

#include <QListWidget>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString run(const QString &program, const QStringList &args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(60000))
        return QString();
    return QString::fromUtf8(p.readAllStandardOutput());
}

// Two plates: the first with a control excluded, a long sample name and a long group name.
QList<PlateMapPage> twoPages()
{
    RecordSet plates = clsPlates::getNewPlateRecordSet(1);
    QStringList groups(96), samples(96);
    samples[0] = QStringLiteral("PC");
    samples[1] = QStringLiteral("NC");
    samples[wells::index(2, 3)] = QStringLiteral("Cow 7");
    groups[wells::index(2, 3)] = QStringLiteral("Farm");
    samples[wells::index(8, 12)] = QStringLiteral("Heifer from the northern pasture, tag 4471-B, second bleed");
    groups[wells::index(8, 12)] = QStringLiteral("Cooperative of the Eastern Valley Dairy Farmers");
    QStringList flags(96, QStringLiteral("1"));
    flags[1] = QStringLiteral("0");
    plates.setValue(u"Groups", joinWellList(groups));
    plates.setValue(u"Samples", joinWellList(samples));
    plates.setValue(u"IncludeExcludeFlags", joinWellList(flags));
    plates.setValue(u"CurrentTest", QStringLiteral("Generic"));
    plates.setValue(u"LotNumber", QStringLiteral("L-42"));
    plates.setValue(u"TechName", QStringLiteral("Ada"));
    QList<PlateMapPage> pages{PlateMap::fromRecord(plates, QStringLiteral("Spring Run"), QStringLiteral("2026-11-24"))};
    clsPlates::addDefaultPlate(plates, 2, QStringLiteral("Plate #2"), 1);
    pages << PlateMap::fromRecord(plates, QStringLiteral("Spring Run"), QStringLiteral("2026-11-24"));
    return pages;
}

} // namespace

TEST(PlateMapPdf, OnePagePerPlateOnA4AndLetterWithShortenedNamesListedInFull)
{
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        GTEST_SKIP() << "pdftotext (poppler-utils) is not installed; scripts/setup installs it";
    const QList<PlateMapPage> pages = twoPages();
    EXPECT_TRUE(pages[0].wells[1].excluded);
    EXPECT_FALSE(pages[0].wells[0].excluded);
    QTemporaryDir dir;
    for (const QPageSize::PageSizeId size : {QPageSize::A4, QPageSize::Letter}) {
        SCOPED_TRACE(int(size));
        const QString pdf = dir.filePath(QStringLiteral("map%1.pdf").arg(int(size)));
        QString error;
        ASSERT_TRUE(PlateMapPrinter::writePdf(pdf, pages, size, &error)) << error.toStdString();

        const QString info = run(QStringLiteral("pdfinfo"), {pdf});
        EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+2\\n")))) << info.toStdString();
        EXPECT_TRUE(info.contains(QStringLiteral("(landscape)")) ||
                    info.contains(size == QPageSize::A4 ? "842 x 595" : "792 x 612"))
            << info.toStdString();

        const QString first =
            run(QStringLiteral("pdftotext"), {QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-l"),
                                              QStringLiteral("1"), pdf, QStringLiteral("-")});
        for (const char *text : {"Plate map: Plate #1", "Run: Spring Run", "Test: Generic", "Lot: L-42",
                                 "Technician: Ada", "Date: 2026-11-24", "Cow 7", "Farm", "excluded", "Shortened names",
                                 "H12 sample: Heifer from the northern pasture, tag 4471-B, second bleed",
                                 "H12 group: Cooperative of the Eastern Valley Dairy Farmers"})
            EXPECT_TRUE(first.contains(QString::fromUtf8(text))) << text << "\n" << first.toStdString();
        // The well shows the shortened form, marked as shortened.
        EXPECT_TRUE(first.contains(QChar(0x2026)));
        const QString second =
            run(QStringLiteral("pdftotext"), {QStringLiteral("-f"), QStringLiteral("2"), pdf, QStringLiteral("-")});
        EXPECT_TRUE(second.contains(QStringLiteral("Plate map: Plate #2")));
        EXPECT_FALSE(second.contains(QStringLiteral("Shortened names")));
    }
}

TEST(TemplateManager, RenamesAndDeletesThroughItsWidgets)
{
    WorkbenchFixture f;
    f.start();
    FakeWorksheetDialogs dialogs;
    f.wb->setWorksheetDialogs(dialogs);
    PlateTemplates templates(*f.wb);
    ASSERT_TRUE(templates.saveAsTemplate(QStringLiteral("Beta")));
    ASSERT_TRUE(templates.saveAsTemplate(QStringLiteral("alpha")));

    frmLayoutTemplates form(templates);
    form.show();
    QListWidget *list = form.list();
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("alpha"));
    list->setCurrentRow(1);
    form.renameSelected(QStringLiteral("Gamma"));
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("Gamma"));
    EXPECT_EQ(list->currentItem()->text(), QStringLiteral("Gamma"));
    f.prompt.queueAnswer(MsgAnswer::Yes);
    form.deleteSelected();
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(templates.names(), QStringList{QStringLiteral("alpha")});
}
