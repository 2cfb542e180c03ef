#pragma once

#include "reports/ReportSelection.h"
#include "reports/ResultExport.h"

#include <QDateTime>
#include <QString>

class Browser;
class ProgramFolder;
class Prompt;

// What the "Export Results" dialog does, without a screen: the choice of plates as the
// report dialog makes it (its ReportSelection), the format, whether controls go along, and
// the file, by default a new name in the user's documents folder after the selection and
// the time. OK exports; the dialog stays after anything the user was told.
class ExportSelection {
public:
    ExportSelection(const ProgramFolder &folder, Prompt &prompt, Browser &browser);

    void setRunName(const QString &name) { mSelection.setRunName(name); }
    void setPlatesRecord(const RecordSet &plates) { mSelection.setPlatesRecord(plates); }
    // The lists and first options of the selection; the time the default name carries.
    void load(const QDateTime &when);

    ReportSelection &selection() { return mSelection; }
    const ReportSelection &selection() const { return mSelection; }

    ResultExport::Format format = ResultExport::Format::Csv;
    bool withControls = true;

    // The file: the default name until the user gives one.
    QString path() const;
    void setPath(const QString &path) { mPath = path; }
    QString defaultPath() const;

    // True when the file was written: notice() says what and where. False: the user was
    // told why, nothing was written.
    bool ok();
    QString notice() const { return mNotice; }

private:
    QStringList nameParts() const;

    const ProgramFolder &mFolder;
    Prompt &mPrompt;
    ReportSelection mSelection;
    QDateTime mWhen;
    QString mPath;
    QString mNotice;
};
