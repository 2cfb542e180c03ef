#pragma once

#include "directory/TechManager.h"

#include <QDialog>

class QListWidget;
class QPushButton;

// The modal list of technicians (lstTechNames) with cmdAdd, cmdEdit, cmdDelete and
// cmdClose. In the list, Delete deletes, Enter and a double click edit.
//
//     frmTechManagement dialog(folder, prompt, parent);   // reads the technicians
//     dialog.setPlatesRecord(plates);
//     dialog.exec();
//     plates = dialog.getPlatesRecord();                    // renames reach them
//
// A command that fails unexpectedly is told in a critical box and the dialog stays open;
// the database and the plates are as they were before that command.
class frmTechManagement : public QDialog {
    Q_OBJECT
public:
    // Reads the list of technicians: throws DatabaseError when it can't (nothing is shown then).
    frmTechManagement(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    void setPlatesRecord(const RecordSet &plates) { mManager.setPlatesRecord(plates); }
    RecordSet getPlatesRecord() const { return mManager.getPlatesRecord(); }

    // How frmAddEditTech is shown; by default modally over this dialog.
    void setFormOpener(TechManager::FormOpener openForm) { mOpenForm = std::move(openForm); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString openTechForm(const QString &optionFlag, const QString &techName);
    void runListCommand(void (TechManager::*command)());
    void showList();

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    TechManager::FormOpener mOpenForm;
    TechManager mManager;
    QListWidget *lstTechNames = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdEdit = nullptr;
    QPushButton *cmdDelete = nullptr;
    QPushButton *cmdClose = nullptr;
};
