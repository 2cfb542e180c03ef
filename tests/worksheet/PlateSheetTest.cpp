#include "worksheet/PlateSheet.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

TEST(PlateSheet, InclusionFlagMarksTheWellOnEverySheet)
{
    PlateSheet sheet;
    sheet.setInclusionFlag(3, 2, 0);
    EXPECT_EQ(sheet.getInclusionFlag(3, 2), 0);
    EXPECT_EQ(sheet.backColour(3, 2), PlateSheet::kExcludedBackColour);
    sheet.setInclusionFlag(3, 2, 2);
    EXPECT_EQ(sheet.getInclusionFlag(3, 2), 2);
    EXPECT_EQ(sheet.backColour(3, 2), 0u);
}

TEST(PlateSheet, SettingAFlagKeepsTheCursor)
{
    PlateSheet sheet;
    sheet.setSelection(2, 3, 4, 5);
    sheet.setInclusionFlag(8, 12, 0);
    EXPECT_EQ(sheet.row(), 2);
    EXPECT_EQ(sheet.col(), 3);
    EXPECT_EQ(sheet.rowSel(), 4);
    EXPECT_EQ(sheet.colSel(), 5);
}

TEST(PlateSheet, WellOutsideThePlateIsAnError)
{
    PlateSheet sheet;
    EXPECT_THROW(sheet.getRawOD(9, 1), std::out_of_range);
    EXPECT_THROW(sheet.getInclusionFlag(1, 13), std::out_of_range);
    EXPECT_THROW(sheet.setInclusionFlag(0, 1, 0), std::out_of_range);
}

TEST(PlateSheet, CountComparesUpperCaseAndSkipsMarkedWells)
{
    PlateSheet sheet;
    sheet.setText(PlateSheet::Samples, 1, 1, QStringLiteral("PC"));
    sheet.setText(PlateSheet::Samples, 2, 1, QStringLiteral("pc"));
    sheet.setText(PlateSheet::Samples, 3, 1, QStringLiteral("PC"));
    sheet.setInclusionFlag(3, 1, 0);
    EXPECT_EQ(sheet.countSheetSamples(PlateSheet::Samples, QStringLiteral("PC"), 0), 2);
    EXPECT_EQ(sheet.countSheetSamples(PlateSheet::Samples, QStringLiteral("PC"), PlateSheet::kExcludedBackColour), 1);
}

TEST(PlateSheet, SelectionIsNormalisedWhateverItsDirection)
{
    PlateSheet sheet;
    sheet.setSelection(5, 7, 2, 3);
    const SheetRange r = sheet.getSheetSelection();
    EXPECT_EQ(r.firstRow, 2);
    EXPECT_EQ(r.firstCol, 3);
    EXPECT_EQ(r.lastRow, 5);
    EXPECT_EQ(r.lastCol, 7);
}

TEST(PlateSheet, BulkUpdateSendsOneReset)
{
    PlateSheet sheet;
    QSignalSpy cells(&sheet, &PlateSheet::cellChanged);
    QSignalSpy resets(&sheet, &PlateSheet::sheetReset);
    QStringList texts(96, QStringLiteral("x"));
    sheet.setSheetTexts(PlateSheet::Groups, texts);
    EXPECT_EQ(cells.count(), 0);
    EXPECT_EQ(resets.count(), 1);
    sheet.setText(PlateSheet::Groups, 1, 1, QStringLiteral("y"));
    EXPECT_EQ(cells.count(), 1);
    EXPECT_EQ(sheet.sheetTexts(PlateSheet::Groups)[0], QStringLiteral("y"));
}
