#pragma once

#include "directory/DirectoryForm.h"

#include <QDialog>

#include <QList>
#include <QStringList>

class QLineEdit;
class QPushButton;

// The modal form for one directory entry: its boxes (the name first), OK (cmdOK, also
// Enter) and Cancel (cmdCancel, also Escape and closing the window). frmAddEditGroup and
// frmAddEditTech name it:
//
//     frmAddEditGroup form(folder, prompt, parent);
//     form.setOptionFlag("ADDNAME");    // or "ADD", "EDIT"
//     form.setGroupName(name);
//     form.exec();
//     form.getUserOk();                 // true when OK saved the group
//     form.getGroupName();              // the saved name; after Cancel the name as set
//
// A database failure during OK is told in a critical box and the form stays open, with
// nothing saved.
class frmDirectoryEntry : public QDialog {
    Q_OBJECT
public:
    // The form's own names: its object name, and a label and an object name per box.
    struct Mode {
        QString objectName;
        QStringList labels;
        QStringList boxNames;
    };

    frmDirectoryEntry(const DirectoryKind &kind, const Mode &mode, const ProgramFolder &folder, Prompt &prompt,
                      QWidget *parent = nullptr);

    void setOptionFlag(const QString &flag) { mForm.setOptionFlag(flag); }
    void setName(const QString &name) { mForm.setName(name); }
    QString getName() const { return mForm.getName(); }
    bool getUserOk() const { return mForm.getUserOk(); }

    // Fills the caption and the boxes for the option flag. exec() does it first; call it
    // before show() when the form is shown some other way. Throws DatabaseError or
    // DirectoryError when the entry to edit can't be read (nothing is shown then).
    void load();

    // Loads, then shows the form modally. Throws as load() does, before anything shows.
    int exec() override;

    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void cmdOK_Click();
    void showFields();
    void takeFields();

protected:
    DirectoryForm mForm;

private:
    Prompt &mPrompt;
    QList<QLineEdit *> mBoxes;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
