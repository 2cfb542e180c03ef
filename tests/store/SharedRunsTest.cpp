// Runs saved and opened by name from the command line, on a file or a server, and many
// workstations saving into one folder at once.
#include "FakePrompt.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "directory/GroupDirectory.h"
#include "reports/PlatesJsonWriter.h"
#include "store/DatabaseSchema.h"
#include "store/NamedRunStore.h"
#include "store/RunCatalog.h"
#include "store/RunOpenLogic.h"
#include "store/RunSaveAsLogic.h"
#include "store/clsPlates.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

QString cliPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../tavimetra-cli");
}

struct Cli {
    int exitCode = -1;
    QJsonObject json;
    QString err;
};

Cli runCli(const QStringList &args)
{
    QProcess process;
    process.start(cliPath(), args);
    Cli run;
    if (!process.waitForFinished(60000)) {
        ADD_FAILURE() << "tavimetra-cli did not finish: " << args.join(u' ').toStdString();
        return run;
    }
    run.exitCode = process.exitCode();
    run.json = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// A plates file of count plates whose Samples start with tag, with stray ids to be ignored.
QString platesFile(const TempProgramFolder &temp, int count, const QString &tag)
{
    RecordSet plates = clsPlates::getNewPlateRecordSet(77);
    for (int i = 1; i < count; ++i)
        clsPlates::addDefaultPlate(plates, 40 + i, QStringLiteral("Plate #%1").arg(i + 1), 77);
    for (int i = 0; i < count; ++i)
        plates.setValueAt(i, u"Samples", tag + QString::number(i));
    const QString path = temp.rootPath() + QStringLiteral("/plates-") + tag + QStringLiteral(".json");
    TempProgramFolder::writeFile(path, QJsonDocument(PlatesJsonWriter::toJson(plates)).toJson());
    return path;
}

TEST(SavedByName, ARunSavedOpensWithItsNewIdsAndIsListed)
{
    TempProgramFolder temp;
    const QString db = temp.databaseLocation();
    const Cli saved = runCli({"save-run", "--db", db, "--folder", "Lab 2", "--run-name", "O'Brien", "--plates",
                              platesFile(temp, 3, QStringLiteral("s"))});
    ASSERT_EQ(saved.exitCode, 0) << saved.err.toStdString();
    EXPECT_EQ(saved.json.value("runId").toInt(), 1);
    EXPECT_EQ(saved.json.value("plateIds").toArray(), (QJsonArray{1, 2, 3}));

    const Cli opened = runCli({"open-run", "--db", db, "--folder", "Lab 2", "--run-name", "O'Brien"});
    ASSERT_EQ(opened.exitCode, 0) << opened.err.toStdString();
    const QJsonArray plates = opened.json.value("plates").toArray();
    ASSERT_EQ(plates.size(), 3);
    EXPECT_EQ(plates[2].toObject().value("PlateID").toInt(), 3);
    EXPECT_EQ(plates[2].toObject().value("RunID").toInt(), 1);
    EXPECT_EQ(plates[2].toObject().value("Samples").toString(), "s2");

    const QJsonArray folders = runCli({"runs", "--db", db}).json.value("folders").toArray();
    ASSERT_EQ(folders.size(), 2); // the delivered "Runs" and the new one
    EXPECT_EQ(folders[0].toObject().value("name").toString(), "Lab 2");
    EXPECT_EQ(folders[0].toObject().value("runs").toArray()[0].toObject().value("name").toString(), "O'Brien");
}

TEST(SavedByName, AnExistingRunIsRefusedUnlessReplacedUnderItsOwnId)
{
    TempProgramFolder temp;
    const QString db = temp.databaseLocation();
    const QStringList args{"save-run", "--db", db, "--folder", "Runs", "--run-name", "R"};
    ASSERT_EQ(runCli(args + QStringList{"--plates", platesFile(temp, 2, "old")}).exitCode, 0);

    const Cli again = runCli(args + QStringList{"--plates", platesFile(temp, 1, "new")});
    EXPECT_EQ(again.exitCode, 2);
    EXPECT_TRUE(again.err.contains("already has a run \"R\"")) << again.err.toStdString();
    EXPECT_EQ(runCli({"open-run", "--db", db, "--folder", "Runs", "--run-name", "R"}).json["plates"].toArray().size(),
              2);

    const Cli replaced = runCli(args + QStringList{"--plates", platesFile(temp, 1, "new"), "--replace"});
    ASSERT_EQ(replaced.exitCode, 0) << replaced.err.toStdString();
    EXPECT_EQ(replaced.json.value("runId").toInt(), 1);
    const QJsonArray plates =
        runCli({"open-run", "--db", db, "--folder", "Runs", "--run-name", "R"}).json["plates"].toArray();
    ASSERT_EQ(plates.size(), 1);
    EXPECT_EQ(plates[0].toObject().value("Samples").toString(), "new0");
}

TEST(SavedByName, BadInputIsToldAndSavesNothing)
{
    TempProgramFolder temp;
    const QString db = temp.databaseLocation();
    const QString bad = temp.rootPath() + QStringLiteral("/bad.json");
    TempProgramFolder::writeFile(bad, "{\"plates\": [{\"PlateID\": \"one\"}]}");
    const Cli saved = runCli({"save-run", "--db", db, "--folder", "F", "--run-name", "R", "--plates", bad});
    EXPECT_EQ(saved.exitCode, 2);
    EXPECT_TRUE(saved.err.contains("PlateID")) << saved.err.toStdString();
    const Cli missing = runCli({"open-run", "--db", db, "--folder", "Runs", "--run-name", "Nothing"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_TRUE(missing.err.contains("has no run \"Nothing\"")) << missing.err.toStdString();
    EXPECT_EQ(runCli({"runs", "--db", db}).json.value("folders").toArray().size(), 1);
}

// Eight workstations save 25 runs each into one folder from the command line while eight
// more add groups, many under names that others add at the same moment.
TEST(SavedByName, EightWorkstationsSavingAndAddingGroupsAtOnceGetEverythingOnceWithIdsWithoutGaps)
{
    TempProgramFolder temp;
    if (!temp.onServer())
        GTEST_SKIP() << "workstations share runs on a server";
    constexpr int kWorkers = 8;
    constexpr int kRunsEach = 25;
    const QString plates = platesFile(temp, 2, QStringLiteral("w"));
    std::vector<std::unique_ptr<QProcess>> workers;
    for (int w = 0; w < kWorkers; ++w) {
        auto process = std::make_unique<QProcess>();
        const QString script =
            QStringLiteral("for i in $(seq 1 %1); do \"$0\" save-run --db \"$1\" --folder Shared --run-name W%2-$i "
                           "--plates \"$2\" >/dev/null || exit 1; done")
                .arg(kRunsEach)
                .arg(w);
        process->start(QStringLiteral("bash"), {"-c", script, cliPath(), temp.databaseLocation(), plates});
        workers.push_back(std::move(process));
    }
    // Each adder tries 12 names: 4 of its own and 8 of 16 shared ones, starting at its own
    // place among them.
    std::atomic<int> added{0};
    std::vector<std::string> failures;
    std::mutex failuresMutex;
    std::vector<std::thread> adders;
    for (int w = 0; w < kWorkers; ++w) {
        adders.emplace_back([&, w] {
            try {
                const DbConnection db(temp.databaseLocation());
                const GroupDirectory groups(db);
                for (int i = 0; i < 12; ++i) {
                    const QString name = i < 4 ? QStringLiteral("Own %1-%2").arg(w).arg(i)
                                               : QStringLiteral("Farm %1").arg((2 * w + i) % 16);
                    GroupDirectory::Fields fields;
                    fields[0] = name;
                    if (groups.insertGroup(fields))
                        ++added;
                }
            } catch (const std::exception &e) {
                const std::lock_guard lock(failuresMutex);
                failures.push_back(e.what());
            }
        });
    }
    for (std::thread &adder : adders)
        adder.join();
    for (auto &process : workers) {
        ASSERT_TRUE(process->waitForFinished(300000));
        EXPECT_EQ(process->exitCode(), 0) << process->readAllStandardError().toStdString();
    }
    EXPECT_EQ(failures, std::vector<std::string>());

    const DbConnection db = temp.open();
    constexpr int kRuns = kWorkers * kRunsEach;
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM Runs").toInt(), kRuns);
    EXPECT_EQ(db.scalar("SELECT COUNT(DISTINCT RunName) FROM Runs").toInt(), kRuns);
    EXPECT_EQ(db.scalar("SELECT MAX(RunID) FROM Runs").toInt(), kRuns);
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM Folders WHERE FolderName = 'Shared'").toInt(), 1);
    // Every run holds its two plates, as written.
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM Plates").toInt(), 2 * kRuns);
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM (SELECT RunID FROM Plates WHERE Samples IN ('w0', 'w1') "
                        "GROUP BY RunID HAVING COUNT(DISTINCT Samples) = 2) AS whole")
                  .toInt(),
              kRuns);
    // Every group once: 32 own names and the 16 shared ones.
    constexpr int kGroups = kWorkers * 4 + 16;
    EXPECT_EQ(added.load(), kGroups);
    EXPECT_EQ(db.scalar("SELECT COUNT(*) FROM Groups").toInt(), kGroups);
    EXPECT_EQ(db.scalar("SELECT COUNT(DISTINCT GroupName) FROM Groups").toInt(), kGroups);
    EXPECT_EQ(db.scalar("SELECT MAX(GroupID) FROM Groups").toInt(), kGroups);
}

TEST(CopyDb, MovesAFileOntoAnEmptyServerDatabaseOnceAndNeverOverAnother)
{
    TempProgramFolder temp;
    if (!temp.onServer())
        GTEST_SKIP() << "copies onto a server";
    {
        const DbConnection file(temp.databasePath());
        NamedRunStore(file).save("Farm runs", "R1", RunPlates::make(2, 1, "moved"), false);
        file.execute("INSERT INTO Groups (GroupID, GroupName) VALUES (4, 'Hill Farm')");
        file.execute("INSERT INTO Technicians (TechName) VALUES ('Ann')");
    }
    const Cli copied = runCli({"copy-db", "--from", temp.databasePath(), "--to", temp.databaseLocation()});
    ASSERT_EQ(copied.exitCode, 0) << copied.err.toStdString();
    EXPECT_EQ(copied.json.value("plates").toInt(), 2);
    EXPECT_EQ(copied.json.value("folders").toInt(), 2);

    const DbConnection server = temp.open();
    EXPECT_EQ(RunPlates::tags(server, 1), QStringList{"moved"});
    EXPECT_EQ(server.scalar("SELECT GroupName FROM Groups WHERE GroupID = 4").toString(), "Hill Farm");
    EXPECT_EQ(server.scalar("SELECT COUNT(*) FROM UserReaders").toInt(), 2);
    // A reader added later takes an id after the copied ones.
    server.execute("INSERT INTO UserReaders (UserReaderName) VALUES ('New')");
    EXPECT_EQ(server.scalar("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = 'New'").toInt(), 3);
    // The trail's rows came along, and the copy left its own last.
    EXPECT_EQ(server
                  .scalar("SELECT Action || '|' || OldValue || '|' || NewValue FROM AuditTrail ORDER BY EntryID DESC "
                          "LIMIT 1")
                  .toString(),
              temp.databasePath().prepend("Database copied|") + "|folders: 2, runs: 1, plates: 2");
    EXPECT_GT(server.scalar("SELECT COUNT(*) FROM AuditTrail WHERE Action = 'Plate added'").toInt(), 0);

    const Cli again = runCli({"copy-db", "--from", temp.databasePath(), "--to", temp.databaseLocation()});
    EXPECT_EQ(again.exitCode, 2);
    EXPECT_TRUE(again.err.contains("is not empty")) << again.err.toStdString();
    EXPECT_EQ(server.scalar("SELECT COUNT(*) FROM Plates").toInt(), 2);
}

// This workstation opens run "A" (three plates "mine"); another then saves it with one
// plate "theirs", or deletes it.
struct TwoWorkstations {
    TempProgramFolder temp;
    FakePrompt prompt;
    RunSaveAsLogic saveAs{temp.folder(), prompt};

    void SetUp()
    {
        const DbConnection db = temp.open();
        NamedRunStore(db).save(kDeliveryFolderName, "A", RunPlates::make(3, 1, "old"), false);
        RunOpenLogic open(temp.folder(), prompt);
        open.load();
        open.setRunNameText("A");
        ASSERT_EQ(open.open(), RunBrowser::CommandEnd::Close);
        RecordSet plates = open.getPlatesRecord();
        RunPlates::retag(plates, "mine");
        saveAs.setPlatesRecord(plates);
    }
    void otherSaves() const
    {
        NamedRunStore(temp.open()).save(kDeliveryFolderName, "A", RunPlates::make(1, 1, "theirs"), true);
    }
    QStringList tags() const { return RunPlates::tags(temp.open(), 1); }
};

TEST(TwoWorkstationsOnOneRun, TheSecondSaveIsToldAndChoosesWhatHappens)
{
    TwoWorkstations w;
    if (!w.temp.onServer())
        GTEST_SKIP() << "runs are shared on a server";
    ASSERT_NO_FATAL_FAILURE(w.SetUp());
    w.otherSaves();

    w.prompt.queueAnswers({MsgAnswer::Cancel, MsgAnswer::Yes, MsgAnswer::No});
    EXPECT_FALSE(w.saveAs.simpleSave());
    EXPECT_FALSE(w.saveAs.saveAsNewRequested());
    EXPECT_EQ(w.prompt.last().title, RunSaveAsLogic::kChangedElsewhereTitle);
    EXPECT_EQ(w.tags(), QStringList{"theirs"});

    EXPECT_FALSE(w.saveAs.simpleSave()); // Yes: the main window goes on to Save As
    EXPECT_TRUE(w.saveAs.saveAsNewRequested());
    EXPECT_EQ(w.tags(), QStringList{"theirs"});

    EXPECT_TRUE(w.saveAs.simpleSave()); // No: overwrite
    EXPECT_EQ(w.tags(), QStringList{"mine"});
    EXPECT_EQ(RunPlates::rowCount(w.temp.open(), 1), 3);
    w.prompt.clearBoxes();
    EXPECT_TRUE(w.saveAs.simpleSave()); // its own save changed nothing elsewhere: no question
    EXPECT_EQ(w.prompt.count(), 0);
}

TEST(TwoWorkstationsOnOneRun, ASaveOfARunDeletedElsewhereIsToldAndWritesNothing)
{
    TwoWorkstations w;
    if (!w.temp.onServer())
        GTEST_SKIP() << "runs are shared on a server";
    ASSERT_NO_FATAL_FAILURE(w.SetUp());
    RunCatalog(w.temp.open()).deleteRun(1);
    EXPECT_FALSE(w.saveAs.simpleSave());
    EXPECT_EQ(w.prompt.last().title, RunSaveAsLogic::kNotSavedTitle);
    EXPECT_TRUE(w.prompt.last().text.contains(RunSaveAsLogic::kRunGoneText));
    EXPECT_EQ(RunPlates::rowCount(w.temp.open(), 1), 0);
}

} // namespace
