#pragma once

#include "evaluation/MessageLog.h"
#include "evaluation/PlateEvaluation.h"
#include "evaluation/PlateInput.h"
#include "evaluation/clsTests.h"

#include <QString>

#include <memory>
#include <vector>

class Prompt;

// The one order of steps that turns the raw ODs of a plate into adjusted ODs, a verdict
// and results: a function of the plate alone. The caller shows the outcome.
class PlateEvaluator {
public:
    static inline const QString kProgramVersion = QStringLiteral("1.5.4");

    // Evaluates a read plate: stamps it, excludes abnormal blanks and controls, adjusts the
    // ODs, validates it against its kit and, when it passes, works out the results. An
    // error inside is caught into the outcome's failure, with all done until then.
    static PlateEvaluation evaluate(const PlateInput &plate);

    // Before a read: warns of missing controls and of a filter out of the kit's range, and
    // asks whether to read all the same; false when the user chose not to read.
    static bool confirmControlsBeforeRead(const PlateInput &plate, qint16 filter, Prompt &prompt);

    // True when every raw OD lies within -1.0 to 3.0.
    static bool areODsInRange(const PlateInput &plate);

    // Control wells counted on a plate: sample text equal to the name in upper case, and
    // the well not excluded.
    static qint16 countControls(const PlateInput &plate, const std::array<qint16, wells::kCount> &flags,
                                const QString &name);

private:
    PlateEvaluator(const PlateInput &plate, PlateEvaluation &out);

    void run();
    bool validatePlate();
    void excludeAbnormalBlanks();
    double meanBlank() const;
    bool excludeAbnormalControls(const QString &name);
    void excludeFromGrid(const QString &name, int n);
    std::vector<double> controlValues(const QString &name) const;
    void calculateResults(double meanPC, double meanNC);
    // Shows a failure of the plate's common checks, with the note of an old plate's rules.
    void failWithPinNote(const QString &failure);
    const TestKit &kit();

    const PlateInput &mPlate;
    PlateEvaluation &mOut;
    MessageLog mLog;
    clsTests mTests;
    std::unique_ptr<TestKit> mKit;
    std::array<QString, wells::kCount> mODs;
    double mMeanPC = 0;
    double mMeanNC = 0;
};
