#include "worksheet/Workbench.h"

#include "evaluation/PlateEvaluator.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"

#include <exception>

void Workbench::refreshEvaluation()
{
    if (plateVersion().isEmpty())
        setValidationBoxes(QString());
    else
        evaluatePlate();
}

PlateInput Workbench::plateInput() const
{
    PlateInput input;
    input.testName = combo(Tests).text();
    input.version = plateVersion();
    for (int k = 0; k < wells::kCount; ++k) {
        input.rawODs[k] = mSheet.rawODAt(k);
        input.flags[k] = mSheet.inclusionFlagAt(k);
        input.samples[k] = mSheet.textAt(PlateSheet::Samples, k);
        input.groups[k] = mSheet.textAt(PlateSheet::Groups, k);
    }
    if (!mPlates.eof()) {
        input.filter = mPlates.text(u"FilterUsed");
        input.expDate = mPlates.value(u"ExpDate");
        input.dateRead = mPlates.value(u"DateRead");
    }
    input.today = mClock.now().date();
    return input;
}

bool Workbench::evaluatePlate()
{
    setDirty(true);
    const PlateInput input = plateInput();
    const PlateEvaluation evaluation = PlateEvaluator::evaluate(input);
    applyEvaluation(input, evaluation);
    refreshQcLine();
    return evaluation.passed;
}

void Workbench::applyEvaluation(const PlateInput &input, const PlateEvaluation &evaluation)
{
    if (mPlates.text(u"LastVersionValidated") != evaluation.version)
        mPlates.setValue(u"LastVersionValidated", evaluation.version);
    mPlates.setValue(u"TestName", input.testName);
    showPlateInfo();

    mSheet.beginUpdate();
    for (int k = 0; k < wells::kCount; ++k)
        mSheet.setInclusionFlagAt(k, evaluation.flags[k]);
    if (evaluation.adjustedODs) {
        for (int k = 0; k < wells::kCount; ++k)
            mSheet.setTextAt(PlateSheet::ODs, k, (*evaluation.adjustedODs)[k]);
    }
    if (evaluation.results) {
        for (int k = 0; k < wells::kCount; ++k) {
            const ResultCell &cell = (*evaluation.results)[k];
            mSheet.setStyle(PlateSheet::Results, wells::row(k), wells::col(k), cell.bold, cell.italic, cell.colour);
            mSheet.setTextAt(PlateSheet::Results, k, cell.text);
        }
    }
    mSheet.endUpdate();

    if (evaluation.controlsExcluded)
        refreshTestPanel(input.testName);
    if (evaluation.validation)
        setValidationBoxes(*evaluation.validation);
    if (evaluation.info)
        setValidationText(4, *evaluation.info);
    for (const ShownMessage &shown : evaluation.messages)
        mPrompt.message(shown.text, shown.title, shown.icon);
    if (evaluation.failure)
        std::rethrow_exception(evaluation.failure);
}
