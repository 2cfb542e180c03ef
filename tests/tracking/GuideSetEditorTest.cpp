// Guide sets from the user: typed in or figured from picked plates, the kit's rules, and
// the bad input that is refused with nothing stored.
#include "TrackingFixture.h"

#include "store/AddedTables.h"
#include "store/DbConnection.h"
#include "tracking/GuideSetEditor.h"
#include "tracking/GuideSetStore.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

struct EditorBench {
    SavedPlates saved;
    FakePrompt prompt;
    FakeClock clock{QDateTime(QDate(2024, 3, 9), QTime(10, 0, 0))};
    GuideSetEditor editor{saved.folder(), prompt, clock};
    GuideSetEditor::Entry entry{kOrvexa, QStringLiteral("NC"), QStringLiteral(" L-100 "), QDate(2024, 2, 1),
                                QStringLiteral("Ana Ruiz")};

    EditorBench() { saved.saveRun(QStringLiteral("Run of January"), orvexaPlates()); }

    std::vector<GuideSetEditor::Candidate> plates()
    {
        return editor.candidates({kOrvexa, std::nullopt, std::nullopt, QDate(2024, 1, 1), QDate(2024, 1, 31)});
    }
    GuideSetBook book()
    {
        DbConnection db(saved.temp().databaseLocation());
        return GuideSetStore::read(db, kOrvexa);
    }
};

} // namespace

TEST(GuideSetEditor, BadInputIsRefusedWithItsReasonAndNothingIsStored)
{
    EditorBench bench;
    const std::vector<GuideSetEditor::Candidate> all = bench.plates();
    const struct {
        std::function<std::optional<qint64>()> add;
        const char *reason;
    } cases[] = {
        {[&] { return bench.editor.addTyped(bench.entry, QStringLiteral("1,2x"), QStringLiteral("0.1")); },
         "the mean \"1,2x\" is not a number"},
        {[&] { return bench.editor.addTyped(bench.entry, QStringLiteral("1.2"), QString()); },
         "the SD \"\" is not a number"},
        {[&] { return bench.editor.addTyped(bench.entry, QStringLiteral("1.2"), QStringLiteral("0")); },
         "the SD must be above 0"},
        {[&] { return bench.editor.addTyped(bench.entry, QStringLiteral("1.2"), QStringLiteral("-0.05")); },
         "the SD must be above 0"},
        {[&] { return bench.editor.addFromBaseline(bench.entry, {}); }, "A guide set needs plates"},
        {[&] { return bench.editor.addFromBaseline(bench.entry, {all.front()}); }, "at least two plates"},
    };
    for (const auto &c : cases) {
        EXPECT_FALSE(c.add()) << c.reason;
        EXPECT_EQ(bench.prompt.last().title, GuideSetEditor::kTitle);
        EXPECT_TRUE(bench.prompt.last().text.contains(QString::fromUtf8(c.reason)))
            << bench.prompt.last().text.toStdString();
    }
    DbConnection db(bench.saved.temp().databaseLocation());
    EXPECT_FALSE(AddedTables::exists(db, QStringLiteral("QcGuideSets")));
}

TEST(GuideSetEditor, KeepsATypedSetAndAShortBaselineAfterAWarning)
{
    EditorBench bench;
    ASSERT_TRUE(bench.editor.addTyped(bench.entry, QStringLiteral(" 1.2 "), QStringLiteral("0.05")));
    EXPECT_EQ(bench.prompt.count(), 0);

    // Plates A and B: NC means 1.1 and 0.8.
    bench.entry.start = QDate(2024, 3, 1);
    ASSERT_TRUE(bench.editor.addFromBaseline(bench.entry, bench.plates()));
    EXPECT_TRUE(bench.prompt.last().text.contains(QStringLiteral("figured from 2 plates")));

    const QList<GuideSet> sets = bench.book().all();
    ASSERT_EQ(sets.size(), 2);
    EXPECT_EQ(sets[0].mean, 1.2);
    EXPECT_EQ(sets[0].plateCount, 0);
    EXPECT_EQ(sets[0].lotNumber, QStringLiteral("L-100"));
    EXPECT_EQ(sets[0].setAt, bench.clock.now());
    EXPECT_NEAR(sets[1].mean, 0.95, 1e-12);
    EXPECT_NEAR(sets[1].sd, std::sqrt(0.045), 1e-12);
    EXPECT_EQ(sets[1].plateCount, 2);
}

TEST(GuideSetEditor, AKitsRulesAreKeptOnlyWhenEveryNameIsKnown)
{
    EditorBench bench;
    EXPECT_FALSE(bench.editor.setRules(kOrvexa, {QStringLiteral("1-3s"), QStringLiteral("7x")}));
    EXPECT_TRUE(bench.prompt.last().text.contains(QStringLiteral("7x")));
    EXPECT_TRUE(bench.editor.setRules(kOrvexa, {QStringLiteral("1-3s"), QStringLiteral("12x")}));
    DbConnection db(bench.saved.temp().databaseLocation());
    EXPECT_EQ(GuideSetStore::rules(db, kOrvexa), QList<WestgardRule>({WestgardRule::OneThreeS, WestgardRule::TwelveX}));
}
