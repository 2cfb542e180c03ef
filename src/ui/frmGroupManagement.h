#pragma once

#include "directory/GroupManager.h"

#include <QDialog>

class QListWidget;
class QPushButton;

// The modal list of client groups (lstGroupNames) with cmdAdd, cmdEdit, cmdDelete and
// cmdClose. In the list, Delete deletes, Enter and a double click edit.
//
//     frmGroupManagement dialog(folder, prompt, parent);   // reads the groups
//     dialog.setPlatesRecord(plates);
//     dialog.exec();
//     plates = dialog.getPlatesRecord();                    // renames reach them
//
// A command that fails unexpectedly is told in a critical box and the dialog stays open;
// the database and the plates are as they were before that command.
class frmGroupManagement : public QDialog {
    Q_OBJECT
public:
    // Reads the list of groups: throws DatabaseError when it can't (nothing is shown then).
    frmGroupManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    void setPlatesRecord(const RecordSet &plates) { mManager.setPlatesRecord(plates); }
    RecordSet getPlatesRecord() const { return mManager.getPlatesRecord(); }

    // How frmAddEditGroup is shown; by default modally over this dialog.
    void setFormOpener(GroupManager::FormOpener openForm) { mOpenForm = std::move(openForm); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString openGroupForm(const QString &optionFlag, const QString &groupName);
    void runListCommand(void (GroupManager::*command)());
    void showList();

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    GroupManager::FormOpener mOpenForm;
    GroupManager mManager;
    QListWidget *lstGroupNames = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdEdit = nullptr;
    QPushButton *cmdDelete = nullptr;
    QPushButton *cmdClose = nullptr;
};
