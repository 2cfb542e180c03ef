// Plate records as Plates rows and back: every field, dates as ISO texts, Null, order.
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "store/DatabaseError.h"
#include "store/PlateRows.h"
#include "store/clsPlates.h"

#include <QDate>
#include <QSqlQuery>
#include <QTime>

#include <gtest/gtest.h>

namespace {

const QStringList kScreenState = {"CurrentTest", "CurrentReader", "CurrentFilter"};

RecordSet roundTrip(const TempProgramFolder &temp, RecordSet plates, qint64 runID)
{
    const DbConnection db = temp.open();
    PlateRows::insert(db, plates);
    return PlateRows::read(db, runID);
}

TEST(PlateRows, ComeBackWithEveryFieldASaveWrites)
{
    TempProgramFolder temp;
    const RecordSet saved = RunPlates::make(3, 4);
    const RecordSet read = roundTrip(temp, saved, 4);
    ASSERT_EQ(read.recordCount(), 3);
    EXPECT_EQ(read.fieldNames(), clsPlates::fieldNames());
    for (int row = 0; row < 3; ++row) {
        for (const QString &field : clsPlates::fieldNames()) {
            if (kScreenState.contains(field))
                continue;
            EXPECT_EQ(read.valueAt(row, field), saved.valueAt(row, field)) << field.toStdString() << " row " << row;
        }
    }
}

TEST(PlateRows, HoldDatesAndTimesAsIsoTexts)
{
    TempProgramFolder temp;
    RecordSet plates = RunPlates::make(1, 1);
    plates.setValue(u"ExpDate", QDate(2027, 3, 9));
    plates.setValue(u"DateRead", QDate(2026, 11, 23));
    plates.setValue(u"TimeRead", QTime(9, 5, 7));
    const DbConnection db = temp.open();
    PlateRows::insert(db, plates);
    QSqlQuery row = db.query(QStringLiteral("SELECT ExpDate, DateRead, TimeRead FROM Plates"));
    ASSERT_TRUE(row.next());
    EXPECT_EQ(row.value(0).toString(), "2027-03-09");
    EXPECT_EQ(row.value(1).toString(), "2026-11-23");
    EXPECT_EQ(row.value(2).toString(), "09:05:07");

    const RecordSet read = PlateRows::read(db, 1);
    EXPECT_EQ(read.value(u"ExpDate"), QVariant(QDate(2027, 3, 9)));
    EXPECT_EQ(read.value(u"TimeRead"), QVariant(QTime(9, 5, 7)));
}

TEST(PlateRows, KeepNullDistinctFromEmptyTextSaveForTextsAlwaysPresent)
{
    TempProgramFolder temp;
    RecordSet plates = clsPlates::getNewPlateRecordSet(1); // Null dates and filter, empty reader
    clsPlates::addDefaultPlate(plates, 2, QStringLiteral("Plate #2"), 1);
    plates.setValueAt(1, u"LotNumber", QVariant());
    plates.setValueAt(1, u"TechName", QVariant());
    plates.setValueAt(1, u"ReaderUsed", QVariant());
    const RecordSet read = roundTrip(temp, plates, 1);
    ASSERT_EQ(read.recordCount(), 2);
    for (const char *field : {"ExpDate", "TimeRead", "DateRead", "FilterUsed"})
        EXPECT_TRUE(read.valueAt(0, QString::fromLatin1(field)).isNull()) << field;
    EXPECT_EQ(read.valueAt(0, u"ReaderUsed"), QVariant(QString()));
    EXPECT_FALSE(read.valueAt(0, u"ReaderUsed").isNull());
    EXPECT_EQ(read.valueAt(0, u"RawODs").toString(), "");
    EXPECT_EQ(read.valueAt(0, u"IncludeExcludeFlags").toString(), clsPlates::neverStoredFlags());
    // Lot and technician are always there: Null comes back as empty text.
    EXPECT_EQ(read.valueAt(1, u"LotNumber"), QVariant(QString()));
    EXPECT_FALSE(read.valueAt(1, u"LotNumber").isNull());
    EXPECT_EQ(read.valueAt(1, u"TechName").toString(), "");
    EXPECT_TRUE(read.valueAt(1, u"ReaderUsed").isNull());
}

TEST(PlateRows, WriteNoScreenState)
{
    TempProgramFolder temp;
    RecordSet plates = RunPlates::make(1, 1);
    for (const QString &field : kScreenState)
        plates.setValue(field, QStringLiteral("450"));
    const RecordSet read = roundTrip(temp, plates, 1);
    for (const QString &field : kScreenState)
        EXPECT_TRUE(read.isNull(field)) << field.toStdString();
}

TEST(PlateRows, ComeBackInTheOrderTheyWereWrittenAndOnlyForTheirRun)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    RecordSet plates = RunPlates::make(3, 1);
    plates.sort(QStringLiteral("PlateID DESC"));
    plates.setPosition(1);
    RecordSet other = RunPlates::make(2, 2);
    PlateRows::insert(db, other);
    PlateRows::insert(db, plates);
    EXPECT_EQ(plates.text(u"PlateName"), "Plate #2"); // the cursor stays where it was
    const RecordSet read = PlateRows::read(db, 1);
    ASSERT_EQ(read.recordCount(), 3);
    EXPECT_EQ(read.valueAt(0, u"PlateID").toInt(), 3);
    EXPECT_EQ(read.valueAt(2, u"PlateID").toInt(), 1);
    EXPECT_EQ(PlateRows::read(db, 3).recordCount(), 0);
}

