#pragma once

#include "tracking/TrackControlsLogic.h"

#include <QDialog>

#include <array>

class Browser;
class Clock;
class ProgramFolder;
class Prompt;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class Workbench;

// "Generate Control Report": the kit, lot, technician and dates of the saved plates to
// track, and what the charts show; OK writes the tracking workbook and opens it, and the
// dialog stays for another. The logic is TrackControlsLogic; this window shows its state
// and forwards the clicks. A failure of OK is told in a critical box and the dialog stays.
class frmTrackControls : public QDialog {
    Q_OBJECT
public:
    frmTrackControls(const ProgramFolder &folder, Prompt &prompt, Browser &browser, const Clock &clock,
                     QWidget *parent = nullptr, TrackingWorkbook::WorkbookFactory newWorkbook = {});

    // The load: lists and dates from the database. exec() runs it when it hasn't run; it
    // throws when the database can't be read.
    void load();
    int exec() override;

    TrackControlsLogic &logic() { return mLogic; }
    // The workbook the last OK wrote; empty when none.
    QString lastWorkbook() const { return mLastWorkbook; }

    // The menu entry "Generate Control Report": shows the dialog modally. Failures of the
    // load throw, for the main window's command boundary.
    static void generateControlReport(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent);

private:
    void buildUi();
    void showState();
    void onOk();
    void onChartOption();
    bool eventFilter(QObject *watched, QEvent *event) override;

    TrackControlsLogic mLogic;
    Prompt &mPrompt;
    bool mLoaded = false;
    QString mLastWorkbook;

    QComboBox *cboTests = nullptr;
    QComboBox *cboLotNumbers = nullptr;
    QComboBox *cboTechnicians = nullptr;
    std::array<QLineEdit *, 2> txtMonthRange{};
    std::array<QLineEdit *, 2> txtDayRange{};
    std::array<QLineEdit *, 2> txtYearRange{};
    QCheckBox *chkPlateName = nullptr;
    QCheckBox *chkRunName = nullptr;
    QCheckBox *chkDate = nullptr;
    QCheckBox *chkTime = nullptr;
    QCheckBox *chkStdDev = nullptr;
    QCheckBox *chkWestgard = nullptr;
    QLabel *lblWarning = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
