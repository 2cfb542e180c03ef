#include "TempProgramFolder.h"

#include "store/AddedTables.h"
#include "store/LayoutTemplates.h"

#include <gtest/gtest.h>

namespace {

LayoutTemplate layout(const QString &name, const QString &a1)
{
    QStringList groups(96), samples(96);
    samples[0] = a1;
    groups[0] = QStringLiteral("Farm \u00D8st");
    samples[95] = QStringLiteral("PC");
    groups[95] = QStringLiteral("PC");
    return {name, groups, samples};
}

} // namespace

TEST(LayoutTemplates, ADatabaseWithoutTemplatesIsLeftAsItIsUntilOneIsSaved)
{
    TempProgramFolder folder;
    DbConnection db = folder.open();
    const LayoutTemplates templates(db);
    EXPECT_TRUE(templates.names().isEmpty());
    EXPECT_FALSE(templates.load(QStringLiteral("Daily")));
    EXPECT_FALSE(templates.remove(QStringLiteral("Daily")));
    EXPECT_FALSE(templates.rename(QStringLiteral("Daily"), QStringLiteral("Weekly")));
    EXPECT_FALSE(AddedTables::exists(db, QStringLiteral("LayoutTemplates")));
    templates.save(layout(QStringLiteral("Daily"), QStringLiteral("Cow 1")));
    EXPECT_TRUE(AddedTables::exists(db, QStringLiteral("LayoutTemplates")));
}

TEST(LayoutTemplates, KeepLayoutsUnderNamesUniqueWithoutRegardToCase)
{
    TempProgramFolder folder;
    DbConnection db = folder.open();
    const LayoutTemplates templates(db);
    templates.save(layout(QStringLiteral("\u00D8stergaard"), QStringLiteral("Cow 1")));
    templates.save(layout(QStringLiteral("beta's"), QStringLiteral("Cow 2")));
    // The same name in another case (beyond ASCII, too) replaces the template.
    templates.save(layout(QStringLiteral("\u00F8STERGAARD"), QStringLiteral("Cow 3")));
    EXPECT_EQ(templates.names(), (QStringList{QStringLiteral("beta's"), QStringLiteral("\u00F8STERGAARD")}));

    const std::optional<LayoutTemplate> loaded = templates.load(QStringLiteral("\u00D8stergaard"));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->samples, layout(QString(), QStringLiteral("Cow 3")).samples);
    EXPECT_EQ(loaded->groups, layout(QString(), QString()).groups);

    ASSERT_TRUE(templates.rename(QStringLiteral("BETA'S"), QStringLiteral("Gamma")));
    ASSERT_TRUE(templates.remove(QStringLiteral("\u00D8stergaard")));
    EXPECT_EQ(templates.names(), QStringList{QStringLiteral("Gamma")});
    EXPECT_EQ(templates.load(QStringLiteral("gamma"))->samples[0], QStringLiteral("Cow 2"));
}

TEST(LayoutTemplates, NamesMustBeShortPrintableAndNotBlank)
{
    EXPECT_EQ(LayoutTemplates::nameProblem(QStringLiteral("  ")), QStringLiteral("A template needs a name."));
    EXPECT_EQ(LayoutTemplates::nameProblem(QString(61, u'x')),
              QStringLiteral("A template's name can have at most 60 characters."));
    EXPECT_EQ(LayoutTemplates::nameProblem(QString(60, u'x')), QString());
}
