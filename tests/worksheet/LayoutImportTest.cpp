// Laying a layout out on the plate on screen: an imported file, a template; the command
// line's layout command.
#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "core/WellList.h"
#include "store/LayoutTemplates.h"
#include "worksheet/LayoutImport.h"
#include "worksheet/PlateTemplates.h"
#include "worksheet/SheetClipboard.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr int A1 = 0, B1 = 1, B3 = wells::index(2, 3);

struct ImportFixture : WorkbenchFixture {
    FakeWorksheetDialogs dialogs;
    QTemporaryDir dir;

    ImportFixture()
    {
        start();
        wb->setWorksheetDialogs(dialogs);
        folder.addGroup(QStringLiteral("Farm"));
    }
    QString file(const QByteArray &content, const QString &name = QStringLiteral("list.csv"))
    {
        QFile f(dir.filePath(name));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
        return f.fileName();
    }
    QString sample(int well) const { return wb->sheet().textAt(PlateSheet::Samples, well); }
    QString group(int well) const { return wb->sheet().textAt(PlateSheet::Groups, well); }
    // A plate with a cow in A1 and an excluded PC in B1, after one edit.
    void layOutStart()
    {
        PlateSheet &s = wb->sheet();
        s.setTextAt(PlateSheet::Samples, A1, QStringLiteral("Cow"));
        for (int sheet : {PlateSheet::Groups, PlateSheet::Samples})
            s.setTextAt(sheet, B1, QStringLiteral("PC"));
        s.setInclusionFlagAt(B1, 0);
    }
};

} // namespace

TEST(ImportLayout, IsOneUndoableChangeOverTheWellsItNames)
{
    ImportFixture f;
    f.layOutStart();
    // "farm" is the known group in another case; "New Farm" is added through the question.
    f.dialogs.groupAnswers = {GroupQueryAnswer::Yes};
    ASSERT_TRUE(LayoutImport(*f.wb).importFile(
        f.file("Well,Sample,Group\nB1,nc,\nB3,Cow 7,farm\nC3,Cow 8,New Farm\nD3,Cow 9,New Farm\n")));
    EXPECT_EQ(f.sample(A1), QStringLiteral("Cow")); // not named: kept
    EXPECT_EQ(f.sample(B1), QStringLiteral("NC"));
    EXPECT_EQ(f.group(B1), QStringLiteral("NC"));
    EXPECT_EQ(f.wb->sheet().inclusionFlagAt(B1), 1);
    EXPECT_EQ(f.group(B3), QStringLiteral("Farm"));
    EXPECT_EQ(f.group(wells::index(4, 3)), QStringLiteral("New Farm"));
    EXPECT_EQ(f.dialogs.groupQuestions, 1); // once per name, not per well
    EXPECT_EQ(f.wb->testPanel().ncCurrent, QStringLiteral("1"));
    EXPECT_TRUE(f.wb->isDirty());
    ASSERT_TRUE(f.wb->undoEnabled());

    // Undo brings back the plate as it was, the excluded control with it.
    SheetClipboard(*f.wb).undo();
    EXPECT_EQ(f.sample(B1), QStringLiteral("PC"));
    EXPECT_EQ(f.wb->sheet().inclusionFlagAt(B1), 0);
    EXPECT_EQ(f.sample(B3), QString());
    EXPECT_FALSE(f.wb->undoEnabled());
}

TEST(ImportLayout, ACancelledGroupQuestionOrARefusedFileLeavesThePlateAsItWas)
{
    ImportFixture f;
    f.layOutStart();
    const QStringList before = f.wb->sheet().sheetTexts(PlateSheet::Samples);
    f.dialogs.groupAnswers = {GroupQueryAnswer::Cancel};
    EXPECT_FALSE(LayoutImport(*f.wb).importFile(f.file("A1,Cow 1,Farm\nA2,Cow 2,Unknown\n")));
    EXPECT_FALSE(LayoutImport(*f.wb).importFile(f.file("A1,Cow 1\nA1,Cow 2\n")));
    EXPECT_EQ(f.wb->sheet().sheetTexts(PlateSheet::Samples), before);
    EXPECT_TRUE(f.wb->undoStack().isEmpty());
    ASSERT_EQ(f.prompt.count(), 1);
    EXPECT_EQ(f.prompt.boxes()[0].title, LayoutImport::kTitle);
    EXPECT_EQ(f.prompt.boxes()[0].text,
              QStringLiteral("The layout in \"list.csv\" can't be imported:\r\nLine 2, field 1: well A1 is given twice "
                             "(first at line 1, field 1).\r\n\r\nThe plate is left as it was."));
}

