#pragma once

#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"
#include "worksheet/RunDialogs.h"

#include <QPointer>

class QWidget;
class frmRunOpen;
class frmRunSaveAs;

// The run dialogs of the desktop program: frmRunSaveAs and frmRunOpen, shown modally over
// the main window. Each dialog's state (its plates, getUserOk, getRunName) lives as long
// as this object, so it keeps its value between showings; the plain save of a known run
// needs no dialog at all. The dialogs are made at their first showing.
class QtRunDialogs : public RunDialogs {
public:
    QtRunDialogs(const ProgramFolder &folder, Prompt &prompt, QWidget *parentWindow = nullptr);
    ~QtRunDialogs() override;

    QtRunDialogs(const QtRunDialogs &) = delete;
    QtRunDialogs &operator=(const QtRunDialogs &) = delete;

    // The window the dialogs are shown over (the main window, once it exists).
    void setParentWindow(QWidget *parentWindow);

    RunSaveAsLogic &saveAsLogic() { return mSaveAs; }
    RunOpenLogic &openLogic() { return mOpen; }
    frmRunSaveAs *saveAsDialog();
    frmRunOpen *openDialog();

    void setPlatesRecord(const RecordSet &plates) override;
    void showSaveAs() override;
    void simpleSave() override;
    bool saveAsNewRequested() const override;
    bool saveAsUserOk() const override;
    RecordSet saveAsPlatesRecord() const override;
    QString saveAsRunName() const override;

    void showOpen() override;
    bool openUserOk() const override;
    RecordSet openPlatesRecord() const override;
    QString openRunName() const override;

private:
    RunSaveAsLogic mSaveAs;
    RunOpenLogic mOpen;
    QPointer<QWidget> mParentWindow;
    // Owned by the parent window when there is one, else by this object.
    QPointer<frmRunSaveAs> mSaveAsDialog;
    QPointer<frmRunOpen> mOpenDialog;
};