TEST(PlateRows, KeepATextThatIsNoDateRatherThanLoseIt)
{
    TempProgramFolder temp;
    const DbConnection db = temp.open();
    RecordSet plates = RunPlates::make(1, 1);
    PlateRows::insert(db, plates);
    db.execute(QStringLiteral("UPDATE Plates SET ExpDate = '12/31/2026'"));
    EXPECT_EQ(PlateRows::read(db, 1).value(u"ExpDate"), QVariant(QStringLiteral("12/31/2026")));
}

TEST(PlateRowColumns, AcceptIsoTextsAndDateTimesForDates)
{
    EXPECT_EQ(PlateRows::toColumn(u"ExpDate", QStringLiteral("2027-01-02")), QVariant("2027-01-02"));
    EXPECT_EQ(PlateRows::toColumn(u"DateRead", QDateTime(QDate(2026, 5, 4), QTime(13, 0))), QVariant("2026-05-04"));
    EXPECT_EQ(PlateRows::toColumn(u"TimeRead", QDateTime(QDate(2026, 5, 4), QTime(13, 2, 3))), QVariant("13:02:03"));
    EXPECT_TRUE(PlateRows::toColumn(u"ExpDate", QStringLiteral("")).isNull());
}

// Dates and times are cut by hand on the common shape: every text reads as Qt reads it.
TEST(PlateRowColumns, ReadDateAndTimeTextsAsQtDoes)
{
    for (const char *text : {"2026-11-05", "2026-02-29", "2024-02-29", "0999-01-01", "9999-12-31", "2026-13-01",
                             "2026-1-05", " 2026-11-05", "2026-11-05x", "2026/11/05", "2026-11-0a", ""}) {
        const QString date = QString::fromLatin1(text);
        const QDate qt = QDate::fromString(date, PlateRows::kDateFormat);
        EXPECT_EQ(PlateRows::fromColumn(u"DateRead", date), qt.isValid() ? QVariant(qt) : QVariant(date)) << text;
        if (qt.isValid()) {
            EXPECT_EQ(PlateRows::toColumn(u"DateRead", qt), QVariant(qt.toString(PlateRows::kDateFormat))) << text;
        }
    }
    for (const char *text :
         {"08:05:05", "23:59:59", "00:00:00", "24:00:00", "12:60:00", "8:05:05", "08:05", "08-05-05"}) {
        const QString time = QString::fromLatin1(text);
        const QTime qt = QTime::fromString(time, PlateRows::kTimeFormat);
        EXPECT_EQ(PlateRows::fromColumn(u"TimeRead", time), qt.isValid() ? QVariant(qt) : QVariant(time)) << text;
        if (qt.isValid()) {
            EXPECT_EQ(PlateRows::toColumn(u"TimeRead", qt), QVariant(qt.toString(PlateRows::kTimeFormat))) << text;
        }
    }
}

