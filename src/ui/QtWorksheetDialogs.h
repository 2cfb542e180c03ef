#pragma once

#include "worksheet/WorksheetDialogs.h"

class ProgramFolder;
class Prompt;
class QWidget;
class Workbench;

// The real dialogs of layout editing and the plate list, modal to the main window.
class QtWorksheetDialogs : public WorksheetDialogs {
public:
    QtWorksheetDialogs(Workbench &workbench, QWidget *parent) : mWb(workbench), mParent(parent) {}

    GroupQueryAnswer askNewGroup() override;
    QString addGroupNamed(const QString &name) override;
    QString chooseGroup() override;
    AddSamplesRequest addSamples(int sampleMax) override;
    void editPlates(PlatesEditLogic &logic) override;

private:
    Workbench &mWb;
    QWidget *mParent;
};
