#include "readers/ReaderConfiguration.h"

#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/ReaderAudit.h"
#include "readers/clsReading.h"
#include "store/DbConnection.h"
#include "store/DbTransaction.h"
#include "store/ProgramFolder.h"
#include "store/RunDatabase.h"

#include <QSqlQuery>

namespace {

const char *const kBitsPerSecond[] = {"300",   "600",   "1200",  "2400",  "4800",  "9600",
                                      "14400", "19200", "28800", "38400", "57600", "115200"};
const char *const kParity[] = {"Even", "Odd", "None", "Mark", "Space"};
const char *const kDataBits[] = {"6", "7", "8"};
const char *const kStopBits[] = {"1", "2"};
const char *const kFlowControl[] = {"None", "Xon / Xoff", "Hardware", "Xon / Xoff + Hardware"};

template <std::size_t N> void fillFixed(ComboState &combo, const char *const (&texts)[N])
{
    combo.clear();
    for (const char *t : texts)
        combo.add(QString::fromLatin1(t));
}

} // namespace

ReaderConfiguration::ReaderConfiguration(const ProgramFolder &folder, Prompt &prompt, SerialPort &comm,
                                         Sleeper &sleeper, int currentReaderID)
    : mFolder(folder), mPrompt(prompt), mComm(comm), mSleeper(sleeper), mCurrentReaderID(currentReaderID)
{
    fillFixed(mCombos[BitsPerSecond], kBitsPerSecond);
    fillFixed(mCombos[Parity], kParity);
    fillFixed(mCombos[DataBits], kDataBits);
    fillFixed(mCombos[StopBits], kStopBits);
    fillFixed(mCombos[FlowControl], kFlowControl);
}

ReaderConfiguration::~ReaderConfiguration()
{
    close();
}

void ReaderConfiguration::open()
{
    mConnection = std::make_unique<DbConnection>(::openDatabase(mFolder));
    mPortMap = SerialPortMap::load(mFolder.path());
    fillPortCombo();
    fillDialog();
    beginTransaction();
}

void ReaderConfiguration::close()
{
    if (mTransaction) {
        mTransaction->rollback();
        mTransaction.reset();
    }
    mConnection.reset();
}

void ReaderConfiguration::beginTransaction()
{
    mTransaction = std::make_unique<DbTransaction>(*mConnection);
}

void ReaderConfiguration::beep()
{
    if (onBeep)
        onBeep();
}

void ReaderConfiguration::fillPortCombo()
{
    ComboState &ports = mCombos[ComPort];
    const int index = ports.index;
    ports.clear();
    for (const QString &name : mPortMap.portNames())
        ports.add(name);
    ports.index = index < ports.count() ? index : -1;
}

int ReaderConfiguration::selectedModelID() const
{
    return mCombos[ReaderModels].itemData().toInt();
}

// ---------------------------------------------------------------------------------------
// Filling and showing

void ReaderConfiguration::fillDialog()
{
    ComboState &readers = mCombos[UserReaders];
    readers.clear();
    QSqlQuery q = mConnection->query(
        QStringLiteral("SELECT UserReaderID, UserReaderName FROM UserReaders ORDER BY UserReaderID"));
    while (q.next())
        readers.add(q.value(1).toString(), q.value(0).toInt());

    ComboState &models = mCombos[ReaderModels];
    models.clear();
    RecordSet catalogue = clsReading::getReaderModelInfo(0);
    for (catalogue.moveFirst(); !catalogue.eof(); catalogue.moveNext())
        models.add(catalogue.text(u"ReaderModelName"), catalogue.value(u"ReaderModelID").toInt());

    readers.index = findComboItemOrFirst(readers, mCurrentReaderID);
    showReader();
}

void ReaderConfiguration::selectUserReader(int index)
{
    ComboState &readers = mCombos[UserReaders];
    readers.index = (index >= 0 && index < readers.count()) ? index : -1;
    showReader();
}

