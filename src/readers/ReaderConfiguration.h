#pragma once

#include "platform/SerialPortMap.h"
#include "readers/ReaderFilterList.h"
#include "core/ComboState.h"

#include <QString>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class DbConnection;
class DbTransaction;
class Prompt;
class ProgramFolder;
class SerialPort;
class Sleeper;

// The reader configuration: the user's readers (a name, a catalogue model, a port, line
// settings, handshaking, a filter list and a default filter). The dialog shows this
// state and forwards the user's gestures here.
//
// The configuration keeps its own connection, with a transaction from opening to
// closing: nothing reaches the database before Apply (which commits and opens a new
// transaction), and closing rolls back what was not applied, a deleted reader included.
class ReaderConfiguration {
public:
    enum Combo { UserReaders, ReaderModels, ComPort, BitsPerSecond, Parity, DataBits, StopBits, FlowControl };
    static constexpr int kComboCount = 8;
    static inline const QString kNewReaderPrompt = QStringLiteral("Type new reader name here");

    // What the main window takes over once the dialog has closed.
    struct Outcome {
        bool changesApplied = false;
        int currentReaderID = -1;
        int selectedFilterIndex = -1;
    };

    // currentReaderID: the reader chosen in the main window, -1 for none.
    ReaderConfiguration(const ProgramFolder &folder, Prompt &prompt, SerialPort &comm, Sleeper &sleeper,
                        int currentReaderID);
    ~ReaderConfiguration();

    // The dialog's opening: connection, lists, the current reader, then the transaction.
    void open();
    // The dialog's closing, whichever way: rolls back what was not applied.
    void close();

    // Hooks for the dialog.
    std::function<void()> onBeep;
    std::function<void(bool busy)> onBusy;

    // State shown by the dialog.
    const ComboState &combo(Combo which) const { return mCombos[which]; }
    const ReaderFilterList &filters() const { return mFilters; }
    QString defaultFilterCaption() const { return mFilters.defaultFilterCaption(); }
    bool applyEnabled() const { return mApplyEnabled; }
    bool deleteEnabled() const { return mDeleteEnabled; }
    bool testCommEnabled() const { return mTestCommEnabled; }
    bool removeFilterEnabled() const { return mRemoveFilterEnabled; }
    bool upDownFilterEnabled() const { return mUpDownFilterEnabled; }
    bool newNameVisible() const { return mNewNameVisible; }
    QString newNameText() const { return mNewNameText; }
    int currentReaderID() const { return mCurrentReaderID; }
    Outcome outcome() const { return {mChangesApplied, mCurrentReaderID, mSelectedFilterIndex}; }

    // The user's gestures.
    void selectUserReader(int index);
    // A change in any other combo box; it enables Apply.
    void selectCombo(Combo which, int index);
    // A port typed by name or device path ("/dev/ttyUSB0", "/dev/serial/by-id/..."): it
    // becomes a port of the list (kept for this workstation at the next Apply).
    void setComPortText(const QString &text);
    void loadDefaults();
    void newUserReader();
    void setNewNameText(const QString &text) { mNewNameText = text; }
    // Escape in the name box: the box is emptied.
    void clearNewName() { mNewNameText.clear(); }
    // The name box lost the focus: an empty box goes away and the chosen reader shows again.
    void newNameFocusLost();
    // False when nothing was applied: a new reader still has no name (beeps).
    bool apply();
    void deleteUserReader();
    // OK: applies pending changes and ends with the current filter row as the choice.
    void ok();
    void testCommunication();

    // The filter list.
    void addFilter();
    void insertFilter();
    void removeFilter();
    void moveFilter(int direction);
    void setFilterRow(int row);
    void setFilterValueText(int row, const QString &text);

    // The line settings text the combo boxes make: "9600,N,8,1".
    QString settingsText() const;
    // The port number of the port combo (0 when none is chosen).
    int portNumber() const { return mCombos[ComPort].index + 1; }

private:
    void fillDialog();
    void showReader();
    void setSettingsCombos(const QString &settings);
    void selectText(Combo which, const QString &text);
    void fillPortCombo();
    void updateFilterButtons();
    void beep();
    void beginTransaction();
    int selectedModelID() const;

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    SerialPort &mComm;
    Sleeper &mSleeper;

    std::unique_ptr<DbConnection> mConnection;
    std::unique_ptr<DbTransaction> mTransaction;
    SerialPortMap mPortMap;
    bool mPortMapChanged = false;

    std::array<ComboState, kComboCount> mCombos;
    ReaderFilterList mFilters;
    int mCurrentReaderID = -1;
    bool mApplyEnabled = false;
    bool mDeleteEnabled = false;
    bool mTestCommEnabled = false;
    bool mRemoveFilterEnabled = false;
    bool mUpDownFilterEnabled = false;
    bool mNewNameVisible = false;
    QString mNewNameText;
    bool mChangesApplied = false;
    // The filter row at OK; the first filter until then.
    int mSelectedFilterIndex = 0;
};
