#pragma once

#include "directory/TechForm.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

// The modal form for one technician's name (txtTechName), with OK (cmdOK, also Enter) and
// Cancel (cmdCancel, also Escape and closing the window).
//
//     frmAddEditTech form(folder, prompt, parent);
//     form.setOptionFlag("EDIT");       // or "ADD", "ADDNAME"
//     form.setTechName(name);
//     form.exec();
//     form.getUserOk(); form.getTechName();
//
// A database failure during OK is told in a critical box and the form stays open, with
// nothing saved.
class frmAddEditTech : public QDialog {
    Q_OBJECT
public:
    frmAddEditTech(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    void setOptionFlag(const QString &flag) { mForm.setOptionFlag(flag); }
    void setTechName(const QString &name) { mForm.setTechName(name); }
    QString getTechName() const { return mForm.getTechName(); }
    bool getUserOk() const { return mForm.getUserOk(); }

    // Fills the caption and the box for the option flag; exec() does it first. Throws
    // DatabaseError or DirectoryError when the technician to edit can't be read.
    void load();
    int exec() override;
    void reject() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void cmdOK_Click();

    Prompt &mPrompt;
    TechForm mForm;
    QLineEdit *txtTechName = nullptr;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
