#pragma once

#include <QString>

#include <vector>

class Workbench;

// The one order of steps that turns the raw ODs of the plate on screen into adjusted ODs,
// a verdict and results, and the control statistics it is built on. It works on the
// plate record, the sheets and the arrays of the work in hand, and shows its boxes
// through the work in hand's Prompt.
class ValidationPipeline {
public:
    static inline const QString kProgramVersion = QStringLiteral("1.5.4");

    explicit ValidationPipeline(Workbench &workbench) : mWb(workbench) {}

    // Control statistics, from the adjusted ODs as the OD sheet shows them, read back
    // through 32-bit floats. Wells count when their sample text equals the name exactly and
    // their flag isn't 0. No such well: the mean's critical box, then MathLibraryError 522.
    double getControlMean(const QString &name);
    double getControlCV(const QString &name);
    // Sets to 0 the flag of the n-th well (from 1) of that name whose flag is exactly 1.
    void excludeFromGrid(const QString &name, int n);
    // Mean raw OD of the blanks still counted; 0 when there are none.
    double getMeanBlank() const;

    // Re-evaluates a plate that was read; empties the validation boxes of one that wasn't.
    void refreshEvaluation();
    // Validates the plate and fills the result sheet on a pass (empties it on a failure);
    // true when the plate passed.
    bool evaluatePlate();
    bool validatePlate();
    void calculateResults(const QString &testName, double meanPC, double meanNC);
    bool plateWasValidated() const;
    bool excludeAbnormalBlanks();
    void showAdjustedODs();
    bool areODsInRange() const;
    bool excludeAbnormalControls(const QString &testName, const QString &name);
    // Before a read: warns of missing controls and a filter out of range; false when the
    // user chose not to read.
    bool confirmControlsBeforeRead();
    // "Recheck Controls": every flag back to 1 on a read plate, then a new evaluation.
    void cmdReCheckControls();
    void clearResults();
    void clearResultSheet();

private:
    std::vector<double> controlValues(const QString &name) const;
    // Shows a failure of the plate's common checks, with the note of an old plate's rules.
    void showFailureWithPinNote(const QString &failure, const QString &testName, const QString &version);

    Workbench &mWb;
};
