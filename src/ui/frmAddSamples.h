#pragma once

#include "worksheet/WorksheetDialogs.h"

#include <QDialog>

class Prompt;
class QComboBox;
class QLineEdit;

// Add Samples: a sample name, a group, how many and the first number. OK checks the
// entries and asks before wells may be overwritten.
class frmAddSamples : public QDialog {
    Q_OBJECT
public:
    frmAddSamples(Prompt &prompt, const QStringList &groupNames, QWidget *parent = nullptr);

    void setSampleMax(int n);
    bool wasOkPressed() const { return mRequest.ok; }
    AddSamplesRequest request() const { return mRequest; }
    QString getSampleName() const { return mRequest.sampleName; }
    QString getGroupName() const { return mRequest.groupName; }
    int getNumSamples() const { return mRequest.numSamples; }
    int getStartingNumber() const { return mRequest.startingNumber; }
    // Kept for the form's other callers; Add Samples itself doesn't use replicates.
    int getReplicates() const { return 1; }

private:
    void cmdOK_Click();

    Prompt &mPrompt;
    QLineEdit *txtSampleName;
    QComboBox *cboGroupNames;
    QComboBox *cboNumberOfSamples;
    QLineEdit *txtStartingNumber;
    AddSamplesRequest mRequest;
};
