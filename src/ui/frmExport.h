#pragma once

#include "reports/ExportSelection.h"

#include <QDialog>

#include <array>

class Browser;
class ProgramFolder;
class Prompt;
class PlateChoice;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class Workbench;

// "Export Results": the plates (as the report dialog chooses them), the format, whether
// the controls go along, and the file. The logic is ExportSelection; this window shows
// its state and forwards the user's changes.
class frmExport : public QDialog {
    Q_OBJECT
public:
    frmExport(const ProgramFolder &folder, Prompt &prompt, Browser &browser, QWidget *parent = nullptr);

    ExportSelection &logic() { return mLogic; }
    void load(const QDateTime &when);

    // File > Export Results...: stores the plate on screen, shows the dialog, and puts
    // what was written in the status bar.
    static void exportResults(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent);

private:
    void buildUi();
    void showState();
    void onOk();

    ExportSelection mLogic;
    Prompt &mPrompt;
    PlateChoice *mChoice = nullptr;
    std::array<QRadioButton *, 4> optFormat{};
    QCheckBox *chkControls = nullptr;
    QLineEdit *txtFile = nullptr;
    QPushButton *cmdBrowse = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
