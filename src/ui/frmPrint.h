#pragma once

#include "reports/ReportSelection.h"

#include <QDialog>

#include <array>

class Browser;
class ProgramFolder;
class Prompt;
class PlateChoice;
class QCheckBox;
class QPushButton;
class QRadioButton;
class RecordSet;
class Workbench;

// "Generate Report": the choice of what to report (a plate or the whole of the open run, or
// a client group in the open run, a saved run or a date range), the style, replicates and
// sorting; OK makes the report and opens it in the browser. The logic is ReportSelection;
// this window shows its state and forwards the clicks.
class frmPrint : public QDialog {
    Q_OBJECT
public:
    frmPrint(const ProgramFolder &folder, Prompt &prompt, Browser &browser, QWidget *parent = nullptr);

    void setRunName(const QString &name) { mSelection.setRunName(name); }
    void setPlatesRecord(const RecordSet &plates) { mSelection.setPlatesRecord(plates); }
    // The load: lists from the database and the first options. exec() runs it when it
    // hasn't run; it throws when the database can't be read.
    void load();
    int exec() override;

    ReportSelection &selection() { return mSelection; }

    // The menu entry "Generate Report": stores the plate on screen, hands the dialog the
    // run's name and plates, and shows it modally. Failures of the load throw, for the
    // main window's command boundary.
    static void generateReport(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent);

private:
    void buildUi();
    void showState();
    void onOk();

    ReportSelection mSelection;
    Prompt &mPrompt;
    bool mLoaded = false;

    PlateChoice *mChoice = nullptr;
    std::array<QRadioButton *, 2> optStyle{};
    std::array<QRadioButton *, 2> optReplicates{};
    std::array<QRadioButton *, 2> optSort{};
    QCheckBox *chkSeparateGroups = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
