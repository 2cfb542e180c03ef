#pragma once

#include "store/AuditQuery.h"

#include <QDialog>

#include <functional>

class ProgramFolder;
class Prompt;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QTableWidget;

// Tools > Audit Trail...: the trail with filters (run, plate, user, technician, dates,
// action), old and new values side by side, and the list exported as CSV.
class frmAuditTrail : public QDialog {
    Q_OBJECT
public:
    frmAuditTrail(const ProgramFolder &folder, Prompt &prompt, QWidget *parent = nullptr);

    // Where the export goes; asks with a file dialog unless a test sets it.
    std::function<QString()> chooseExportPath;

    // Lists the rows that pass the filters (cmdShow).
    void showRows();
    // Writes the listed rows as CSV (cmdExport); true when written.
    bool exportRows();

    const QVector<AuditRow> &rows() const { return mRows; }

private:
    AuditFilter filter() const;
    QComboBox *valueCombo(const QString &objectName, const QString &column);

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    QLineEdit *mRunID = nullptr;
    QLineEdit *mPlateID = nullptr;
    QComboBox *mUser = nullptr;
    QComboBox *mTechnician = nullptr;
    QComboBox *mAction = nullptr;
    QCheckBox *mUseFrom = nullptr;
    QCheckBox *mUseTo = nullptr;
    QDateEdit *mFrom = nullptr;
    QDateEdit *mTo = nullptr;
    QTableWidget *mTable = nullptr;
    QVector<AuditRow> mRows;
};
