#include "store/RunSaveAsLogic.h"

#include "platform/Prompt.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/LabPolicy.h"
#include "store/RunChangeCounter.h"
#include "store/PlateRows.h"
#include "store/RunCatalog.h"
#include "store/RunDatabase.h"
#include "store/AuditTrail.h"
#include "store/RunPlatesWriter.h"
#include "store/TransactionRetry.h"

RunSaveAsLogic::RunSaveAsLogic(const ProgramFolder &folder, Prompt &prompt) : RunBrowser(folder, prompt)
{
}

void RunSaveAsLogic::setPlatesRecord(const RecordSet &plates)
{
    mPlates = copyRecordset(plates);
}

RecordSet RunSaveAsLogic::getPlatesRecord() const
{
    return copyRecordset(mPlates);
}

std::optional<qint64> RunSaveAsLogic::runIDOf(const RecordSet &plates)
{
    if (plates.recordCount() == 0)
        return std::nullopt;
    const int row = plates.eof() ? 0 : plates.position();
    const QVariant value = plates.valueAt(row, u"RunID");
    bool ok = false;
    const qint64 id = value.toLongLong(&ok);
    if (value.isNull() || !ok)
        return std::nullopt;
    return id;
}

void RunSaveAsLogic::setRunIDOfPlates(RecordSet &plates, qint64 runID)
{
    for (int row = 0; row < plates.recordCount(); ++row)
        plates.setValueAt(row, u"RunID", runID);
}

void RunSaveAsLogic::reportNotSaved(const std::exception &error)
{
    setUserOk(false);
    reportFailure(kNotSavedText, error, kNotSavedTitle);
}

RunBrowser::CommandEnd RunSaveAsLogic::save()
{
    const QString name = runNameText();
    if (name.trimmed().isEmpty())
        return CommandEnd::FocusRunName;
    const CatalogEntry *folder = currentFolder();
    if (!folder) {
        prompt().message(QStringLiteral("Please create a folder to store this run in before saving."),
                         QStringLiteral("Folder Required"), MsgIcon::Exclamation);
        return CommandEnd::Stay;
    }
    const qint64 folderID = folder->id;

    try {
        const DbConnection db = openDatabase();
        const RunCatalog catalog(db);
        const std::optional<qint64> existing = catalog.findRun(folderID, name);
        if (existing && prompt().ask(QStringLiteral("The Run '") + name +
                                         QStringLiteral("' already exists in this folder.  Do you want to overwrite?"),
                                     QStringLiteral("Run Already Exists"), MsgButtons::YesNo) != MsgAnswer::Yes)
            return CommandEnd::Stay;

        // The plates change (a new run id) only once the save has been made lasting. On a
        // server a save that lost a race with another workstation is run again whole.
        RecordSet plates;
        qint64 savedRunID = 0;
        runTransaction(db, [&] {
            plates = copyRecordset(mPlates);
            if (existing)
                catalog.deleteRun(*existing);
            std::optional<qint64> runID = runIDOf(plates);
            if (!runID || catalog.runExists(*runID)) {
                runID = getNewRunID(db);
                setRunIDOfPlates(plates, *runID);
            }
            catalog.addRun(*runID, name, folderID);
            const AuditTrail trail(db);
            RunPlatesWriter(db, trail).rewrite(*runID, plates, mProgress);
            savedRunID = *runID;
        });
        RunChangeCounter::noteSaved(db, savedRunID, 0);
        mPlates = std::move(plates);
    } catch (const std::exception &e) {
        reportNotSaved(e);
        return CommandEnd::Stay;
    }
    succeed();
    return CommandEnd::Close;
}

bool RunSaveAsLogic::simpleSave()
{
    mSaveAsNewRequested = false;
    try {
        const std::optional<qint64> runID = runIDOf(mPlates);
        if (!runID)
            throw DatabaseError(QStringLiteral("The plates belong to no run."));
        const DbConnection db = openDatabase();
        if (RunChangeCounter::changedElsewhere(db, *runID)) {
            const MsgAnswer answer = prompt().ask(kChangedElsewhereText, kChangedElsewhereTitle,
                                                  MsgButtons::YesNoCancel, MsgIcon::Exclamation);
            if (answer != MsgAnswer::No) {
                mSaveAsNewRequested = answer == MsgAnswer::Yes;
                setUserOk(false);
                return false;
            }
        }
        // The laboratory may want to know why a validated plate changes.
        QString reason;
        if (LabPolicy::reasonForValidatedChanges(db)) {
            const AuditTrail reader(db);
            const QStringList changed = RunPlatesWriter(db, reader).validatedPlatesChanged(*runID, mPlates);
            if (!changed.isEmpty()) {
                const std::optional<QString> given = mReasonAsker ? mReasonAsker(changed) : std::nullopt;
                if (!given || given->trimmed().isEmpty()) {
                    prompt().message(kNoReasonText, kNotSavedTitle, MsgIcon::Exclamation);
                    setUserOk(false);
                    return false;
                }
                reason = given->trimmed();
            }
        }
        int count = 0;
        runTransaction(db, [&] {
            const std::optional<int> counted = RunChangeCounter::countSave(db, *runID);
            if (!counted)
                throw DatabaseError(kRunGoneText);
            count = *counted;
            AuditTrail trail(db);
            trail.setReason(reason);
            RunPlatesWriter(db, trail).rewrite(*runID, mPlates, mProgress);
        });
        RunChangeCounter::noteSaved(db, *runID, count);
    } catch (const std::exception &e) {
        reportNotSaved(e);
        return false;
    }
    setUserOk(true);
    return true;
}
