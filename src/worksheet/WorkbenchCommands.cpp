// The File commands of the main window: New, Open, Save, Save As, and the end; the notice
// of files written.
#include "worksheet/Workbench.h"

#include "core/LegacyFormat.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "store/AuditTrail.h"
#include "store/DbConnection.h"
#include "store/MiscSettings.h"
#include "store/RunDatabase.h"
#include "store/clsPlates.h"
#include "worksheet/RunDialogs.h"

#include <QDir>

bool Workbench::offerToSave()
{
    if (!mDirty)
        return true;
    const MsgAnswer answer = mPrompt.ask(QStringLiteral("Save changes to '") + runName() + QStringLiteral("'?"),
                                         QStringLiteral("Save Changes?"), MsgButtons::YesNoCancel);
    if (answer == MsgAnswer::Cancel)
        return false;
    if (answer == MsgAnswer::Yes) {
        fileSave();
        return mRunDialogs.saveAsUserOk();
    }
    return true;
}

void Workbench::fileNew()
{
    if (!offerToSave())
        return;
    {
        DbConnection db = openDatabase();
        mPlates = clsPlates::getNewPlateRecordSet(getNewRunID(db));
    }
    fillPlates();
    loadPlateRecord();
    selectComboIndex(Plates, 0);
    selectComboIndex(Technicians, 0);

    mSheet.setCursor(1, 1);
    refreshTestPanel(combo(Tests).text());

    setStatusPanel(1, QStringLiteral("Plate: ") + combo(Plates).text());
    setStatusPanel(2, legacy::defaultDate(mClock.now().date()));
    setStatusPanel(3, QStringLiteral("Test: ") + combo(Tests).text());
    setStatusPanel(4, QStringLiteral("Run: ") + kNoRunName);
    showPlateInfo();

    mUndoStack.clear();
    setUndoEnabled(false);
    mSetGroupEnabled = true;
    Q_EMIT tabRequested(1);
    setDirty(false);
    Q_EMIT focusGridRequested();
}

void Workbench::fileOpen()
{
    // Unsaved changes are dropped without a question here, as they always were.
    mRunDialogs.showOpen();
    if (mRunDialogs.openUserOk()) {
        mPlates = mRunDialogs.openPlatesRecord();
        mPlates.moveFirst();
        loadPlateRecord();
        fillPlates();
        const int index = combo(Plates).findText(mPlates.text(u"PlateName"));
        selectPlateTechnician();
        selectComboIndex(Plates, index);
        setStatusPanel(4, QStringLiteral("Run: ") + mRunDialogs.openRunName());
        showRunStatus();
        showPlateInfo();
        setDirty(false);
    }
    Q_EMIT focusGridRequested();
}

void Workbench::fileSave()
{
    // The trail names the technician chosen on this workstation at the save.
    AuditTrail::setTechnician(combo(Technicians).text());
    bool known = false;
    if (!mPlates.eof()) {
        DbConnection db = openDatabase();
        known =
            !db.scalar(QStringLiteral("SELECT RunID FROM Runs WHERE RunID = ?"), {mPlates.value(u"RunID")}).isNull();
    }
    if (!known) {
        fileSaveAs();
        return;
    }
    storePlateRecord();
    mRunDialogs.setPlatesRecord(mPlates);
    mRunDialogs.simpleSave();
    if (mRunDialogs.saveAsNewRequested()) {
        fileSaveAs();
        return;
    }
    if (!mRunDialogs.saveAsUserOk())
        return; // the save failed and said so: the run stays unsaved
    setDirty(false);
    noteDatabaseChanges();
    showCompactLight(true);
}

void Workbench::fileSaveAs()
{
    AuditTrail::setTechnician(combo(Technicians).text());
    storePlateRecord();
    mRunDialogs.setPlatesRecord(mPlates);
    mRunDialogs.showSaveAs();
    if (mRunDialogs.saveAsUserOk()) {
        setDirty(false);
        noteDatabaseChanges();
        setStatusPanel(4, QStringLiteral("Run: ") + mRunDialogs.saveAsRunName());
        mPlates = mRunDialogs.saveAsPlatesRecord();
        const QString shown = combo(Plates).text();
        for (mPlates.moveFirst(); !mPlates.eof(); mPlates.moveNext()) {
            if (mPlates.text(u"PlateName") == shown)
                break;
        }
        showPlateInfo();
        showCompactLight(true);
    }
    Q_EMIT focusGridRequested();
}

bool Workbench::queryUnload()
{
    if (!offerToSave())
        return false;
    DbConnection db = openDatabase();
    const MiscSettings settings(db);
    settings.setLastUserReaderID(combo(Readers).hasSelection() ? std::optional<int>(combo(Readers).itemData().toInt())
                                                               : std::nullopt);
    settings.setLastUserFilterNo(combo(Filters).index);
    return true;
}

void Workbench::noteFileWritten(WrittenFile what, const QString &path)
{
    const QString where = QDir::toNativeSeparators(path);
    switch (what) {
    case WrittenFile::Report: mNotice = QStringLiteral("Report written to ") + where; break;
    case WrittenFile::Workbook: mNotice = QStringLiteral("Workbook written to ") + where; break;
    case WrittenFile::Backup: mNotice = QStringLiteral("Database compacted; its backup is ") + where; break;
    case WrittenFile::PlateMap: mNotice = QStringLiteral("Plate map written to ") + where; break;
    }
    Q_EMIT noticeChanged();
}
