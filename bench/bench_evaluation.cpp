// Time of one full evaluation of a read 96-well plate: blanks, adjusted ODs, range and
// filter, the outlier search, required controls, expiry, the kit's rule and the result
// sheet.

#include "FakeClock.h"
#include "FakeRunDialogs.h"
#include "TempProgramFolder.h"

#include "core/Wells.h"
#include "evaluation/ValidationPipeline.h"
#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

// Boxes are dismissed at once and questions answered Yes: only the evaluation is timed.
class SilentPrompt : public Prompt {
public:
    void message(const QString &, const QString &, MsgIcon) override { ++mBoxes; }
    MsgAnswer ask(const QString &, const QString &, MsgButtons, MsgIcon) override
    {
        ++mBoxes;
        return MsgAnswer::Yes;
    }
    int boxes() const { return mBoxes; }

private:
    int mBoxes = 0;
};

// An Orvexa plate as a lab runs it: four PC and four NC with one far-off well each, two
// blanks, and 86 samples spread over the range of the kit.
class ReadPlate {
public:
    explicit ReadPlate(bool outliers)
    {
        mWb = std::make_unique<Workbench>(mFolder.folder(), mPrompt, mClock, mRunDialogs);
        mWb->load();
        mWb->selectComboIndex(Workbench::Tests, mWb->combo(Workbench::Tests).findText(QStringLiteral("Orvexa 412")));

        PlateSheet &sheet = mWb->sheet();
        auto put = [&](int k, const QString &sample, double od) {
            sheet.setTextAt(PlateSheet::Samples, k, sample);
            sheet.setRawODAt(k, od);
        };
        const double pc[] = {0.21, 0.19, 0.20, outliers ? 0.90 : 0.20};
        const double nc[] = {1.02, 0.98, 1.00, outliers ? 0.10 : 1.01};
        for (int i = 0; i < 4; ++i) {
            put(i, QStringLiteral("PC"), pc[i]);
            put(4 + i, QStringLiteral("NC"), nc[i]);
        }
        put(8, QStringLiteral("BLANK"), 0.04);
        put(9, QStringLiteral("BLANK"), 0.05);
        for (int k = 10; k < wells::kCount; ++k)
            put(k, QStringLiteral("Sample %1").arg(k - 9), 0.1 + (k % 23) * 0.05);

        RecordSet &plate = mWb->plates();
        plate.setValue(u"FilterUsed", QStringLiteral("630"));
        plate.setValue(u"DateRead", QDate(2026, 11, 23));
        plate.setValue(u"ExpDate", QDate(2027, 6, 30));
        plate.setValue(u"LastVersionValidated", QStringLiteral("1.5.4"));
    }

    // Puts the controls back, so that every evaluation searches and excludes anew.
    void includeControls()
    {
        for (int k = 0; k < 8; ++k)
            mWb->sheet().setInclusionFlagAt(k, 1);
    }

    Workbench &wb() { return *mWb; }
    int boxes() const { return mPrompt.boxes(); }

private:
    TempProgramFolder mFolder;
    SilentPrompt mPrompt;
    FakeClock mClock;
    FakeRunDialogs mRunDialogs;
    std::unique_ptr<Workbench> mWb;
};

void evaluatePlate(benchmark::State &state, bool outliers)
{
    ReadPlate plate(outliers);
    ValidationPipeline pipeline(plate.wb());
    bool passed = false;
    for (auto _ : state) {
        plate.includeControls();
        passed = pipeline.evaluatePlate();
        benchmark::DoNotOptimize(passed);
    }
    if (!passed)
        state.SkipWithError("the plate did not pass");
    if (outliers && plate.boxes() == 0)
        state.SkipWithError("no control was found abnormal");
    state.counters["wells"] = wells::kCount;
}

void BM_EvaluatePlateWithOutliers(benchmark::State &state)
{
    evaluatePlate(state, true);
}

void BM_EvaluatePlateClean(benchmark::State &state)
{
    evaluatePlate(state, false);
}

} // namespace

BENCHMARK(BM_EvaluatePlateWithOutliers)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_EvaluatePlateClean)->Unit(benchmark::kMicrosecond);
