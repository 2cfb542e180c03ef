#pragma once

#include "PlateRecordBuilder.h"

// The plates of the run "Spring Run" that the report tests share.
//
// Plate #1, Orvexa 412 (critical control NC, figure %I), read 11/23/2026 9:30:00 AM:
//   NC 1.000 and 0.900 (mean 0.95), PC 0.200: the plate passes.
//   D1 S10 "Herd B" 0.500 POS, E1 S2 "Herd A" 0.800 NEG, F1 S1 "Herd A" 0.300 POS,
//   G1 S2 "Herd A" 0.700 NEG, A2 S3 (no group) 0.100 POS.
// Plate #2, Generic, read 11/24/2026 2:05:07 PM, no lot, no expiry:
//   PC 0.400 and 0.600 (mean 0.500), C1 S1 "Herd A" 0.250, no result.
// Plate #3, Orvexa 412, never read: U1 "Herd A" with no OD at all.
namespace fixtures {

inline TestPlate orvexaPlate()
{
    TestPlate p;
    p.plateID = 1;
    p.plateName = QStringLiteral("Plate #1");
    p.testName = QStringLiteral("Orvexa 412");
    p.lotNumber = QStringLiteral("L-77");
    p.expDate = QDate(2027, 1, 31);
    p.dateRead = QDate(2026, 11, 23);
    p.timeRead = QTime(9, 30, 0);
    p.wells = {
        {QStringLiteral("A1"), {QStringLiteral("NC"), QString(), QStringLiteral("1.000"), QString()}},
        {QStringLiteral("B1"), {QStringLiteral("NC"), QString(), QStringLiteral("0.900"), QString()}},
        {QStringLiteral("C1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.200"), QString()}},
        {QStringLiteral("D1"),
         {QStringLiteral("S10"), QStringLiteral("Herd B"), QStringLiteral("0.500"), QStringLiteral("POS")}},
        {QStringLiteral("E1"),
         {QStringLiteral("S2"), QStringLiteral("Herd A"), QStringLiteral("0.800"), QStringLiteral("NEG")}},
        {QStringLiteral("F1"),
         {QStringLiteral("S1"), QStringLiteral("Herd A"), QStringLiteral("0.300"), QStringLiteral("POS")}},
        {QStringLiteral("G1"),
         {QStringLiteral("S2"), QStringLiteral("Herd A"), QStringLiteral("0.700"), QStringLiteral("NEG")}},
        {QStringLiteral("A2"), {QStringLiteral("S3"), QString(), QStringLiteral("0.100"), QStringLiteral("POS")}},
    };
    return p;
}

inline TestPlate genericPlate()
{
    TestPlate p;
    p.plateID = 2;
    p.plateName = QStringLiteral("Plate #2");
    p.testName = QStringLiteral("Generic");
    p.dateRead = QDate(2026, 11, 24);
    p.timeRead = QTime(14, 5, 7);
    p.wells = {
        {QStringLiteral("A1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.400"), QString()}},
        {QStringLiteral("B1"), {QStringLiteral("PC"), QString(), QStringLiteral("0.600"), QString()}},
        {QStringLiteral("C1"), {QStringLiteral("S1"), QStringLiteral("Herd A"), QStringLiteral("0.250"), QString()}},
    };
    return p;
}

inline TestPlate unreadPlate()
{
    TestPlate p;
    p.plateID = 3;
    p.plateName = QStringLiteral("Plate #3");
    p.testName = QStringLiteral("Orvexa 412");
    p.wells = {
        {QStringLiteral("A1"), {QStringLiteral("NC"), QString(), QString(), QString()}},
        {QStringLiteral("B1"), {QStringLiteral("PC"), QString(), QString(), QString()}},
        {QStringLiteral("C1"), {QStringLiteral("U1"), QStringLiteral("Herd A"), QString(), QString()}},
    };
    return p;
}

inline RecordSet springRun()
{
    return plateRecordSet({orvexaPlate(), genericPlate(), unreadPlate()});
}

} // namespace fixtures
