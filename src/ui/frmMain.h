#pragma once

#include <QMainWindow>

#include <array>
#include <functional>
#include <memory>

class Browser;
class Prompt;
class QAction;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;
class QTableView;
class QtWorksheetDialogs;
class SerialPort;
class SheetEditDelegate;
class SheetTableModel;
class Workbench;

// The main window: menus, tool bar, the five combo boxes, the four sheets of the plate on
// screen with their panels, the Info view and the status bar. It shows the state of the
// Workbench and forwards each command to it; a command that fails unexpectedly shows a
// critical box and leaves the program running.
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    frmMain(Workbench &workbench, Prompt &prompt, Browser &browser, QWidget *parent = nullptr);
    ~frmMain() override;

    Workbench &workbench() { return mWb; }
    QTableView *grid(int sheet) const { return fgDataSheet[sheet]; }
    QComboBox *combo(int which) const { return mCombos[which]; }

    // Runs a command at the window's boundary: an unexpected failure is told in a critical
    // box, and the program goes on.
    void runCommand(const std::function<void()> &command);

    // Commands that later parts of the program plug in (report, reader settings, ...).
    void setCommand(const QString &actionName, const std::function<void()> &command);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    void buildToolBar();
    void buildCentral();
    QWidget *buildSheetTab(int sheet);
    QWidget *buildInfoTab();
    void buildStatusBar();
    void wireWorkbench();

    void refreshCombos();
    void refreshStatus();
    void refreshPlateInfo();
    void refreshPanel();
    void refreshValidation();
    void refreshCompactLight();
    void refreshUndo();
    void onTabChanged(int tab);
    void onGridSelectionChanged(int sheet);
    void applySheetSelection();
    void focusGrid();
    void showHelp();
    int currentSheet() const;
    void onSheetKey(int sheet, int key, bool shift);
    void onCellEdited(int sheet, int row, int col, const QString &text);
    void showPopup(int row, int col, const QPoint &globalPos);
    void wireLayoutCommands();
    void exportODs();
    void readPlate();
    void showReaderSettings();
    SerialPort &serialPort();

    QAction *addMenuAction(QMenu *menu, const QString &objectName, const QString &caption,
                           const QKeySequence &key = QKeySequence());
    QAction *action(const QString &objectName) const;

    Workbench &mWb;
    Prompt &mPrompt;
    Browser &mBrowser;

    std::array<QComboBox *, 5> mCombos{};
    QTabWidget *ssDataSheetTab = nullptr;
    std::array<QTableView *, 4> fgDataSheet{};
    std::array<SheetTableModel *, 4> mModels{};
    std::array<SheetEditDelegate *, 2> mDelegates{};
    std::unique_ptr<QtWorksheetDialogs> mWorksheetDialogs;
    std::unique_ptr<SerialPort> mSerialPort; // the serial line to the reader, kept between reads
    std::array<QPlainTextEdit *, 5> txtTestValidation{};
    std::array<QString, 5> mShownValidation; // the texts the boxes show
    std::array<QLabel *, 4> lblQcLine{};

    struct Panel {
        QLabel *pcCurrent, *pcRequired, *pcRecommended;
        QLabel *ncCurrent, *ncRequired, *ncRecommended;
        QLabel *auxCurrent, *auxRequired, *auxRecommended;
        QLabel *filterCurrent, *filterRequired;
        QLabel *pcMark, *ncMark, *auxMark, *filterMark;
    };
    std::array<Panel, 4> mPanels{};

    struct InfoLabels {
        QLabel *plateName, *runName, *testName, *lotNumber, *expDate, *readTime, *readDate, *filterUsed, *techName;
    } mInfo{};

    std::array<QLabel *, 4> mStatusPanels{};
    QLabel *pctCompactLight = nullptr;
    QLabel *sbNotice = nullptr;
    bool mSyncingSelection = false;
};