TEST(PlateRowColumns, RefuseWhatIsNoDateOrNumberWithTheFieldsName)
{
    try {
        PlateRows::toColumn(u"TimeRead", QStringLiteral("noon"));
        FAIL() << "no error";
    } catch (const DatabaseError &e) {
        EXPECT_EQ(e.message(), "TimeRead is not a time: 'noon'");
    }
    EXPECT_THROW(PlateRows::toColumn(u"ExpDate", QDate()), DatabaseError);
    EXPECT_THROW(PlateRows::toColumn(u"PlateID", QVariant()), DatabaseError);
    EXPECT_THROW(PlateRows::toColumn(u"RunID", QStringLiteral("seven")), DatabaseError);
}

} // namespace

namespace {

// The plates as the rows hold them: every field a save writes, in the rows' order.
QStringList rowsAsText(const RecordSet &plates)
{
    QStringList rows;
    for (int row = 0; row < plates.recordCount(); ++row) {
        QStringList values;
        for (const QString &field : PlateRows::writtenFields()) {
            const QVariant value = PlateRows::toColumn(field, plates.valueAt(row, field));
            values << (value.isNull() ? QStringLiteral("<Null>") : value.toString());
        }
        rows << values.join(QLatin1Char('|'));
    }
    return rows;
}

} // namespace

// Unchanged rows are left alone and changed ones go back to their place: whatever the change,
// the run reads back as the plates saved, in their order.
TEST(PlateRowsRewritten, ReadBackAsThePlatesSavedInTheirOrder)
{
    const RecordSet five = RunPlates::make(5, 1);
    const auto changed = [&five](const std::function<void(RecordSet &)> &change) {
        RecordSet plates = copyRecordset(five);
        change(plates);
        return plates;
    };
    const RecordSet cases[] = {
        changed([](RecordSet &p) { p.setValueAt(2, u"ODs", QStringLiteral("0.5")); }),
        changed([](RecordSet &p) { p.setValueAt(0, u"ReaderUsed", QVariant()); }),
        changed([](RecordSet &p) { p.setValueAt(4, u"ReaderUsed", QStringLiteral("")); }),
        changed([](RecordSet &p) {
            p.setPosition(1);
            p.deleteCurrent();
        }),
        changed([&five](RecordSet &p) {
            p.addNew();
            for (const QString &field : p.fieldNames())
                p.setValue(field, five.valueAt(0, field));
            p.setValue(u"PlateID", 6);
            p.setValue(u"PlateName", QStringLiteral("Plate #6"));
        }),
        changed([&five](RecordSet &p) {
            for (const QString &field : p.fieldNames()) {
                p.setValueAt(1, field, five.valueAt(3, field));
                p.setValueAt(3, field, five.valueAt(1, field));
            }
        }),
    };
    for (const RecordSet &plates : cases) {
        TempProgramFolder temp;
        const DbConnection db = temp.open();
        RecordSet first = copyRecordset(five);
        PlateRows::insert(db, first);
        const PlateRows::StoredRows stored = PlateRows::readStored(db, 1);
        RecordSet saved = copyRecordset(plates);
        PlateRows::rewriteChanged(db, stored, PlateRows::columns(saved), saved);
        EXPECT_EQ(rowsAsText(PlateRows::read(db, 1)), rowsAsText(plates));
    }
}
