// The evaluation on the main window's work in hand: the plate on screen goes in, and the
// outcome comes back onto it (stamps, flags, ODs, results, boxes, panel, messages), on a
// new evaluation, a refresh and Recheck Controls. The rules themselves are tested on the
// plate alone.

#include "QtPrinters.h"
#include "TestPlate.h"
#include "WorkbenchFixture.h"

#include "evaluation/TestKit.h"

#include <gtest/gtest.h>

namespace {

const QString kControlsBox = QStringLiteral("Abnormal Controls Detected");
const QString kBlanksBox = QStringLiteral("Abnormal Blanks Excluded");

// The work in hand with a plate of the test laid out and read.
class BenchPlate {
public:
    explicit BenchPlate(const QString &testName) : wb(f.start())
    {
        wb.selectComboIndex(Workbench::Tests, wb.combo(Workbench::Tests).findText(testName));
    }

    WorkbenchFixture f;
    Workbench &wb;

    void put(const char *at, const QString &sample, double rawOD)
    {
        wb.sheet().setTextAt(PlateSheet::Samples, TestPlate::well(at), sample);
        wb.sheet().setRawODAt(TestPlate::well(at), rawOD);
    }
    void put(std::initializer_list<const char *> at, const QString &sample, std::initializer_list<double> rawODs)
    {
        auto od = rawODs.begin();
        for (const char *w : at)
            put(w, sample, *od++);
    }
    void read(const QString &filter = QStringLiteral("450"))
    {
        wb.plates().setValue(u"FilterUsed", filter);
        wb.plates().setValue(u"DateRead", QDate(2026, 11, 23));
    }
    qint16 flag(const char *at) const { return wb.sheet().inclusionFlagAt(TestPlate::well(at)); }
    bool marked(const char *at) const
    {
        const int k = TestPlate::well(at);
        return wb.sheet().isMarked(wells::row(k), wells::col(k));
    }
    const SheetCell &cell(int sheet, const char *at) const
    {
        const int k = TestPlate::well(at);
        return wb.sheet().cell(sheet, wells::row(k), wells::col(k));
    }
    QStringList boxTitles() const
    {
        QStringList titles;
        for (const PromptBox &box : f.prompt.boxes())
            titles << box.title;
        return titles;
    }
    QString verdict() const
    {
        for (int box = 1; box < 4; ++box)
            EXPECT_EQ(wb.validationText(box), wb.validationText(0)) << "box " << box;
        return wb.validationText(0);
    }
};

} // namespace

TEST(EvaluationOnBench, AFirstEvaluationIsShownWhole)
{
    BenchPlate p(kJmv2);
    layOutJmv2Plate(p);
    p.put({"F1", "G1", "H1", "A3"}, QStringLiteral("PC"), {1.0, 1.0, 1.0, 3.0}); // an outlier
    p.put("B3", QStringLiteral("BLANK"), 0.2);                                   // an abnormal blank
    p.read();
    p.wb.plates().setValue(u"TestName", QStringLiteral("Generic"));
    p.wb.setDirty(false);

    EXPECT_TRUE(p.wb.evaluatePlate());
    EXPECT_EQ(p.wb.plates().text(u"LastVersionValidated"), QStringLiteral("1.5.4"));
    EXPECT_EQ(p.wb.plates().text(u"TestName"), kJmv2);
    EXPECT_TRUE(p.wb.isDirty());
    EXPECT_EQ(p.verdict(), kJmv2Passed);
    EXPECT_EQ(p.cell(PlateSheet::ODs, "A2").text, QStringLiteral("1.200"));
    EXPECT_EQ(p.cell(PlateSheet::Results, "A2").text, QStringLiteral("POS"));
    EXPECT_EQ(p.cell(PlateSheet::Results, "A2").foreColour, 255u);
    EXPECT_TRUE(p.marked("A3"));
    EXPECT_TRUE(p.marked("B3"));
    EXPECT_EQ(p.wb.testPanel().pcCurrent, QStringLiteral("6"));
    EXPECT_EQ(p.boxTitles(), (QStringList{kBlanksBox, kControlsBox}));
}

