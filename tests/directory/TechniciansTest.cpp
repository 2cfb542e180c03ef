#include "DirectoryFixture.h"

#include "directory/DirectoryError.h"
#include "directory/TechForm.h"
#include "directory/TechManager.h"
#include "store/DatabaseError.h"

#include <gtest/gtest.h>

namespace {

const PromptBox kTechExists{"Tech Already Exists", "This Tech already exists in the database.", MsgIcon::Exclamation};
const QString kInCurrentRun = "This technician exists in the current run.  If you still want to delete this run, "
                              "please remove this technician from the current run and try again.";
const QString kInSavedRuns = "This technician exists in previously saved runs.  If you still want to delete this "
                             "run, please delete any saved runs that use this technician and try again.";

QString noWells()
{
    return DirectoryFixture::wellList({});
}

struct TechFixture : ManagerFixture<TechManager, TechForm> {
    // Plates of the run in memory, one per technician given.
    static RecordSet platesOf(const QStringList &techs)
    {
        RecordSet plates = platesInMemory(QStringList(techs.size(), noWells()));
        for (int i = 0; i < techs.size(); ++i)
            plates.setValueAt(i, u"TechName", techs[i]);
        return plates;
    }
};

} // namespace

TEST(TechForm, RefusesANameInUseInAnyCaseOrHoldingTheDelimiterAndKeepsWhatWasTyped)
{
    const PromptBox delimiter{"Technician Name Not Allowed",
                              "A technician name cannot contain the character \"¬\".  Please choose another name.",
                              MsgIcon::Exclamation};
    struct Case {
        QString flag;
        QString editing;
        QString typed;
        PromptBox box;
    };
    const Case cases[] = {
        {TechForm::kAdd, {}, QStringLiteral("éLOÏSE d'arcy"), kTechExists},
        {TechForm::kAdd, {}, QStringLiteral("Ann¬Lee"), delimiter},
        {TechForm::kEdit, "ann", "BOB", kTechExists},
        {TechForm::kEdit, "ann", "Ann", kTechExists},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.typed.toStdString());
        TechFixture f;
        f.addTech(QStringLiteral("Éloïse D'Arcy"));
        f.addTech("ann");
        f.addTech("Bob");
        TechForm form = f.open(c.flag, c.editing);
        form.setText(c.typed);
        EXPECT_FALSE(form.ok());
        EXPECT_EQ(f.prompt.boxes(), QList<PromptBox>{c.box});
        EXPECT_EQ(form.text(), c.typed);
        EXPECT_EQ(f.techNames(), (QStringList{"ann", "Bob", QStringLiteral("Éloïse D'Arcy")}));
    }
}

TEST(TechForm, EditShowsTheStoredName)
{
    TechFixture f;
    f.addTech("D'Arcy");
    TechForm form = f.open(TechForm::kEdit, "D'Arcy");
    EXPECT_EQ(form.text(), "D'Arcy");

    EXPECT_THROW(f.open(TechForm::kEdit, "Nobody"), DirectoryError);
}

TEST(TechRename, ReachesSavedPlatesAndThePlatesInMemory)
{
    TechFixture f;
    f.addTech("D'Arcy");
    f.addTech("Bob");
    f.insertPlate(1, 1, "Plate #1", noWells(), "D'Arcy");
    f.insertPlate(1, 2, "Plate #2", noWells(), "Bob");
    f.insertPlate(2, 1, "Plate #1", noWells(), "D'Arcy");
    f.manager.setPlatesRecord(TechFixture::platesOf({"D'Arcy"}));

    f.select("D'Arcy");
    f.typedName = "O'Shea";
    f.manager.edit();

    EXPECT_EQ(f.formsOpened, QStringList{"EDIT:D'Arcy"});
    EXPECT_EQ(f.prompt.count(), 0);
    EXPECT_EQ(f.techNames(), (QStringList{"Bob", "O'Shea"}));
    EXPECT_EQ(f.savedTech(1, 1), "O'Shea");
    EXPECT_EQ(f.savedTech(1, 2), "Bob");
    EXPECT_EQ(f.savedTech(2, 1), "O'Shea");
    EXPECT_EQ(f.manager.getPlatesRecord().valueAt(0, u"TechName").toString(), "O'Shea");
    EXPECT_EQ(f.manager.list().names(), (QStringList{"Bob", "O'Shea"}));
    EXPECT_EQ(f.manager.list().listIndex(), 1); // back at its index, now "O'Shea"
}

TEST(TechRename, AFailureHalfWayLeavesTheDatabaseAndThePlatesAsTheyWere)
{
    TechFixture f;
    f.addTech("D'Arcy");
    f.insertPlate(1, 1, "Plate #1", noWells(), "D'Arcy");
    f.insertPlate(1, 2, "Plate #2", noWells(), "D'Arcy");
    f.failUpdatesOfPlate("Plate #2");
    f.manager.setPlatesRecord(TechFixture::platesOf({"D'Arcy"}));
    f.select("D'Arcy");
    f.typedName = "Dee";
    EXPECT_THROW(f.manager.edit(), DatabaseError);
    EXPECT_EQ(f.techNames(), QStringList{"D'Arcy"});
    EXPECT_EQ(f.savedTech(1, 1), "D'Arcy");
    EXPECT_EQ(f.savedTech(1, 2), "D'Arcy");
    EXPECT_EQ(f.manager.plates().valueAt(0, u"TechName").toString(), "D'Arcy");
}

TEST(TechDelete, ATechnicianOfThePlatesInHandOrOfASavedPlateIsKept)
{
    TechFixture f;
    f.addTech("D'Arcy");
    f.addTech("Ann");
    f.insertPlate(4, 1, "Plate #1", noWells(), "Ann");
    RecordSet inMemory = TechFixture::platesOf({"Bob", "D'Arcy"});
    inMemory.setPosition(0);
    f.manager.setPlatesRecord(inMemory);
    f.select("D'Arcy");
    f.manager.deleteTech();
    f.select("Ann");
    f.manager.deleteTech();
    EXPECT_EQ(f.prompt.boxes(), (QList<PromptBox>{PromptBox{"Tech Exists in Saved Runs", kInCurrentRun},
                                                  PromptBox{"Technician Exists in Saved Runs", kInSavedRuns}}));
    EXPECT_EQ(f.techNames(), (QStringList{"Ann", "D'Arcy"}));
    EXPECT_EQ(f.manager.plates().position(), 0);
}
