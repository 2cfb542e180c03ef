#pragma once

#include "directory/DirectoryManager.h"

#include <QDialog>

class QListWidget;
class QPushButton;

// A modal list of a directory's names with cmdAdd, cmdEdit, cmdDelete and cmdClose. In the
// list, Delete deletes, Enter and a double click edit. frmGroupManagement and
// frmTechManagement name it for groups and technicians:
//
//     frmGroupManagement dialog(folder, prompt, parent);   // reads the groups
//     dialog.setPlatesRecord(plates);
//     dialog.exec();
//     plates = dialog.getPlatesRecord();                    // renames reach them
//
// A command that fails unexpectedly is told in a critical box and the dialog stays open;
// the database and the plates are as they were before that command.
class frmDirectoryManagement : public QDialog {
    Q_OBJECT
public:
    // The dialog's own names, and how it shows the form for one entry by default.
    struct Mode {
        QString objectName;
        QString title;
        QString listName;
        DirectoryManager::FormOpener openForm;
    };

    // The default way to show the form for one entry: modally over parent.
    template <typename Form>
    static DirectoryManager::FormOpener openerOf(QWidget *parent, const ProgramFolder &folder, Prompt &prompt)
    {
        return [parent, &folder, &prompt](const QString &flag, const QString &name) {
            Form form(folder, prompt, parent);
            form.setOptionFlag(flag);
            form.setName(name);
            form.exec();
            return form.getName();
        };
    }

    // Reads the list: throws DatabaseError when it can't (nothing is shown then).
    frmDirectoryManagement(const DirectoryKind &kind, Mode mode, const ProgramFolder &folder, Prompt &prompt,
                           QWidget *parent = nullptr);

    void setPlatesRecord(const RecordSet &plates) { mManager.setPlatesRecord(plates); }
    RecordSet getPlatesRecord() const { return mManager.getPlatesRecord(); }

    // How the form for one entry is shown; by default modally over this dialog.
    void setFormOpener(DirectoryManager::FormOpener openForm) { mOpenForm = std::move(openForm); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void runListCommand(void (DirectoryManager::*command)());
    void showList();

    Prompt &mPrompt;
    Mode mMode;
    DirectoryManager::FormOpener mOpenForm;
    DirectoryManager mManager;
    QListWidget *mList = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdEdit = nullptr;
    QPushButton *cmdDelete = nullptr;
    QPushButton *cmdClose = nullptr;
};