void ReaderConfiguration::showReader()
{
    const ComboState &readers = mCombos[UserReaders];
    mDeleteEnabled = readers.hasSelection();

    bool found = false;
    if (readers.hasSelection()) {
        QSqlQuery q = mConnection->query(QStringLiteral("SELECT ReaderModelID, UserCOMPort, UserSettings, "
                                                        "UserFlowControl, UserDefaultFilterNo FROM UserReaders "
                                                        "WHERE UserReaderID = ?"),
                                         {readers.itemData()});
        if (q.next()) {
            found = true;
            mCurrentReaderID = readers.itemData().toInt();
            ComboState &models = mCombos[ReaderModels];
            models.index = findComboItemOrFirst(models, q.value(0).toInt());
            // A port past the list (COM12 set up elsewhere) is offered as it is, not lost.
            const int port = q.value(1).toInt();
            ComboState &ports = mCombos[ComPort];
            for (int n = ports.count() + 1; n <= std::min(port, 255); ++n) {
                const QString path = mPortMap.devicePath(n);
                ports.add(path.isEmpty() ? QStringLiteral("COM%1").arg(n) : path);
            }
            ports.index = port >= 1 && port <= ports.count() ? port - 1 : -1;
            setSettingsCombos(q.value(2).toString());
            const int flow = q.value(3).toInt();
            mCombos[FlowControl].index = flow < mCombos[FlowControl].count() ? std::max(flow, -1) : -1;
            const int defaultRow = q.value(4).toInt() - 1;

            RecordSet rows({QStringLiteral("FilterNo"), QStringLiteral("FilterValue")});
            QSqlQuery f = mConnection->query(
                QStringLiteral(
                    "SELECT FilterNo, FilterValue FROM UserFilters WHERE UserReaderID = ? ORDER BY FilterNo"),
                {mCurrentReaderID});
            while (f.next()) {
                rows.addNew();
                rows.setValue(u"FilterNo", f.value(0).toInt());
                rows.setValue(u"FilterValue", f.value(1).toInt());
            }
            mFilters.assign(rows, defaultRow);
        }
    }
    mTestCommEnabled = found;
    if (!found) {
        mCombos[ReaderModels].index = mCombos[ReaderModels].count() > 0 ? 0 : -1;
        mCombos[ComPort].index = mCombos[ComPort].count() > 0 ? 0 : -1;
        loadDefaults();
        mApplyEnabled = true;
        return;
    }
    updateFilterButtons();
    mApplyEnabled = false;
}

void ReaderConfiguration::selectText(Combo which, const QString &text)
{
    mCombos[which].index = mCombos[which].findText(text);
}

void ReaderConfiguration::setSettingsCombos(const QString &settings)
{
    const QString text = settings.toUpper().trimmed();
    const qsizetype comma = text.indexOf(u',');
    selectText(BitsPerSecond, comma < 0 ? text : text.left(comma));
    const QString rest = comma < 0 ? QString() : text.mid(comma + 1);
    const QChar parity = rest.size() > 0 ? rest[0] : QChar();
    QString parityText;
    switch (parity.unicode()) {
    case u'E': parityText = QStringLiteral("Even"); break;
    case u'M': parityText = QStringLiteral("Mark"); break;
    case u'N': parityText = QStringLiteral("None"); break;
    case u'O': parityText = QStringLiteral("Odd"); break;
    case u'S': parityText = QStringLiteral("Space"); break;
    default: break;
    }
    selectText(Parity, parityText);
    selectText(DataBits, rest.mid(2, 1));
    selectText(StopBits, rest.mid(4, 1));
}

QString ReaderConfiguration::settingsText() const
{
    return mCombos[BitsPerSecond].text() + u',' + mCombos[Parity].text().left(1) + u',' + mCombos[DataBits].text() +
           u',' + mCombos[StopBits].text();
}

void ReaderConfiguration::updateFilterButtons()
{
    mRemoveFilterEnabled = mFilters.count() > 0;
    mUpDownFilterEnabled = mFilters.count() > 0;
}

