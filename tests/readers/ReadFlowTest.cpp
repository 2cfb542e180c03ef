// Reading the plate on screen: the order of the read, what it stamps, the raw ODs it
// sets, the boxes it shows and the evaluation it hands over to.

#include "ReaderTestData.h"
#include "WorkbenchFixture.h"

#include "worksheet/ReadFlow.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

struct ReadBench : WorkbenchFixture {
    FakeSleeper sleeper{clock};
    FakeSerialPort port{clock};
    std::unique_ptr<ReadFlow> flow;
    QList<QPair<bool, QString>> indications;
    QList<int> tabs;

    ReadBench()
    {
        start();
        flow = std::make_unique<ReadFlow>(*wb, port, sleeper);
        flow->setReadingIndicator([this](bool reading, const QString &status) {
            indications.append({reading, status});
        });
        QObject::connect(wb.get(), &Workbench::tabRequested, [this](int tab) { tabs.append(tab); });
    }

    void chooseTest(const QString &name)
    {
        const int index = wb->combo(Workbench::Tests).findText(name);
        ASSERT_GE(index, 0) << name.toStdString();
        wb->selectComboIndex(Workbench::Tests, index);
    }
    void chooseReader(const QString &name)
    {
        const int index = wb->combo(Workbench::Readers).findText(name);
        ASSERT_GE(index, 0) << name.toStdString();
        wb->selectComboIndex(Workbench::Readers, index);
    }
    // PC in A1 and B1, NC in C1 to E1, a blank in F1, samples in the other wells: the
    // layout the demo captures were made for.
    void layOutControls()
    {
        PlateSheet &sheet = wb->sheet();
        for (int k = 0; k < wells::kCount; ++k)
            sheet.setTextAt(PlateSheet::Samples, k, QStringLiteral("S%1").arg(k + 1));
        const char *controls[] = {"PC", "PC", "NC", "NC", "NC", "BLANK"};
        for (int k = 0; k < 6; ++k)
            sheet.setTextAt(PlateSheet::Samples, k, QString::fromLatin1(controls[k]));
        wb->refreshTestPanel(wb->combo(Workbench::Tests).text());
    }
    void writeCapture(const QString &fileName, const QByteArray &bytes)
    {
        TempProgramFolder::writeFile(QDir(folder.path()).filePath(fileName), bytes);
    }
    int addReader(const QString &name, int model, int port, const QString &settings, int flow, int filterValue)
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO UserReaders (UserReaderName, ReaderModelID, UserCOMPort, UserSettings, "
                                  "UserFlowControl, UserDefaultFilterNo) VALUES (?, ?, ?, ?, ?, 1)"),
                   {name, model, port, settings, flow});
        const int id =
            db.scalar(QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name}).toInt();
        db.execute(QStringLiteral("INSERT INTO UserFilters VALUES (?, ?, 1)"), {id, filterValue});
        wb->fillReaders();
        return id;
    }
    QString od(int row, int col) const { return wb->sheet().text(PlateSheet::ODs, row, col); }
    QString result(int row, int col) const { return wb->sheet().text(PlateSheet::Results, row, col); }
};

const QString kCriticalHead =
    QStringLiteral("Critical Error while reading plate.  Please contact Qorn.\r\nDescription: ");

QStringList sameValue(const QString &value)
{
    QStringList values;
    for (int k = 0; k < wells::kCount; ++k)
        values << value;
    return values;
}

} // namespace

