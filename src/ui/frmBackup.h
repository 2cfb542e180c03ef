#pragma once

#include <QDialog>

#include <memory>

class CompactDB;
class ProgramFolder;
class Prompt;
class QLabel;
class QTimer;

// The small modal form shown while the database is compacted: "Compacting in progress."
// with a busy cursor. Its one-shot timer (Timer1) starts the work once the form is on the
// screen, and the form closes itself when the work is done.
class frmBackup : public QDialog {
    Q_OBJECT
public:
    static inline const QString kLabelText = QStringLiteral("Compacting in progress.\r\nPlease wait...");
    // Time the form is given to paint before the work blocks the screen.
    static constexpr int kTimerMs = 100;

    frmBackup(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);
    ~frmBackup() override;

    // The compaction command: no connection to the database may be open. Shows the form
    // modally over parent, compacts, and returns true when the database in use is now the
    // compacted one. A failure is told through prompt; the database can be used either way.
    static bool runCompaction(QWidget *parent, const ProgramFolder &folder, Prompt &prompt);

    CompactDB &compactDB() { return *mCompact; }
    bool succeeded() const { return mSucceeded; }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void onTimer();
    void restoreCursor();

    std::unique_ptr<CompactDB> mCompact;
    QLabel *Label1;
    QTimer *Timer1;
    bool mCursorSet = false;
    bool mWorking = false;
    bool mSucceeded = false;
};
