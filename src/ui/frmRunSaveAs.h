#pragma once

#include <QDialog>

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class RunSaveAsLogic;

// The Save As dialog: the folders (lstFolders), the runs of the selected folder
// (lstRunNames), both renamed in place (F2 or a click on the selected item), the run name
// (txtRunName) and the buttons cmdNewFolder, cmdDelete, cmdSave and cmdCancel. Every
// decision is RunSaveAsLogic's; the dialog shows it and forwards the user's gestures.
// Closing it by its frame leaves the outcome as the last OK or Cancel set it; Esc is
// Cancel.
class frmRunSaveAs : public QDialog {
    Q_OBJECT
public:
    explicit frmRunSaveAs(RunSaveAsLogic &logic, QWidget *parent = nullptr);

    RunSaveAsLogic &logic() { return mLogic; }

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
    void onSave();
    void onCancel();

    RunSaveAsLogic &mLogic;
    QListWidget *lstFolders;
    QListWidget *lstRunNames;
    QLineEdit *txtRunName;
    QPushButton *cmdNewFolder;
    QPushButton *cmdDelete;
    QPushButton *cmdSave;
    QPushButton *cmdCancel;
};