// ---------------------------------------------------------------------------------------
// Changes

void ReaderConfiguration::selectCombo(Combo which, int index)
{
    if (which == UserReaders) {
        selectUserReader(index);
        return;
    }
    ComboState &c = mCombos[which];
    c.index = (index >= 0 && index < c.count()) ? index : -1;
    mApplyEnabled = true;
}

void ReaderConfiguration::setComPortText(const QString &text)
{
    const QString wanted = text.trimmed();
    if (wanted.isEmpty())
        return;
    const qsizetype namedBefore = mPortMap.namedPorts().size();
    const int number = mPortMap.addPath(wanted);
    if (mPortMap.namedPorts().size() != namedBefore)
        mPortMapChanged = true;
    fillPortCombo();
    mCombos[ComPort].index = number - 1;
    mApplyEnabled = true;
}

void ReaderConfiguration::loadDefaults()
{
    std::optional<RecordSet> info;
    if (mCombos[ReaderModels].hasSelection()) {
        try {
            info = clsReading::getReaderModelInfo(qint16(selectedModelID()));
        } catch (const RecordSetError &) {
            info.reset();
        }
    }
    int defaultFilterNo = 1;
    if (!info) {
        for (Combo c : {BitsPerSecond, DataBits, Parity, StopBits, FlowControl})
            mCombos[c].index = -1;
        mTestCommEnabled = false;
    } else {
        if (!mCombos[ComPort].hasSelection() && mCombos[ComPort].count() > 0)
            mCombos[ComPort].index = 0;
        setSettingsCombos(info->text(u"DefaultSettings"));
        const int flow = info->value(u"DefaultFlowControl").toInt();
        mCombos[FlowControl].index = flow < mCombos[FlowControl].count() ? flow : -1;
        defaultFilterNo = info->value(u"DefaultFilterNo").toInt();
        mTestCommEnabled = true;
    }
    mFilters.assign(clsReading::getDefaultFilters(qint16(selectedModelID())), defaultFilterNo - 1);
    updateFilterButtons();
    mApplyEnabled = true;
}

void ReaderConfiguration::newUserReader()
{
    mNewNameVisible = true;
    mNewNameText = kNewReaderPrompt;
    mDeleteEnabled = false;
    mApplyEnabled = true;
}

void ReaderConfiguration::newNameFocusLost()
{
    if (!mNewNameVisible || !mNewNameText.isEmpty())
        return;
    mNewNameVisible = false;
    showReader();
}

bool ReaderConfiguration::apply()
{
    bool newReader = false;
    QString name;
    if (mNewNameVisible) {
        if (mNewNameText.trimmed() == kNewReaderPrompt) {
            newUserReader();
            beep();
            return false;
        }
        mNewNameVisible = false;
        name = mNewNameText.trimmed();
        const QVariant existing = mConnection->scalar(
            QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name});
        if (existing.isNull())
            newReader = true;
        else
            mCurrentReaderID = existing.toInt();
    }

    const int defaultFilterNo = mFilters.current() + 1;
    const int flow = mCombos[FlowControl].index;
    const ReaderAudit::Values before =
        newReader ? ReaderAudit::Values() : ReaderAudit::snapshot(*mConnection, mCurrentReaderID);
    if (newReader) {
        mConnection->execute(
            QStringLiteral("INSERT INTO UserReaders (UserReaderName, ReaderModelID, UserCOMPort, "
                           "UserSettings, UserFlowControl, UserDefaultFilterNo) VALUES (?, ?, ?, ?, ?, ?)"),
            {name, selectedModelID(), portNumber(), settingsText(), flow, defaultFilterNo});
        mCurrentReaderID =
            mConnection->scalar(QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name})
                .toInt();
    } else if (mCurrentReaderID > -1) {
        mConnection->execute(
            QStringLiteral("UPDATE UserReaders SET ReaderModelID = ?, UserCOMPort = ?, UserSettings = ?, "
                           "UserFlowControl = ?, UserDefaultFilterNo = ? WHERE UserReaderID = ?"),
            {selectedModelID(), portNumber(), settingsText(), flow, defaultFilterNo, mCurrentReaderID});
    }

    mConnection->execute(QStringLiteral("DELETE FROM UserFilters WHERE UserReaderID = ?"), {mCurrentReaderID});
    if (mFilters.count() > 0 && mCurrentReaderID > 0) {
        for (int r = 0; r < mFilters.count(); ++r)
            mConnection->execute(QStringLiteral("INSERT INTO UserFilters VALUES (?, ?, ?)"),
                                 {mCurrentReaderID, mFilters.filterValue(r), mFilters.filterNo(r)});
    }
    ReaderAudit::record(*mConnection, mCurrentReaderID, before, ReaderAudit::snapshot(*mConnection, mCurrentReaderID));

    mTransaction->commit();
    mTransaction.reset();
    if (mPortMapChanged && mPortMap.save(mFolder.path()))
        mPortMapChanged = false;
    mApplyEnabled = false;
    mChangesApplied = true;
    beginTransaction();
    fillDialog();
    return true;
}

