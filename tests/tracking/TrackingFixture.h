#pragma once

#include "FakeBrowser.h"
#include "FakeClock.h"
#include "FakePrompt.h"
#include "PlateRecordBuilder.h"
#include "QtPrinters.h"
#include "SavedPlates.h"

#include "tracking/TrackControlsLogic.h"

#include <QDate>
#include <QTime>

// Wells of the tracking tests.
inline TestWell control(const char *type, const char *od, int flag = 1)
{
    return TestWell{QString::fromLatin1(type), QStringLiteral("Herd 1"), QString::fromLatin1(od), QString(), flag};
}

inline TestWell sample(const char *name, const char *od)
{
    return TestWell{QString::fromLatin1(name), QStringLiteral("Herd 1"), QString::fromLatin1(od), QStringLiteral("NEG"),
                    1};
}

// A read plate of the kit, with the wells given; every other well empty.
inline TestPlate readPlate(const QString &name, const QString &test, const QDate &date,
                           const QMap<QString, TestWell> &wells, const QString &lot = QStringLiteral("L-100"),
                           const QString &tech = QStringLiteral("Ana Ruiz"), const QTime &time = QTime(9, 0, 0))
{
    TestPlate plate;
    plate.plateName = name;
    plate.testName = test;
    plate.dateRead = date;
    plate.timeRead = time;
    plate.lotNumber = lot;
    plate.techName = tech;
    plate.wells = wells;
    return plate;
}

inline const QString kOrvexa = QStringLiteral("Orvexa 412"); // inhibition: critical NC, ratio %I of the PC
inline const QString kKestrin = QStringLiteral("KSV 414");   // no ratio: critical PC

// Two Orvexa plates whose figures are worked out by hand in the tests:
//   plate A, 1/5/2024: NC 1.000 and 1.200, PC 0.200 and 0.400, a sample 0.900
//   plate B, 1/6/2024: NC 0.800, PC 0.300, an excluded PC 2.000 and a PC "pc" in lower case
inline QList<TestPlate> orvexaPlates()
{
    return {
        readPlate(QStringLiteral("Plate A"), kOrvexa, QDate(2024, 1, 5),
                  {{"A1", control("NC", "1.000")},
                   {"B1", control("NC", "1.200")},
                   {"C1", control("PC", "0.200")},
                   {"D1", control("PC", "0.400")},
                   {"E1", sample("Cow 7", "0.900")}}),
        readPlate(QStringLiteral("Plate B"), kOrvexa, QDate(2024, 1, 6),
                  {{"A1", control("NC", "0.800")},
                   {"C1", control("PC", "0.300")},
                   {"D1", control("PC", "2.000", 0)},
                   {"E1", control("pc", "1.500")}},
                  QStringLiteral("L-100"), QStringLiteral("Ben Okafor"), QTime(14, 30, 5)),
    };
}

// The dialog's logic on a folder of saved plates, with fake boxes, browser and clock.
struct TrackingBench {
    SavedPlates saved;
    FakePrompt prompt;
    FakeBrowser browser;
    FakeClock clock{QDateTime(QDate(2024, 3, 9), QTime(10, 0, 0))};
    TrackControlsLogic logic{saved.folder(), prompt, browser, clock};

    // Saves the plates as run "Run of January" and chooses the kit and January 2024.
    void january(const QList<TestPlate> &plates, const QString &test = kOrvexa)
    {
        saved.saveRun(QStringLiteral("Run of January"), plates);
        choose(test, QStringLiteral("1/1/2024"), QStringLiteral("1/31/2024"));
    }
    TrackingData gather(const QList<TestPlate> &plates, const QString &test = kOrvexa)
    {
        january(plates, test);
        return logic.gatherTrackingData();
    }

    // Loads the dialog and chooses the kit and the dates.
    void choose(const QString &test, const QString &from, const QString &to)
    {
        logic.load();
        logic.tests.index = int(logic.tests.items.indexOf(test));
        const QStringList f = from.split(u'/'), t = to.split(u'/');
        logic.monthRange = {f[0], t[0]};
        logic.dayRange = {f[1], t[1]};
        logic.yearRange = {f[2], t[2]};
    }
};