TEST(LayoutTemplate, RoundTripsThroughTheDatabaseAndOntoANewPlate)
{
    ImportFixture f;
    f.layOutStart();
    f.wb->sheet().setTextAt(PlateSheet::Groups, A1, QStringLiteral("Farm"));
    PlateTemplates templates(*f.wb);
    ASSERT_TRUE(templates.saveAsTemplate(QStringLiteral(" Daily ")));

    // A taken name is replaced only on Yes; a bad name is refused with a box.
    f.prompt.queueAnswer(MsgAnswer::No);
    EXPECT_FALSE(templates.saveAsTemplate(QStringLiteral("DAILY")));
    EXPECT_FALSE(templates.saveAsTemplate(QStringLiteral("a\u00acb")));
    EXPECT_EQ(f.prompt.boxes().last().text, QStringLiteral("A template's name can't hold the character \"\u00ac\"."));

    ASSERT_TRUE(templates.newPlateFromTemplate(QStringLiteral("daily")));
    EXPECT_EQ(f.wb->plates().recordCount(), 2);
    EXPECT_EQ(f.wb->combo(Workbench::Plates).text(), QStringLiteral("New Plate 1"));
    EXPECT_EQ(f.sample(A1), QStringLiteral("Cow"));
    EXPECT_EQ(f.group(A1), QStringLiteral("Farm"));
    EXPECT_EQ(f.sample(B1), QStringLiteral("PC"));
    // A template keeps no exclusions: the control is included on the new plate.
    EXPECT_EQ(f.wb->sheet().inclusionFlagAt(B1), 1);

    // A rename onto another template's name is refused; a template gone is told.
    ASSERT_TRUE(templates.saveAsTemplate(QStringLiteral("Other")));
    EXPECT_FALSE(templates.renameTemplate(QStringLiteral("Daily"), QStringLiteral("other")));
    EXPECT_EQ(f.prompt.boxes().last().text,
              QStringLiteral("A template named \"Other\" exists already.  Please choose another name."));
    EXPECT_FALSE(templates.applyTemplate(QStringLiteral("Weekly")));
    EXPECT_EQ(f.prompt.boxes().last().text, QStringLiteral("There is no template named \"Weekly\" any more."));

    // A cancel at the question about a group the list doesn't have adds no plate.
    f.wb->sheet().setTextAt(PlateSheet::Groups, A1, QStringLiteral("Farm Nobody Knows"));
    ASSERT_TRUE(templates.saveAsTemplate(QStringLiteral("Stray")));
    f.dialogs.groupAnswers = {GroupQueryAnswer::Cancel};
    EXPECT_FALSE(templates.newPlateFromTemplate(QStringLiteral("Stray")));
    EXPECT_EQ(f.wb->plates().recordCount(), 2);
}

TEST(LayoutCommand, PrintsTheLayoutAsPlatesJson)
{
    QTemporaryDir dir;
    const QString csv = dir.filePath(QStringLiteral("lims.csv"));
    QFile f(csv);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("Well;Sample;Group\nA1;pc\nB3;Cow 7;Farm\n");
    f.close();
    QProcess p;
    p.start(
        QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli"),
        {QStringLiteral("layout"), QStringLiteral("--from"), csv, QStringLiteral("--test"), QStringLiteral("Generic")});
    ASSERT_TRUE(p.waitForFinished(60000));
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    const QJsonArray plates = QJsonDocument::fromJson(p.readAllStandardOutput()).object().value(u"plates").toArray();
    ASSERT_EQ(plates.size(), 1);
    const QJsonObject plate = plates[0].toObject();
    EXPECT_EQ(plate.value(u"TestName").toString(), QStringLiteral("Generic"));
    const QStringList samples = splitWellList(plate.value(u"Samples").toString());
    EXPECT_EQ(samples[A1], QStringLiteral("PC"));
    EXPECT_EQ(samples[B3], QStringLiteral("Cow 7"));
    EXPECT_EQ(splitWellList(plate.value(u"Groups").toString())[B3], QStringLiteral("Farm"));
}
