#include "tracking/TrackControlsLogic.h"

#include "evaluation/clsTests.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "reports/ReportSelection.h"
#include "store/PlateRows.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"
#include "tracking/ControlTracking.h"
#include "tracking/QcHistory.h"

#include <QSqlQuery>

namespace {

const QDate kNoPlateStart(2003, 1, 1);

} // namespace

TrackControlsLogic::TrackControlsLogic(const ProgramFolder &folder, Prompt &prompt, Browser &browser,
                                       const Clock &clock, TrackingWorkbook::WorkbookFactory newWorkbook)
    : mFolder(folder), mPrompt(prompt), mBrowser(browser), mClock(clock), mNewWorkbook(std::move(newWorkbook))
{
}

void TrackControlsLogic::load()
{
    tests = Combo();
    for (const QString &name : clsTests::allTestNames()) {
        if (name != u"Generic")
            tests.items << name;
    }

    DbConnection db = openDatabase(mFolder);
    lotNumbers = Combo{{kAnyLot}, -1};
    QSqlQuery lots = db.query(QStringLiteral("SELECT DISTINCT LotNumber FROM Plates ORDER BY LotNumber"));
    while (lots.next()) {
        const QString lot = lots.value(0).toString();
        if (!lot.isEmpty())
            lotNumbers.items << lot;
    }
    technicians = Combo{{kAnyTechnician}, -1};
    QSqlQuery techs = db.query(QStringLiteral("SELECT TechName FROM Technicians ORDER BY TechName"));
    while (techs.next())
        technicians.items << techs.value(0).toString().trimmed();
    db.close();

    fillDates();
    tests.index = tests.items.isEmpty() ? -1 : 0;
    lotNumbers.index = 0;
    technicians.index = 0;
}

void TrackControlsLogic::setDateBoxes(int index, const QDate &date)
{
    monthRange[index] = QString::number(date.month());
    dayRange[index] = QString::number(date.day());
    yearRange[index] = QString::number(date.year());
}

void TrackControlsLogic::fillDates()
{
    setDateBoxes(1, mClock.now().date());
    QDate first = kNoPlateStart;
    DbConnection db = openDatabase(mFolder);
    QSqlQuery dates = db.query(QStringLiteral("SELECT DateRead FROM Plates ORDER BY DateRead ASC"));
    while (dates.next()) {
        const QVariant value = PlateRows::fromColumn(u"DateRead", dates.value(0));
        if (value.typeId() == QMetaType::QDate) {
            first = value.toDate();
            break;
        }
    }
    setDateBoxes(0, first);
}

void TrackControlsLogic::checkChartOptions()
{
    if (!chkDate && !chkPlateName && !chkRunName && !chkTime) {
        okEnabled = false;
        warningVisible = true;
        warningText = kChartWarning;
    } else {
        okEnabled = true;
        warningVisible = false;
        warningText.clear();
    }
}

TrackingChartOptions TrackControlsLogic::chartOptions() const
{
    return {chkPlateName, chkRunName, chkDate, chkTime, chkStdDev};
}

std::optional<TrackingCriteria> TrackControlsLogic::criteria()
{
    const std::optional<QDate> start = ReportSelection::dateFromParts(monthRange[0], dayRange[0], yearRange[0]);
    const std::optional<QDate> end = ReportSelection::dateFromParts(monthRange[1], dayRange[1], yearRange[1]);
    if (!start || !end || *start > *end) {
        mPrompt.message(kBadDatesText, kBadDatesTitle, MsgIcon::Exclamation);
        return std::nullopt;
    }
    TrackingCriteria criteria;
    criteria.testName = tests.text();
    if (lotNumbers.index > 0)
        criteria.lotNumber = lotNumbers.text();
    if (technicians.index > 0)
        criteria.techName = technicians.text();
    criteria.start = *start;
    criteria.end = *end;
    return criteria;
}

TrackingData TrackControlsLogic::gatherTrackingData()
{
    const std::optional<TrackingCriteria> chosen = criteria();
    if (!chosen)
        return TrackingData{};
    DbConnection db = openDatabase(mFolder);
    return ControlTracking(mPrompt).gather(db, *chosen);
}

QString TrackControlsLogic::ok()
{
    const TrackingData data = gatherTrackingData();
    if (!data.ok) {
        mPrompt.message(kNoDataText, kNoDataTitle, MsgIcon::None);
        return QString();
    }
    std::optional<QcHistory> qc;
    if (chkWestgard) {
        DbConnection db = openDatabase(mFolder);
        qc = QcHistory::gather(db, *criteria(), mPrompt);
        if (qc->book.isEmpty()) {
            mPrompt.message(kNoGuideSetText, kNoGuideSetTitle, MsgIcon::Information);
            qc.reset();
        }
    }
    QStringList name{tests.text()};
    if (lotNumbers.index > 0)
        name << lotNumbers.text();
    if (technicians.index > 0)
        name << technicians.text();
    return TrackingWorkbook(mPrompt, mBrowser, mFolder.documentsDir(), mNewWorkbook)
        .writeTrackingWorkbook(data, chartOptions(), name, mClock.now(), qc ? &*qc : nullptr);
}
