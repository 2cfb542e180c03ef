#include "reports/ReportSelection.h"

#include "platform/Browser.h"
#include "platform/Prompt.h"
#include "reports/clsReport.h"
#include "store/DbConnection.h"
#include "store/PlateRows.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlQuery>

#include <algorithm>

namespace {

// The first column of every row of a query.
QStringList column(const DbConnection &db, const QString &sql)
{
    QStringList values;
    QSqlQuery query = db.query(sql);
    while (query.next())
        values << query.value(0).toString();
    return values;
}

// Lists are shown in name order without regard to case, whatever the engine's collation.
void sortByName(QStringList &names)
{
    std::stable_sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        return QString::compare(a, b, Qt::CaseInsensitive) < 0;
    });
}

} // namespace

ReportSelection::ReportSelection(const ProgramFolder &folder, Prompt &prompt, Browser &browser)
    : mFolder(folder), mPrompt(prompt), mBrowser(browser)
{
}

QString ReportSelection::reportPath() const
{
    return mFolder.filePath(clsReport::kReportFileName);
}

void ReportSelection::load()
{
    fillPrintPlates();
    fillPrintGroups();
    fillPrintRuns();
    fillPrintDates();
    report = 0;
    clickReport(0);
    style = 0;
    replicates = 0;
    clickReplicates(0);
    sort = 0;
}

void ReportSelection::fillPrintPlates()
{
    // From the plate on screen to the end of the run, as the record set stands.
    plates.items.clear();
    for (int p = std::max(mPlates.position(), 0); p < mPlates.recordCount(); ++p)
        plates.items << mPlates.valueAt(p, u"PlateName").toString();
    mPlates.moveFirst();
    plates.index = plates.items.isEmpty() ? -1 : 0;
}

void ReportSelection::fillPrintGroups()
{
    DbConnection db = openDatabase(mFolder);
    groups.items = column(db, QStringLiteral("SELECT GroupName FROM Groups"));
    sortByName(groups.items);
    groups.index = groups.items.isEmpty() ? -1 : 0;
}

void ReportSelection::fillPrintRuns()
{
    DbConnection db = openDatabase(mFolder);
    runs.items = column(db, QStringLiteral("SELECT RunName FROM Runs"));
    sortByName(runs.items);
    runs.index = runs.items.isEmpty() ? -1 : 0;
}

void ReportSelection::fillPrintDates()
{
    DbConnection db = openDatabase(mFolder);
    QList<QDate> dates;
    QSqlQuery query =
        db.query(QStringLiteral("SELECT DateRead FROM Plates WHERE DateRead IS NOT NULL ORDER BY DateRead ASC"));
    while (query.next()) {
        const QVariant value = PlateRows::fromColumn(u"DateRead", query.value(0));
        if (value.typeId() == QMetaType::QDate)
            dates << value.toDate();
    }
    // With a single read plate the boxes stay empty.
    if (dates.size() > 1) {
        const QDate first = dates.first();
        const QDate last = dates.last();
        monthRange = {QString::number(first.month()), QString::number(last.month())};
        dayRange = {QString::number(first.day()), QString::number(last.day())};
        yearRange = {QString::number(first.year()), QString::number(last.year())};
    }
}

void ReportSelection::clickReport(int index)
{
    report = index;
    if (index == 0 || index == 1) {
        groups.enabled = false;
        runs.enabled = false;
        plates.enabled = true; // also for "Current Run", where it means nothing
        separateGroupsEnabled = true;
        groupReportEnabled = false;
        groupReport = -1;
        enableDateBoxes(false);
    } else {
        groupReport = 0;
        groupReportEnabled = true;
        separateGroupsEnabled = false;
        groups.enabled = true;
        plates.enabled = false;
        clickGroupReport(0);
    }
}

void ReportSelection::clickGroupReport(int index)
{
    groupReport = index;
    enableDateBoxes(index == 2);
    runs.enabled = index == 1;
}

void ReportSelection::clickReplicates(int index)
{
    replicates = index;
    mReplicatesMode = qint16(index);
}

