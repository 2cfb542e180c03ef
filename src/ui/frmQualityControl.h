#pragma once

#include "tracking/QcWindowLogic.h"

#include <QDialog>

#include <optional>
#include <vector>

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTableWidget;
class Prompt;
class Workbench;

// The QC window (Tools > Quality Control...): a Levey-Jennings chart per quantity of the
// kit chosen, the violations table, and the guide-set editor. It shows what QcWindowLogic
// gathers and forwards the user's choices to it.
class frmQualityControl : public QDialog {
    Q_OBJECT
public:
    frmQualityControl(const ProgramFolder &folder, Prompt &prompt, const Clock &clock, QWidget *parent = nullptr);

    static void showQualityControl(Workbench &workbench, Prompt &prompt, QWidget *parent);

    // Loads the choices and shows the first kit.
    void load();

private:
    void buildUi();
    void refresh();
    void showView(const QcWindowLogic::View &view);
    void fillEditor();
    void addTyped();
    void addFromBaseline();
    void saveRules();
    GuideSetEditor::Entry entry() const;
    template <typename Fn> void guarded(Fn &&fn);

    QcWindowLogic mLogic;
    Prompt &mPrompt;
    std::vector<GuideSetEditor::Candidate> mCandidates;

    QComboBox *cboTest = nullptr;
    QComboBox *cboLot = nullptr;
    QDateEdit *dtFrom = nullptr;
    QDateEdit *dtTo = nullptr;
    QPushButton *cmdShow = nullptr;
    QLabel *lblNotice = nullptr;
    QTabWidget *tabCharts = nullptr;
    QTableWidget *tblViolations = nullptr;
    QComboBox *cboQuantity = nullptr;
    QLineEdit *txtGuideLot = nullptr;
    QDateEdit *dtGuideStart = nullptr;
    QLineEdit *txtMean = nullptr;
    QLineEdit *txtSD = nullptr;
    QLineEdit *txtSetBy = nullptr;
    QListWidget *lstBaseline = nullptr;
    QListWidget *lstRules = nullptr;
};
