#pragma once

#include <QString>

class PlatesEditLogic;

// The answer of the question "This appears to be a new group..."
enum class GroupQueryAnswer { Yes, No, Cancel };

// What the Add Samples dialog ended with. ok is false when it was cancelled.
struct AddSamplesRequest {
    bool ok = false;
    QString sampleName;
    QString groupName; // empty for "(No Group)"
    int numSamples = 0;
    int startingNumber = 1;
};

// The modal dialogs that layout editing and the plate list open, as the work in hand sees
// them. The window supplies real dialogs; tests supply scripted answers.
class WorksheetDialogs {
public:
    virtual ~WorksheetDialogs() = default;

    // "This appears to be a new group.  Do you want to add it to the group list?"
    virtual GroupQueryAnswer askNewGroup() = 0;
    // The add-group form with the name filled in; the name it ends with (the name as it was
    // set when the form was cancelled).
    virtual QString addGroupNamed(const QString &name) = 0;
    // The list of groups to choose from; empty when cancelled.
    virtual QString chooseGroup() = 0;
    // Add Samples, offering 1 to sampleMax samples.
    virtual AddSamplesRequest addSamples(int sampleMax) = 0;
    // The plate list dialog on the logic given (already prepared with the plates).
    virtual void editPlates(PlatesEditLogic &logic) = 0;
};

// Dialogs that answer as if each was cancelled at once.
class CancelledWorksheetDialogs : public WorksheetDialogs {
public:
    GroupQueryAnswer askNewGroup() override { return GroupQueryAnswer::Cancel; }
    QString addGroupNamed(const QString &name) override { return name; }
    QString chooseGroup() override { return QString(); }
    AddSamplesRequest addSamples(int) override { return {}; }
    void editPlates(PlatesEditLogic &) override {}
};