std::optional<QDate> ReportSelection::dateFromParts(const QString &month, const QString &day, const QString &year)
{
    static const QRegularExpression number(QStringLiteral("^\\s*\\d{1,4}\\s*$"));
    if (!number.match(month).hasMatch() || !number.match(day).hasMatch() || !number.match(year).hasMatch())
        return std::nullopt;
    int y = year.trimmed().toInt();
    if (year.trimmed().size() <= 2)
        y += y < 30 ? 2000 : 1900;
    if (y < 100)
        return std::nullopt;
    const QDate date(y, month.trimmed().toInt(), day.trimmed().toInt());
    if (!date.isValid())
        return std::nullopt;
    return date;
}

bool ReportSelection::make(const RecordSet &platesToReport, bool separate, const QString &plateName,
                           const QString &groupName)
{
    clsReport maker(mPrompt, reportPath());
    const bool sortByName = sort == 0;
    if (style == 0)
        return maker.makeCustomerReport(platesToReport, separate, mRunName, mReplicatesMode, sortByName, plateName,
                                        groupName);
    return maker.makeAnalyticalReport(platesToReport, separate, mRunName, mReplicatesMode, sortByName, plateName,
                                      groupName);
}

RecordSet ReportSelection::savedRunPlates() const
{
    DbConnection db = openDatabase(mFolder);
    const QVariant runID = db.scalar(QStringLiteral("SELECT RunID FROM Runs WHERE RunName = ?"), {runs.text()});
    if (runID.isNull())
        throw ReportError(QStringLiteral("There is no saved run named \"%1\".").arg(runs.text()));
    return PlateRows::read(db, runID.toLongLong());
}

std::optional<RecordSet> ReportSelection::datedPlates()
{
    const std::optional<QDate> start = dateFromParts(monthRange[0], dayRange[0], yearRange[0]);
    const std::optional<QDate> end = dateFromParts(monthRange[1], dayRange[1], yearRange[1]);
    if (!start || !end || *start > *end) {
        mPrompt.message(kBadDatesText, kBadDatesTitle, MsgIcon::Exclamation);
        return std::nullopt;
    }
    DbConnection db = openDatabase(mFolder);
    return PlateRows::readDated(db, *start, *end);
}

std::optional<ReportSelection::Chosen> ReportSelection::chosenPlates(bool *told)
{
    if (told)
        *told = false;
    if (report == 0)
        return Chosen{mPlates, plates.text(), QString(), separateGroups, mRunName};
    if (report == 1)
        return Chosen{mPlates, QString(), QString(), separateGroups, mRunName};
    switch (groupReport) {
    case 0: return Chosen{mPlates, QString(), groups.text(), false, mRunName};
    case 1: return Chosen{savedRunPlates(), QString(), groups.text(), false, runs.text()};
    case 2: {
        std::optional<RecordSet> dated = datedPlates();
        if (!dated) {
            if (told)
                *told = true;
            return std::nullopt;
        }
        return Chosen{std::move(*dated), QString(), groups.text(), false, QString()};
    }
    default: return std::nullopt;
    }
}

std::optional<bool> ReportSelection::makeReport()
{
    bool told = false;
    const std::optional<Chosen> chosen = chosenPlates(&told);
    if (!chosen)
        return told ? std::nullopt : std::optional<bool>(false);
    // A date range that holds no plate writes no report; the other choices always make one.
    if (report == 2 && groupReport == 2 && chosen->plates.recordCount() == 0)
        return false;
    return make(chosen->plates, chosen->separateGroups, chosen->plateName, chosen->groupName);
}

void ReportSelection::ensureLogo() const
{
    // The report shows logo.jpg from its own folder.
    const QString logo = mFolder.filePath(QStringLiteral("logo.jpg"));
    const QString delivered = QDir(mFolder.dataDir()).filePath(QStringLiteral("logo.jpg"));
    if (!QFileInfo::exists(logo) && QFileInfo::exists(delivered))
        QFile::copy(delivered, logo);
}

bool ReportSelection::ok()
{
    const std::optional<bool> made = makeReport();
    if (!made)
        return false;
    if (!*made) {
        mPrompt.message(kNoDataText, kNoDataTitle, MsgIcon::None);
        return false;
    }
    ensureLogo();
    const QString path = reportPath();
    if (!mBrowser.openFile(path))
        mPrompt.message(kNoBrowserText.arg(QDir::toNativeSeparators(path)), kCaption, MsgIcon::Exclamation);
    return true;
}
