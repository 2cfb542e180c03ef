// The quality-control line of the plate on screen: after each evaluation of a read plate,
// the kit's rules over its latest saved plates and this one, against the guide sets in
// force. It never touches the kit's verdict; a failure to judge is shown on the line itself.
#include "worksheet/Workbench.h"

#include "core/WellList.h"
#include "store/DbConnection.h"
#include "tracking/QcHistory.h"
#include "tracking/QcLine.h"

#include <exception>

namespace {

// Enough plates before this one for the longest pattern (12 values of one quantity), with
// room for plates that lack a control.
constexpr int kHistoryPlates = 60;

} // namespace

void Workbench::refreshQcLine()
{
    mQcLine.clear();
    mQcToolTip.clear();
    const QString testName = combo(Tests).text();
    const QDate day = mPlates.eof() ? QDate() : mPlates.value(u"DateRead").toDate();
    if (!day.isValid() || testName.isEmpty() || testName == u"Generic") {
        Q_EMIT validationChanged();
        return;
    }
    try {
        TrackedPlate plate;
        plate.runID = mPlates.value(u"RunID").toLongLong();
        plate.plateID = mPlates.value(u"PlateID").toLongLong();
        plate.plateName = mPlates.text(u"PlateName");
        plate.testName = testName;
        plate.lotNumber = mPlates.text(u"LotNumber");
        plate.version = plateVersion();
        plate.dateRead = day;
        plate.timeRead = mPlates.value(u"TimeRead");
        QStringList samples, ods, flags;
        for (int k = 0; k < wells::kCount; ++k) {
            samples << mSheet.textAt(PlateSheet::Samples, k);
            ods << mSheet.textAt(PlateSheet::ODs, k);
            flags << QString::number(mSheet.inclusionFlagAt(k));
        }
        plate.setWells(joinWellList(samples), joinWellList(ods), joinWellList(flags));

        TrackingCriteria criteria{testName, std::nullopt, std::nullopt, QDate(1, 1, 1), day, kHistoryPlates};
        DbConnection db = openDatabase();
        const QcHistory history = QcHistory::gather(db, criteria, mPrompt, plate);
        if (!history.book.isEmpty()) {
            const QcLine line = QcLine::of(history, int(history.runs.size()) - 1);
            mQcLine = line.text;
            mQcToolTip = line.toolTip;
        }
    } catch (const std::exception &e) {
        mQcLine = QStringLiteral("QC: not judged");
        mQcToolTip = QString::fromUtf8(e.what());
    }
    Q_EMIT validationChanged();
}