TEST(ReadFlow, TheDemoPlateReadForOrvexaShowsAdjustedODsAPassAndResults)
{
    ReadBench b;
    ASSERT_EQ(b.wb->combo(Workbench::Readers).text(), QStringLiteral("Demo"));
    b.chooseTest(QStringLiteral("Orvexa 412"));
    b.layOutControls();
    b.flow->cmdReadPlate();

    EXPECT_EQ(b.prompt.count(), 0) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
    EXPECT_DOUBLE_EQ(b.wb->sheet().rawODAt(0), 0.182);
    EXPECT_DOUBLE_EQ(b.wb->sheet().rawODAt(wells::index(8, 12)), 0.29);
    // Handed over to the evaluation (its rules are tested there): adjusted by the blank of
    // F1 (0.048), a pass, and G1 at 0.294 against NC 1.169.
    EXPECT_EQ(b.od(1, 1), QStringLiteral("0.134"));
    EXPECT_TRUE(b.wb->validationText(0).startsWith(QStringLiteral("TEST VALIDATION PASSED")))
        << b.wb->validationText(0).toStdString();
    EXPECT_EQ(b.result(7, 1), QStringLiteral("POS"));
    EXPECT_EQ(b.tabs, QList<int>({PlateSheet::ODs}));
    EXPECT_TRUE(b.wb->isDirty());
    // The read stamps the plate and shows that it is reading.
    const RecordSet &plate = b.wb->plates();
    EXPECT_EQ(plate.text(u"ReaderUsed"), QStringLiteral("Demo"));
    EXPECT_EQ(plate.text(u"FilterUsed"), QStringLiteral("630"));
    EXPECT_EQ(plate.value(u"TimeRead").toTime(), b.clock.now().time());
    EXPECT_EQ(plate.value(u"DateRead").toDate(), b.clock.now().date());
    EXPECT_EQ(b.indications, (QList<QPair<bool, QString>>{{true, QStringLiteral("Reading the plate with Demo...")},
                                                          {false, QString()}}));
}

TEST(ReadFlow, AReaderAndAFilterMustBeChosen)
{
    ReadBench b;
    b.wb->selectComboIndex(Workbench::Readers, -1);
    b.flow->cmdReadPlate();
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Please select a plate reader."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("No Plate Reader Selected"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Exclamation);

    b.chooseReader(QStringLiteral("Demo"));
    b.wb->selectComboIndex(Workbench::Filters, -1);
    b.flow->cmdReadPlate();
    ASSERT_EQ(b.prompt.count(), 2);
    EXPECT_EQ(b.prompt.last().text, QStringLiteral("Please select a filter."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("No Filter Selected"));
    EXPECT_TRUE(b.wb->plates().text(u"ReaderUsed").isEmpty());
    EXPECT_TRUE(b.indications.isEmpty());
}

TEST(ReadFlow, DecliningToReadWithoutControlsChangesNothing)
{
    ReadBench b;
    b.chooseTest(QStringLiteral("Orvexa 412"));
    b.wb->sheet().setTextAt(PlateSheet::ODs, 0, QStringLiteral("0.500"));
    b.prompt.queueAnswer(MsgAnswer::No);
    b.flow->cmdReadPlate();
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Essential Controls Missing"));
    EXPECT_EQ(b.od(1, 1), QStringLiteral("0.500"));
    EXPECT_TRUE(b.wb->plates().text(u"ReaderUsed").isEmpty());
}

TEST(ReadFlow, AModelWithoutADriverIsToldAfterTheStamps)
{
    ReadBench b;
    // A reader that points outside the catalogue (every model of it has a driver).
    b.addReader(QStringLiteral("Old MS2"), 27, 1, QStringLiteral("2400,N,8,1"), 0, 405);
    b.chooseReader(QStringLiteral("Old MS2"));
    b.wb->sheet().setTextAt(PlateSheet::ODs, 0, QStringLiteral("0.500"));
    b.flow->cmdReadPlate();
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().text,
              QStringLiteral("There is no device driver present for this reader model.  The plate cannot be read."));
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Missing Device Driver"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Critical);
    EXPECT_EQ(b.wb->plates().text(u"ReaderUsed"), QStringLiteral("Old MS2"));
    EXPECT_EQ(b.wb->plates().text(u"FilterUsed"), QStringLiteral("405"));
    EXPECT_EQ(b.od(1, 1), QString()); // the display was cleared before
    EXPECT_TRUE(b.indications.isEmpty());
}

TEST(ReadFlow, ValuesThatAreNoNumbersBecomeTheSentinelAndStopTheResults)
{
    ReadBench b;
    QStringList values = sameValue(QStringLiteral("0.400"));
    values[wells::index(3, 4)] = QStringLiteral("  n/a ");
    values[wells::index(5, 7)] = QString();
    values[wells::index(2, 9)] = QStringLiteral(" 1e309"); // beyond a double: not 0
    values[wells::index(6, 1)] = QStringLiteral(" 0.000"); // the blank of F1
    b.writeCapture(QStringLiteral("Results.INI"), demoCapture(values));
    b.chooseTest(QStringLiteral("Orvexa 412"));
    b.layOutControls();
    b.flow->cmdReadPlate();

    EXPECT_EQ(b.wb->sheet().rawODAt(wells::index(3, 4)), ReadFlow::kSentinel);
    EXPECT_EQ(b.wb->sheet().rawODAt(wells::index(5, 7)), ReadFlow::kSentinel);
    EXPECT_EQ(b.wb->sheet().rawODAt(wells::index(2, 9)), ReadFlow::kSentinel);
    EXPECT_DOUBLE_EQ(b.wb->sheet().rawODAt(wells::index(3, 5)), 0.4);
    ASSERT_GE(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.boxes()[0].title, ReadFlow::kAbnormalTitle);
    EXPECT_EQ(b.prompt.boxes()[0].icon, MsgIcon::Exclamation);
    EXPECT_EQ(b.wb->validationText(0), QStringLiteral("VALIDATION FAILED:  ODs out of expected range."));
    EXPECT_EQ(b.od(3, 5), QStringLiteral("0.400")); // the other wells are shown
    EXPECT_EQ(b.result(8, 1), QString());
}

