#include "reports/ExportSelection.h"

#include "platform/Prompt.h"
#include "reports/ExportSource.h"
#include "store/DocumentFolder.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"

#include <QDir>

ExportSelection::ExportSelection(const ProgramFolder &folder, Prompt &prompt, Browser &browser)
    : mFolder(folder), mPrompt(prompt), mSelection(folder, prompt, browser)
{
}

void ExportSelection::load(const QDateTime &when)
{
    mWhen = when;
    mSelection.load();
}

QStringList ExportSelection::nameParts() const
{
    const ReportSelection &s = mSelection;
    QStringList parts{ResultExport::kFileName};
    if (s.report == 0)
        return parts << s.runName() << s.plates.text();
    if (s.report == 1)
        return parts << s.runName();
    if (s.groupReport == 1)
        parts << s.runs.text();
    else if (s.groupReport == 2)
        parts << QStringLiteral("%1-%2-%3 to %4-%5-%6")
                     .arg(s.yearRange[0], s.monthRange[0], s.dayRange[0], s.yearRange[1], s.monthRange[1],
                          s.dayRange[1]);
    else
        parts << s.runName();
    return parts << s.groups.text();
}

QString ExportSelection::defaultPath() const
{
    // A name not yet taken, so an earlier export is never written over.
    try {
        return DocumentFolder(mFolder.documentsDir()).newFilePath(nameParts(), mWhen, ResultExport::suffix(format));
    } catch (const DocumentFolderError &) {
        return QString(); // said when the file is written
    }
}

QString ExportSelection::path() const
{
    return mPath.isEmpty() ? defaultPath() : mPath;
}

bool ExportSelection::ok()
{
    mNotice.clear();
    bool told = false;
    try {
        const std::optional<ReportSelection::Chosen> chosen = mSelection.chosenPlates(&told);
        if (!chosen) {
            if (!told)
                mPrompt.message(ExportTable::nothingText(), ResultExport::kCaption, MsgIcon::Exclamation);
            return false;
        }
        ExportTable::RunNamer namer;
        if (!chosen->runName.isEmpty()) {
            const QString name = chosen->runName;
            namer = [name](const QVariant &) { return name; };
        } else {
            const DbConnection db = openDatabase(mFolder);
            namer = ExportSource(db).runNamer();
        }
        const ExportTable table =
            ExportTable::build(chosen->plates, chosen->plateName, chosen->groupName, namer, withControls, mPrompt);
        const QString target = path();
        ResultExport::write(table, format, mWhen, target);
        mNotice = ResultExport::summary(table, format, target);
        if (!table.notes.isEmpty())
            mPrompt.message(table.notes.join(kCrLf), ResultExport::kCaption, MsgIcon::Information);
        return true;
    } catch (const ExportError &e) {
        mPrompt.message(e.message(), ResultExport::kCaption, MsgIcon::Exclamation);
        return false;
    }
}
