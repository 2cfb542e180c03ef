// File > Export Results... through the real windows: the dialog's choices, the file in
// the documents folder named after the selection and the time, the status bar notice.
#include "FakeBrowser.h"
#include "PlateRecordBuilder.h"
#include "WorkbenchFixture.h"

#include "ui/frmExport.h"
#include "ui/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

TEST(ExportResultsWindow, TheRunGoesAsJsonToTheDocumentsFolderAndTheStatusBarSaysSo)
{
    WorkbenchFixture f;
    FakeBrowser browser;
    f.clock.set(QDateTime(QDate(2026, 11, 23), QTime(14, 5, 9)));
    f.start();
    frmMain window(*f.wb, f.prompt, browser);
    window.show();
    TestPlate read;
    read.testName = QStringLiteral("Generic");
    read.dateRead = QDate(2026, 11, 23);
    read.timeRead = QTime(9, 30);
    read.wells = {{QStringLiteral("A1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.500"), QString()}},
                  {QStringLiteral("B1"),
                   {QStringLiteral("Cow 1"), QStringLiteral("Herd A"), QStringLiteral("0.250"), QString()}}};
    f.wb->plates() = plateRecordSet({read});
    f.wb->loadPlateRecord();

    bool exported = false;
    QTimer::singleShot(0, &window, [&exported] {
        for (QWidget *w : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<frmExport *>(w);
            if (!dialog || !dialog->isVisible())
                continue;
            dialog->findChild<QRadioButton *>(QStringLiteral("optReport_1"))->click();
            dialog->findChild<QRadioButton *>(QStringLiteral("optFormat_2"))->click();
            dialog->findChild<QCheckBox *>(QStringLiteral("chkControls"))->click();
            dialog->findChild<QPushButton *>(QStringLiteral("cmdOK"))->click();
            exported = !dialog->isVisible();
            if (dialog->isVisible())
                dialog->reject();
        }
    });
    window.findChild<QAction *>(QStringLiteral("mnuFileExportResults"))->trigger();
    ASSERT_TRUE(exported) << (f.prompt.count() ? f.prompt.boxes().last().text.toStdString() : std::string());

    const QString path =
        QDir(f.folder.documentsPath()).filePath(QStringLiteral("Results - No Name - 2026-11-23 14-05-09.json"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonArray rows = QJsonDocument::fromJson(file.readAll()).array();
    ASSERT_EQ(rows.size(), 1); // the sample; the control was left out
    EXPECT_EQ(rows[0][u"sample"].toString(), u"Cow 1");
    EXPECT_EQ(window.findChild<QLabel *>(QStringLiteral("sbNotice"))->text(),
              QStringLiteral("Results of 1 plate (1 row) exported as JSON to ") + QDir::toNativeSeparators(path));
}
