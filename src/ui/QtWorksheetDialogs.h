#pragma once

#include "worksheet/WorksheetDialogs.h"

class ProgramFolder;
class Prompt;
class QWidget;
class Workbench;

// The real dialogs of layout editing and the plate list, modal to the main window. When
// one closes, the keyboard goes back to the grid the work came from (never to whatever
// widget comes first in the window, such as the test's combo box).
class QtWorksheetDialogs : public WorksheetDialogs {
public:
    QtWorksheetDialogs(Workbench &workbench, QWidget *parent) : mWb(workbench), mParent(parent) {}

    GroupQueryAnswer askNewGroup() override;
    QString addGroupNamed(const QString &name) override;
    QString chooseGroup() override;
    AddSamplesRequest addSamples(int sampleMax) override;
    void editPlates(PlatesEditLogic &logic) override;

private:
    // Shows the dialog modally; then the grid takes the focus back.
    int execOver(class QDialog &dialog);

    Workbench &mWb;
    QWidget *mParent;
};