// A plate never read is not evaluated: a refresh only empties the boxes, Recheck Controls
// leaves the flags, and neither stamps the plate nor marks the run changed.
TEST(EvaluationOnBench, APlateNeverReadIsNotEvaluated)
{
    BenchPlate p(kJmv2);
    layOutJmv2Plate(p);
    p.wb.sheet().setInclusionFlagAt(TestPlate::well("B1"), 0);
    p.wb.setValidationBoxes(QStringLiteral("old text"));
    p.wb.setDirty(false);
    p.wb.refreshEvaluation();
    EXPECT_EQ(p.verdict(), QString());
    EXPECT_EQ(p.cell(PlateSheet::ODs, "A1").text, QString());
    p.wb.reCheckControls();
    EXPECT_EQ(p.flag("B1"), 0);
    EXPECT_TRUE(p.wb.plates().text(u"LastVersionValidated").isEmpty());
    EXPECT_FALSE(p.wb.isDirty());
}

TEST(EvaluationOnBench, AFailureAfterAPassEmptiesTheResultsAndTheirLook)
{
    BenchPlate p(kJmv2);
    layOutJmv2Plate(p);
    p.read();
    ASSERT_TRUE(p.wb.evaluatePlate());
    p.wb.sheet().setRawODAt(TestPlate::well("H12"), 3.001);
    p.wb.refreshEvaluation();
    EXPECT_EQ(p.verdict(), QStringLiteral("VALIDATION FAILED:  ODs out of expected range."));
    EXPECT_EQ(p.cell(PlateSheet::Results, "A2").text, QString());
    EXPECT_FALSE(p.cell(PlateSheet::Results, "A2").bold);
    EXPECT_EQ(p.cell(PlateSheet::ODs, "A2").text, QStringLiteral("1.200"));
}

TEST(EvaluationOnBench, AnErrorComesAfterWhatWasDoneBeforeIt)
{
    // The Generic kit cannot say whether it is current: the failure stays in the boxes.
    BenchPlate p(QStringLiteral("Generic"));
    layOutJmv2Plate(p);
    p.put("F1", QStringLiteral("BLANK"), 0.2);
    p.read(QStringLiteral("2001"));
    EXPECT_THROW(p.wb.evaluatePlate(), MissingKitOperation);
    EXPECT_EQ(p.verdict(), QStringLiteral("VALIDATION FAILED:  Filter used is not within specified range for test."));
    EXPECT_EQ(p.cell(PlateSheet::ODs, "A2").text, QStringLiteral("1.200")); // the blank is out
    EXPECT_TRUE(p.marked("F1"));
    EXPECT_EQ(p.boxTitles(), QStringList{kBlanksBox});
}

TEST(RecheckControls, PutsEveryWellBackAndSearchesAgain)
{
    BenchPlate p(kJmv2);
    p.put({"A1", "B1", "C1", "D1"}, QStringLiteral("PC"), {1.0, 1.0, 1.0, 3.0});
    p.put({"E1", "F1"}, QStringLiteral("NC"), {0.1, 0.1});
    p.read();
    p.wb.evaluatePlate();
    ASSERT_EQ(p.flag("D1"), 0);

    // The technician keeps the outlier and throws out an NC by hand.
    p.wb.sheet().setInclusionFlagAt(TestPlate::well("D1"), 2);
    p.wb.sheet().setInclusionFlagAt(TestPlate::well("F1"), 0);
    p.f.prompt.clearBoxes();
    p.wb.reCheckControls();
    EXPECT_EQ(p.flag("D1"), 0);
    EXPECT_EQ(p.flag("F1"), 1);
    EXPECT_FALSE(p.marked("F1"));
    EXPECT_EQ(p.boxTitles(), QStringList{kControlsBox});
    EXPECT_EQ(p.verdict(), crlf({"TEST VALIDATION PASSED", "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.000"}));
}