void ReaderConfiguration::deleteUserReader()
{
    if (mNewNameVisible || !mCombos[UserReaders].hasSelection())
        return;
    const QVariant id = mCombos[UserReaders].itemData();
    const ReaderAudit::Values before = ReaderAudit::snapshot(*mConnection, id);
    mConnection->execute(QStringLiteral("DELETE FROM UserFilters WHERE UserReaderID = ?"), {id});
    mConnection->execute(QStringLiteral("DELETE FROM UserReaders WHERE UserReaderID = ?"), {id});
    ReaderAudit::record(*mConnection, id, before, {});
    mCurrentReaderID = -1;
    fillDialog();
    mApplyEnabled = true;
}

void ReaderConfiguration::ok()
{
    if (mApplyEnabled)
        apply();
    mChangesApplied = true;
    mSelectedFilterIndex = mFilters.current();
}

void ReaderConfiguration::testCommunication()
{
    clsReading catalogue(ReaderEnvironment{mPrompt, mSleeper, mFolder.path()});
    if (!catalogue.SetReader(selectedModelID())) {
        mPrompt.message(QStringLiteral("No device driver for this reader model"), QStringLiteral("Error!"),
                        MsgIcon::Critical);
        return;
    }
    // The device as this dialog knows it, a port typed but not yet applied included.
    mComm.setCommPort(portNumber());
    mComm.setPortName(mPortMap.devicePath(portNumber()));
    mComm.setSettings(settingsText());
    mComm.setHandshaking(mCombos[FlowControl].index);
    if (onBusy)
        onBusy(true);
    try {
        catalogue.currentReader->testCommunication(mComm);
    } catch (...) {
        if (onBusy)
            onBusy(false);
        throw;
    }
    if (onBusy)
        onBusy(false);
}

// ---------------------------------------------------------------------------------------
// Filter list

void ReaderConfiguration::addFilter()
{
    mFilters.add();
    updateFilterButtons();
    mApplyEnabled = true;
}

void ReaderConfiguration::insertFilter()
{
    mFilters.insert();
    updateFilterButtons();
    mApplyEnabled = true;
}

void ReaderConfiguration::removeFilter()
{
    mFilters.remove();
    updateFilterButtons();
    mApplyEnabled = true;
}

void ReaderConfiguration::moveFilter(int direction)
{
    if (mFilters.move(direction))
        mApplyEnabled = true;
}

void ReaderConfiguration::setFilterRow(int row)
{
    mFilters.setCurrent(row);
}

void ReaderConfiguration::setFilterValueText(int row, const QString &text)
{
    if (row < 0 || row >= mFilters.count())
        return;
    if (QString::number(mFilters.filterValue(row)) == text.trimmed())
        return;
    mFilters.setValueText(row, text);
    mApplyEnabled = true;
}
