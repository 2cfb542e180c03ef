#pragma once

#include "store/RunBrowser.h"

#include <QDialog>

#include <functional>

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class RunBrowser;

// The Open and Save As dialogs: the folders (lstFolders), the runs of the selected folder
// (lstRunNames), both renamed in place (F2 or a click on the selected item), the run name
// (txtRunName) and the buttons cmdNewFolder, cmdDelete, the dialog's own command (cmdOpen
// or cmdSave) and cmdCancel. Every decision is the logic's; the dialog shows it and
// forwards the user's gestures. frmRunOpen and frmRunSaveAs name the two modes.
// Closing it by its frame leaves the outcome as the last OK or Cancel set it; Esc is
// Cancel.
class frmRunBrowser : public QDialog {
    Q_OBJECT
public:
    // What sets the two dialogs apart: names, caption and the command of the default button.
    struct Mode {
        QString objectName;
        QString title;
        QString buttonName;
        QString buttonCaption;
        std::function<RunBrowser::CommandEnd()> command;
    };

    frmRunBrowser(RunBrowser &logic, Mode mode, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void refresh();
    void refreshFolders();
    void refreshRuns();
    void refreshRunName();

    void onFolderRowChanged(int row);
    void onRunRowChanged(int row);
    void onItemEdited(QListWidget *list, QListWidgetItem *item);
    void onNewFolder();
    void onDelete();
    void onCommand();
    void onCancel();

    RunBrowser &mLogic;
    Mode mMode;
    QListWidget *lstFolders;
    QListWidget *lstRunNames;
    QLineEdit *txtRunName;
    QPushButton *cmdNewFolder;
    QPushButton *cmdDelete;
    QPushButton *cmdCommand;
    QPushButton *cmdCancel;
};
