// The QC window driven through its widgets: a guide set typed in (a bad SD refused first),
// the charts and the violations it gives, and one figured from the plates ticked.
#include "FakeClock.h"
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"
#include "SavedPlates.h"

#include "ui/frmQualityControl.h"

#include <QChartView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace {

TestPlate ncPlate(const char *name, const QDate &date, const char *nc, const char *pc)
{
    TestPlate p;
    p.plateName = QString::fromLatin1(name);
    p.testName = QStringLiteral("Orvexa 412");
    p.lotNumber = QStringLiteral("L-100");
    p.dateRead = date;
    p.timeRead = QTime(9, 0, 0);
    p.wells = {
        {QStringLiteral("A1"), TestWell{QStringLiteral("NC"), QString(), QString::fromLatin1(nc), QString(), 1}},
        {QStringLiteral("B1"), TestWell{QStringLiteral("PC"), QString(), QString::fromLatin1(pc), QString(), 1}}};
    return p;
}

} // namespace

TEST(QualityControlWindow, GuideSetsTypedInOrFiguredFromPlatesGiveTheChartsAndViolations)
{
    SavedPlates saved;
    saved.saveRun(QStringLiteral("Run"), {ncPlate("Plate A", QDate(2024, 1, 5), "1.000", "0.300"),
                                          ncPlate("Plate B", QDate(2024, 1, 6), "0.800", "0.340")});
    FakePrompt prompt;
    FakeClock clock{QDateTime(QDate(2024, 3, 9), QTime(10, 0, 0))};
    frmQualityControl window(saved.folder(), prompt, clock);
    window.load();
    window.show();
    window.findChild<QComboBox *>(QStringLiteral("cboTest"))->setCurrentText(QStringLiteral("Orvexa 412"));
    auto *notice = window.findChild<QLabel *>(QStringLiteral("lblNotice"));
    EXPECT_TRUE(notice->text().contains(QStringLiteral("no guide set")));

    auto *quantity = window.findChild<QComboBox *>(QStringLiteral("cboQuantity"));
    quantity->setCurrentText(QStringLiteral("NC"));
    window.findChild<QLineEdit *>(QStringLiteral("txtMean"))->setText(QStringLiteral("1.0"));
    auto *sd = window.findChild<QLineEdit *>(QStringLiteral("txtSD"));
    sd->setText(QStringLiteral("0"));
    auto *keep = window.findChild<QPushButton *>(QStringLiteral("cmdAddTyped"));
    QTest::mouseClick(keep, Qt::LeftButton);
    ASSERT_EQ(prompt.count(), 1);
    EXPECT_TRUE(prompt.last().text.contains(QStringLiteral("the SD must be above 0")));
    EXPECT_TRUE(notice->text().contains(QStringLiteral("no guide set")));

    sd->setText(QStringLiteral("0.1"));
    QTest::mouseClick(keep, Qt::LeftButton);
    EXPECT_EQ(prompt.count(), 1);
    EXPECT_TRUE(notice->text().isEmpty());
    auto *charts = window.findChild<QTabWidget *>(QStringLiteral("tabCharts"));
    ASSERT_EQ(charts->count(), 3);
    EXPECT_EQ(charts->tabText(2), QStringLiteral("%I"));
    // Plate B's NC at -2 SD: a warning, marked on the NC chart under its rule.
    auto *table = window.findChild<QTableWidget *>(QStringLiteral("tblViolations"));
    ASSERT_EQ(table->rowCount(), 1);
    EXPECT_EQ(table->item(0, 2)->text(), QStringLiteral("NC"));
    EXPECT_EQ(table->item(0, 3)->text(), QStringLiteral("1-2s"));
    EXPECT_EQ(table->item(0, 4)->text(), QStringLiteral("Warning"));
    QStringList series;
    for (QAbstractSeries *s : static_cast<QChartView *>(charts->widget(1))->chart()->series())
        series << s->name();
    EXPECT_TRUE(series.contains(QStringLiteral("1-2s"))) << series.join(u',').toStdString();

    // The PC of both plates ticked as a baseline: kept after the warning of a short baseline.
    quantity->setCurrentText(QStringLiteral("PC"));
    auto *plates = window.findChild<QListWidget *>(QStringLiteral("lstBaseline"));
    ASSERT_EQ(plates->count(), 2);
    for (int i = 0; i < 2; ++i)
        plates->item(i)->setCheckState(Qt::Checked);
    QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdFromBaseline")), Qt::LeftButton);
    ASSERT_EQ(prompt.count(), 2);
    EXPECT_TRUE(prompt.last().text.contains(QStringLiteral("figured from 2 plates")));
}
