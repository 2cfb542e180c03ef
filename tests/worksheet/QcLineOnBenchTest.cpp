// The quality-control line of the plate on screen: shown after an evaluation when the kit
// has a guide set, beside an unchanged verdict of the kit.
#include "WorkbenchFixture.h"

#include "store/DbConnection.h"
#include "tracking/GuideSetStore.h"

#include <gtest/gtest.h>

TEST(QcLineOnTheBench, JudgesAReadPlateAgainstTheGuideSetAndLeavesTheVerdictAlone)
{
    WorkbenchFixture f;
    Workbench &wb = f.start();
    const QString kit = QStringLiteral("Orvexa 412");
    wb.selectComboIndex(Workbench::Tests, wb.combo(Workbench::Tests).findText(kit));
    const char *samples[] = {"NC", "NC", "PC", "PC"};
    const double ods[] = {1.5, 1.5, 0.3, 0.3};
    for (int k = 0; k < 4; ++k) {
        wb.sheet().setTextAt(PlateSheet::Samples, k, QString::fromLatin1(samples[k]));
        wb.sheet().setRawODAt(k, ods[k]);
    }
    wb.plates().setValue(u"DateRead", QDate(2024, 3, 1));
    wb.plates().setValue(u"FilterUsed", 630);
    wb.plates().setValue(u"LastVersionValidated", Workbench::kVersion);

    wb.evaluatePlate();
    EXPECT_EQ(wb.qcLine(), QString()); // no guide set: no line
    const QString verdict = wb.validationText(0);

    GuideSet set;
    set.testName = kit;
    set.quantity = QStringLiteral("NC");
    set.mean = 1.0;
    set.sd = 0.1;
    set.start = QDate(2024, 1, 1);
    GuideSetStore::add(DbConnection(f.folder.databaseLocation()), set);
    wb.evaluatePlate();
    EXPECT_EQ(wb.qcLine(), QStringLiteral("QC rejected: 1-3s NC"));
    EXPECT_TRUE(wb.qcToolTip().contains(QStringLiteral("NC 1.500: 5.00 SD from 1.000")))
        << wb.qcToolTip().toStdString();
    EXPECT_EQ(wb.validationText(0), verdict);
}
