#pragma once

#include "readers/ReaderConfiguration.h"

#include <QDialog>

#include <array>
#include <functional>

class Prompt;
class ProgramFolder;
class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QToolButton;
class SerialPort;
class Sleeper;
class Workbench;

// The reader configuration dialog: the user's readers with their model, port, line
// settings, handshaking and filters. It holds widgets and wiring; ReaderConfiguration
// holds the logic and the database transaction that lasts from opening to closing.
//
// The port box also takes a typed device path ("/dev/ttyUSB1", "/dev/serial/by-id/...").
class frmReaderConfiguration : public QDialog {
    Q_OBJECT
public:
    // Opens the configuration on the reader of currentReaderID (-1 for none). Throws when
    // the database can't be read.
    frmReaderConfiguration(const ProgramFolder &folder, Prompt &prompt, SerialPort &comm, Sleeper &sleeper,
                           int currentReaderID, QWidget *parent = nullptr);
    ~frmReaderConfiguration() override;

    ReaderConfiguration &logic() { return mLogic; }

    // Read by the main window once the dialog has closed.
    bool changesApplied() const { return mLogic.outcome().changesApplied; }
    int currentReaderID() const { return mLogic.outcome().currentReaderID; }
    int selectedFilterIndex() const { return mLogic.outcome().selectedFilterIndex; }

    // The main window's "Reader" command: shows the dialog on the reader chosen in the
    // workbench and, when changes were applied, refreshes the workbench's readers,
    // filters, panel and evaluation.
    static void showFor(Workbench &workbench, SerialPort &comm, Sleeper &sleeper, QWidget *parent);

    void done(int result) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void render();
    void renderState();
    void renderFilters();
    void run(const std::function<void()> &action);
    void startFilterEdit();
    bool filterEditorOpen() const;
    bool filterGridKey(QKeyEvent *event);
    bool filterEditorKey(QLineEdit *editor, QKeyEvent *event);
    void nextFilterRow();

    Prompt &mPrompt;
    ReaderConfiguration mLogic;
    bool mRendering = false;

    std::array<QComboBox *, ReaderConfiguration::kComboCount> mCombos{};
    QLineEdit *txbUserReaders = nullptr;
    QTableWidget *dgFilters = nullptr;
    QLabel *lblDefaultFilter = nullptr;
    QPushButton *btnAddFilter = nullptr;
    QPushButton *btnInsertFilter = nullptr;
    QPushButton *btnRemoveFilter = nullptr;
    QWidget *btnUpDownFilter = nullptr;
    QPushButton *btnNewUserReader = nullptr;
    QPushButton *btnDeleteUserReader = nullptr;
    QPushButton *btnLoadDefaults = nullptr;
    QPushButton *btnTestComm = nullptr;
    QPushButton *btnApply = nullptr;
    QPushButton *btnOK = nullptr;
    QPushButton *btnCancel = nullptr;
};
