#include "store/RunOpenLogic.h"

#include "store/DelimitedGroupNames.h"

#include "platform/Prompt.h"
#include "store/DbConnection.h"
#include "store/RunChangeCounter.h"
#include "store/PlateRows.h"
#include "store/RunCatalog.h"

RunOpenLogic::RunOpenLogic(const ProgramFolder &folder, Prompt &prompt) : RunBrowser(folder, prompt)
{
}

void RunOpenLogic::setPlatesRecord(const RecordSet &plates)
{
    mPlates = plates;
}

RecordSet RunOpenLogic::getPlatesRecord() const
{
    return copyRecordset(mPlates);
}

RunBrowser::CommandEnd RunOpenLogic::open()
{
    const CatalogEntry *folder = currentFolder();
    const QString name = runNameText();
    if (!folder || name.trimmed().isEmpty())
        return CommandEnd::Stay;

    RecordSet plates;
    QStringList repaired;
    try {
        const DbConnection db = openDatabase();
        const std::optional<qint64> runID = RunCatalog(db).findRun(folder->id, name);
        if (!runID) {
            prompt().message(QStringLiteral("'") + name + QStringLiteral("' does not exist in this folder."),
                             QStringLiteral("Run Does Not Exist"), MsgIcon::Exclamation);
            return CommandEnd::Stay;
        }
        plates = PlateRows::read(db, *runID);
        RunChangeCounter::noteSeen(db, *runID);
        repaired = DelimitedGroupNames::fromDatabase(db).repairPlates(plates);
    } catch (const std::exception &e) {
        reportFailure(QStringLiteral("The run could not be read from the database."), e);
        return CommandEnd::Stay;
    }

    for (int row = 0; row < plates.recordCount(); ++row) {
        const QVariant filterUsed = plates.valueAt(row, u"FilterUsed");
        if (!filterUsed.isNull())
            plates.setValueAt(row, u"CurrentFilter", filterUsed);
        plates.setValueAt(row, u"CurrentReader", plates.valueAt(row, u"ReaderUsed"));
        plates.setValueAt(row, u"CurrentTest", plates.valueAt(row, u"TestName"));
    }
    plates.moveFirst();
    mPlates = std::move(plates);
    if (!repaired.isEmpty())
        prompt().message(DelimitedGroupNames::messageText(repaired), DelimitedGroupNames::kTitle, MsgIcon::Exclamation);
    succeed();
    return CommandEnd::Close;
}
