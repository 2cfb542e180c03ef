#pragma once

#include "directory/GroupForm.h"

#include <QDialog>

#include <array>

class QLineEdit;
class QPushButton;

// The modal form for one group: its name and contact data in txtGroupData_0 to _12, OK
// (cmdOK, also Enter) and Cancel (cmdCancel, also Escape and closing the window).
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
class frmAddEditGroup : public QDialog {
    Q_OBJECT
public:
    frmAddEditGroup(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    void setOptionFlag(const QString &flag) { mForm.setOptionFlag(flag); }
    void setGroupName(const QString &name) { mForm.setGroupName(name); }
    QString getGroupName() const { return mForm.getGroupName(); }
    bool getUserOk() const { return mForm.getUserOk(); }

    // Fills the caption and the boxes for the option flag. exec() does it first; call it
    // before show() when the form is shown some other way. Throws DatabaseError or
    // DirectoryError when the group to edit can't be read (nothing is shown then).
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

    Prompt &mPrompt;
    GroupForm mForm;
    std::array<QLineEdit *, GroupForm::kFieldCount> txtGroupData{};
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
