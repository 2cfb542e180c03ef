#include "core/RecordSet.h"

#include <gtest/gtest.h>

#include <QDate>

namespace {

RecordSet people()
{
    RecordSet set({QStringLiteral("Name"), QStringLiteral("Age"), QStringLiteral("Seen")});
    const struct {
        const char *name;
        QVariant age;
    } rows[] = {{"bob", 30}, {"Al", QVariant()}, {"cy", 30}, {"Bea", 4}, {"al", 7}};
    for (const auto &r : rows) {
        set.addNew();
        set.setValue(u"Name", QString::fromLatin1(r.name));
        set.setValue(u"Age", r.age);
    }
    return set;
}

QStringList names(RecordSet &set)
{
    QStringList out;
    for (set.moveFirst(); !set.eof(); set.moveNext())
        out << set.text(u"name");
    return out;
}

} // namespace

TEST(RecordSet, FieldsAreFoundWithoutRegardToCase)
{
    RecordSet set = people();
    set.moveFirst();
    EXPECT_EQ(set.text(u"NAME"), QStringLiteral("bob"));
    EXPECT_EQ(set.value(u"age").toInt(), 30);
    EXPECT_THROW(set.value(u"Nope"), RecordSetError);
}

TEST(RecordSet, NullIsDistinctFromEmptyText)
{
    RecordSet set = people();
    set.moveFirst();
    set.setValue(u"Seen", QString(""));
    EXPECT_FALSE(set.isNull(u"Seen"));
    set.moveNext();
    EXPECT_TRUE(set.isNull(u"Seen"));
    EXPECT_TRUE(set.text(u"Seen").isEmpty());
}

TEST(RecordSet, CursorWalksAndStopsAtEof)
{
    RecordSet set = people();
    EXPECT_EQ(set.recordCount(), 5);
    EXPECT_EQ(names(set).size(), 5);
    EXPECT_TRUE(set.eof());
    EXPECT_THROW(set.value(u"Name"), RecordSetError);
    set.moveLast();
    EXPECT_EQ(set.text(u"Name"), QStringLiteral("al"));
}

TEST(RecordSet, DeleteLeavesCursorOnTheFollowingRow)
{
    RecordSet set = people();
    set.setPosition(1);
    set.deleteCurrent();
    EXPECT_EQ(set.recordCount(), 4);
    EXPECT_EQ(set.text(u"Name"), QStringLiteral("cy"));
    set.moveLast();
    set.deleteCurrent();
    EXPECT_TRUE(set.eof());
}

TEST(RecordSet, SortIsStableWithNullsFirst)
{
    RecordSet set = people();
    set.sort(QStringLiteral("Age ASC"));
    EXPECT_EQ(names(set), (QStringList{"Al", "Bea", "al", "bob", "cy"}));
    set.sort(QStringLiteral("Age DESC, Name"));
    EXPECT_EQ(names(set), (QStringList{"bob", "cy", "al", "Bea", "Al"}));
}

TEST(RecordSet, TextSortIgnoresCaseAndKeepsOrderOfEquals)
{
    RecordSet set = people();
    set.sort(QStringLiteral("Name ASC"));
    EXPECT_EQ(names(set), (QStringList{"Al", "al", "Bea", "bob", "cy"}));
}

TEST(RecordSet, DatesSortAsDates)
{
    RecordSet set({QStringLiteral("D")});
    for (const QDate &d : {QDate(2024, 10, 2), QDate(2024, 9, 30), QDate(2023, 12, 31)}) {
        set.addNew();
        set.setValue(u"D", d);
    }
    set.sort(QStringLiteral("D"));
    set.moveFirst();
    EXPECT_EQ(set.value(u"D").toDate(), QDate(2023, 12, 31));
}

TEST(RecordSet, CopySharesNothing)
{
    RecordSet set = people();
    set.setPosition(2);
    RecordSet copy = copyRecordset(set);
    EXPECT_EQ(copy.position(), 2);
    copy.setValue(u"Name", QStringLiteral("changed"));
    copy.addNew();
    EXPECT_EQ(set.text(u"Name"), QStringLiteral("cy"));
    EXPECT_EQ(set.recordCount(), 5);
}

TEST(RecordSet, FindFirstComparesTextExactly)
{
    RecordSet set = people();
    EXPECT_TRUE(set.findFirst(u"Name", QStringLiteral("al")));
    EXPECT_EQ(set.position(), 4);
    EXPECT_FALSE(set.findFirst(u"Name", QStringLiteral("AL")));
    EXPECT_TRUE(set.eof());
    EXPECT_TRUE(set.findFirst(u"Age", 4.0));
    EXPECT_EQ(set.text(u"Name"), QStringLiteral("Bea"));
}