TEST(ReadFlow, AMissingCaptureIsACriticalErrorAndTheWindowIsUsableAgain)
{
    ReadBench b;
    b.wb->sheet().setRawODAt(0, 0.777);
    QFile::remove(QDir(b.folder.path()).filePath(QStringLiteral("Results.INI")));
    b.flow->cmdReadPlate();
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Critical Error"));
    EXPECT_EQ(b.prompt.last().icon, MsgIcon::Critical);
    EXPECT_EQ(b.prompt.last().text,
              kCriticalHead +
                  QStringLiteral("The demo reader's data file \"Results.INI\" is missing from the program's folder %1.")
                      .arg(QDir::toNativeSeparators(b.folder.path())));
    ASSERT_EQ(b.indications.size(), 2);
    EXPECT_FALSE(b.indications.last().first);
    EXPECT_DOUBLE_EQ(b.wb->sheet().rawODAt(0), 0.777);
    EXPECT_EQ(b.wb->plates().text(u"ReaderUsed"), QStringLiteral("Demo"));
    EXPECT_TRUE(b.tabs.isEmpty());
}

TEST(ReadFlow, ASerialReaderGetsItsPortSettingsAndHandshakingFromItsRow)
{
    ReadBench b;
    b.addReader(QStringLiteral("Multiscan"), 1, 4, QStringLiteral("4800,E,7,2"), 2, 450);
    b.chooseReader(QStringLiteral("Multiscan"));
    SerialInstrument instrument(SerialInstrument::Model::Multiscan, plateCapture(SerialInstrument::Model::Multiscan));
    instrument.attach(b.port);
    b.flow->cmdReadPlate();
    EXPECT_EQ(b.port.commPort(), 4);
    EXPECT_EQ(b.port.settings(), QStringLiteral("4800,E,7,2"));
    EXPECT_EQ(b.port.handshaking(), 2);
    EXPECT_EQ(instrument.commands(), QStringList({"R", "F1", "A", "P", "Q"}));
    EXPECT_EQ(b.wb->plates().text(u"FilterUsed"), QStringLiteral("450"));
    EXPECT_DOUBLE_EQ(b.wb->sheet().rawODAt(0), 0.357);
    EXPECT_EQ(b.prompt.count(), 0) << b.prompt.texts().join(QStringLiteral(" | ")).toStdString();
}

TEST(ReadFlow, AFailedSerialReadLeavesTheRawODsAndTheClearedDisplay)
{
    ReadBench b;
    b.addReader(QStringLiteral("Multiscan"), 1, 2, QStringLiteral("9600,N,8,1"), 0, 450);
    b.chooseReader(QStringLiteral("Multiscan"));
    b.wb->sheet().setRawODAt(3, 0.333);
    b.wb->sheet().setTextAt(PlateSheet::ODs, 3, QStringLiteral("0.333"));
    b.wb->setValidationBoxes(QStringLiteral("old verdict"));
    b.flow->cmdReadPlate(); // nobody answers on the port
    ASSERT_EQ(b.prompt.count(), 1);
    EXPECT_EQ(b.prompt.last().title, QStringLiteral("Unable to Read Plate"));
    EXPECT_DOUBLE_EQ(b.wb->sheet().rawODAt(3), 0.333);
    EXPECT_EQ(b.od(4, 1), QString());
    EXPECT_EQ(b.wb->validationText(0), QString());
    EXPECT_EQ(b.indications.size(), 2);
    EXPECT_EQ(b.wb->plates().text(u"ReaderUsed"), QStringLiteral("Multiscan"));
    EXPECT_TRUE(b.tabs.isEmpty());
}
