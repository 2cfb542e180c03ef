#include "worksheet/ReadFlow.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "evaluation/PlateEvaluator.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"
#include "store/ProgramFolder.h"
#include "store/RawReads.h"
#include "worksheet/Workbench.h"

#include <QSqlQuery>

#include <exception>

const QString ReadFlow::kAbnormalWarning =
    QStringLiteral("One or more ODs on this plate fall outside of the expected range for ODs. ") +
    QStringLiteral("ODs will be displayed but results will not be calculated.  Deriving ") +
    QStringLiteral("diagnostic decisions from these ODs is strongly discouraged.") + kCrLf + kCrLf +
    QStringLiteral("Please make sure that you are using the correct plate reader driver, ") +
    QStringLiteral("correct filter, and that the plate reader is in good working order ") +
    QStringLiteral("and has recently been calibrated.");

ReadFlow::ReadFlow(Workbench &workbench, SerialPort &comm, Sleeper &sleeper)
    : mWb(workbench), mComm(comm), mSleeper(sleeper)
{
}

QString ReadFlow::readingStatus(const QString &readerName)
{
    return QStringLiteral("Reading the plate with %1...").arg(readerName);
}

void ReadFlow::reading(bool on, const QString &readerName)
{
    if (mIndicator)
        mIndicator(on, on ? readingStatus(readerName) : QString());
}

bool ReadFlow::checkReadSelections()
{
    if (!mWb.combo(Workbench::Readers).hasSelection()) {
        mWb.prompt().message(QStringLiteral("Please select a plate reader."),
                             QStringLiteral("No Plate Reader Selected"), MsgIcon::Exclamation);
        return false;
    }
    if (!mWb.combo(Workbench::Filters).hasSelection()) {
        mWb.prompt().message(QStringLiteral("Please select a filter."), QStringLiteral("No Filter Selected"),
                             MsgIcon::Exclamation);
        return false;
    }
    return true;
}

void ReadFlow::cmdReadPlate()
{
    if (!checkReadSelections())
        return;
    const qint16 filter = qint16(mWb.combo(Workbench::Filters).itemData().toInt());
    if (!PlateEvaluator::confirmControlsBeforeRead(mWb.plateInput(), filter, mWb.prompt()))
        return;
    mWb.sheet().clearSheet(PlateSheet::ODs);
    mWb.sheet().clearSheet(PlateSheet::Results);
    mWb.setValidationBoxes(QString());

    const ComboState &readers = mWb.combo(Workbench::Readers);
    const ComboState &filters = mWb.combo(Workbench::Filters);
    const QString filterNo = QString::number(filters.index + 1);
    const QString filterValue = filters.itemData().toString();
    const QString readerName = readers.text();

    RecordSet &plate = mWb.plates();
    const QDateTime now = mWb.clock().now();
    plate.setValue(u"ReaderUsed", readerName);
    plate.setValue(u"FilterUsed", filterValue);
    plate.setValue(u"TimeRead", now.time());
    plate.setValue(u"DateRead", now.date());

    qint32 modelID = 0;
    {
        DbConnection db = mWb.openDatabase();
        QSqlQuery q = db.query(QStringLiteral("SELECT ReaderModelID, UserCOMPort, UserSettings, UserFlowControl "
                                              "FROM UserReaders WHERE UserReaderID = ?"),
                               {readers.itemData()});
        if (!q.next())
            throw DatabaseError(
                QStringLiteral("The reader \"%1\" is no longer in the reader settings.").arg(readerName));
        modelID = q.value(0).toInt();
        mComm.setCommPort(q.value(1).toInt());
        mComm.setSettings(q.value(2).toString());
        mComm.setHandshaking(q.value(3).toInt());
    }

    clsReading catalogue(ReaderEnvironment{mWb.prompt(), mSleeper, mWb.folder().path()});
    if (!catalogue.SetReader(modelID)) {
        mWb.prompt().message(
            QStringLiteral("There is no device driver present for this reader model.  The plate cannot be read."),
            QStringLiteral("Missing Device Driver"), MsgIcon::Critical);
        return;
    }
    ReaderDriver &driver = *catalogue.currentReader;
    RecordSet values = WellValues::create();

    bool readerBusy = false;
    try {
        reading(true, readerName);
        readerBusy = true;
        QString data;
        const bool ok = driver.readData(mComm, filterNo, filterValue, data);
        if (!ok) {
            reading(false);
            return;
        }
        // Kept as received, with the plate, before anything is made of it.
        RawReads::keep(plate, plate.position(),
                       {now.toString(Qt::ISODateWithMs), modelID, readerName, filterValue, data});
        driver.fillReaderValues(values, data);
        readerBusy = false;
        reading(false);

        PlateSheet &sheet = mWb.sheet();
        values.moveFirst();
        for (int k = 0; k < wells::kCount; ++k) {
            const QString val = values.text(u"Val");
            sheet.setRawODAt(k, legacy::isNumeric(val) ? legacy::toDouble(val) : kSentinel);
            values.moveNext();
        }
        if (!PlateEvaluator::areODsInRange(mWb.plateInput()))
            mWb.prompt().message(kAbnormalWarning, kAbnormalTitle, MsgIcon::Exclamation);
        mWb.evaluatePlate();
        Q_EMIT mWb.tabRequested(PlateSheet::ODs);
    } catch (const std::exception &e) {
        mWb.prompt().message(QStringLiteral("Critical Error while reading plate.  Please contact Qorn.") + kCrLf +
                                 QStringLiteral("Description: ") + QString::fromUtf8(e.what()),
                             QStringLiteral("Critical Error"), MsgIcon::Critical);
        if (readerBusy)
            reading(false);
    }
}
