#pragma once

#include "FakePrompt.h"
#include "InjectedFailure.h"
#include "QtPrinters.h"
#include "RunPlates.h"
#include "TempProgramFolder.h"

#include "core/RecordSet.h"
#include "core/WellList.h"
#include "store/DbConnection.h"
#include "store/clsPlates.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

// A fresh program folder and a fake prompt for the group and technician directory, with
// helpers that write and read Plates, Groups and Technicians rows directly.
struct DirectoryFixture {
    TempProgramFolder folder;
    FakePrompt prompt;

    // A well list whose wells hold the given names from A1 on, the rest empty.
    static QString wellList(const QStringList &firstWells)
    {
        QStringList items = firstWells;
        while (items.size() < 96)
            items << QString();
        return joinWellList(items);
    }

    // Inserts a saved plate row with its group list and technician.
    void insertPlate(int runID, int plateID, const QString &plateName, const QString &groups,
                     const QString &techName = QStringLiteral("<No Technician Selected>")) const
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO Plates (PlateID, PlateName, RunID, TestName, Groups, Samples, TechName) "
                                  "VALUES (?, ?, ?, 'Generic', ?, ?, ?)"),
                   {plateID, plateName, runID, groups, wellList({}), techName});
    }

    QString savedGroups(int runID, int plateID) const
    {
        DbConnection db = folder.open();
        return db.scalar(QStringLiteral("SELECT Groups FROM Plates WHERE RunID = ? AND PlateID = ?"), {runID, plateID})
            .toString();
    }

    QString savedTech(int runID, int plateID) const
    {
        DbConnection db = folder.open();
        return db
            .scalar(QStringLiteral("SELECT TechName FROM Plates WHERE RunID = ? AND PlateID = ?"), {runID, plateID})
            .toString();
    }

    // One column of a table, in insertion order.
    QStringList column(const QString &sql) const { return RunPlates::column(folder.open(), sql); }
    QStringList groupNames() const { return column(QStringLiteral("SELECT GroupName FROM Groups ORDER BY GroupID")); }
    // By name without regard to case: a server keeps no insertion order for this table.
    QStringList techNames() const
    {
        QStringList names = column(QStringLiteral("SELECT TechName FROM Technicians"));
        names.sort(Qt::CaseInsensitive);
        return names;
    }

    void addGroup(int groupID, const QString &name) const
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO Groups (GroupID, GroupName) VALUES (?, ?)"), {groupID, name});
    }

    void addTech(const QString &name) const
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO Technicians (TechName) VALUES (?)"), {name});
    }

    // Makes every update of the saved plate of that name fail, as a disk or engine failure
    // would, in the middle of a rename that walks all plates.
    void failUpdatesOfPlate(const QString &plateName) const
    {
        DbConnection db = folder.open();
        injectFailure(db, QStringLiteral("injected_failure"), QStringLiteral("UPDATE"), QStringLiteral("Plates"),
                      QStringLiteral("injected failure"),
                      QStringLiteral("OLD.PlateName = '") +
                          QString(plateName).replace(QLatin1Char('\''), QStringLiteral("''")) + QStringLiteral("'"));
    }

    // The plates of a run in memory: one plate per group list given, "Plate #1", "Plate #2", ...
    static RecordSet platesInMemory(const QStringList &groupLists, qint64 runID = 99)
    {
        RecordSet plates = clsPlates::getNewPlateRecordSet(runID);
        for (int i = 1; i < groupLists.size(); ++i)
            clsPlates::addDefaultPlate(plates, i + 1, QStringLiteral("Plate #%1").arg(i + 1), runID);
        for (int i = 0; i < groupLists.size(); ++i)
            plates.setValueAt(i, u"Groups", groupLists[i]);
        return plates;
    }
};

// The group or technician list with its form played by the form's real logic: the test
// says what the user types (the new name, or nothing for Cancel).
template <class Manager, class Form> struct ManagerFixture : DirectoryFixture {
    std::optional<QString> typedName; // nothing: the user cancels
    QStringList formsOpened;          // "flag:name" per form shown
    Manager manager{folder.folder(), prompt, [this](const QString &flag, const QString &name) {
                        formsOpened << flag + ":" + name;
                        Form form = open(flag, name);
                        if (typedName)
                            form.setField(0, *typedName);
                        if (!typedName || !form.ok())
                            form.cancel();
                        return form.getName();
                    }};

    Form open(const QString &flag, const QString &name = QString())
    {
        Form form(folder.folder(), prompt);
        form.setOptionFlag(flag);
        form.setName(name);
        form.load();
        return form;
    }

    void select(const QString &name)
    {
        manager.fillList();
        manager.list().setListIndex(int(manager.list().names().indexOf(name)));
        ASSERT_GE(manager.list().listIndex(), 0) << name.toStdString();
    }
};
