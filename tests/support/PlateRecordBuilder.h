#pragma once

#include "core/RecordSet.h"

#include <QDate>
#include <QMap>
#include <QString>
#include <QTime>

// One well of a plate built for a test.
struct TestWell {
    QString sample;
    QString group;
    QString od;
    QString result;
    int flag = 1;
};

// A plate record as a saved run holds it, built from a few named wells ("A1" ... "H12");
// every other well is empty, with the flag 1.
struct TestPlate {
    int plateID = 1;
    QString plateName = QStringLiteral("Plate #1");
    qint64 runID = 1;
    QString testName;
    QString version = QStringLiteral("1.5.4");
    QString lotNumber;
    QDate expDate;  // null: Null
    QDate dateRead; // null: Null (never read)
    QTime timeRead; // null: Null
    QString techName;
    QMap<QString, TestWell> wells;

    // Adds the plate as a new row of the set, with its well lists.
    void addTo(RecordSet &plates) const;
};

// A plate record set with the fields of clsPlates and the plates given, the cursor on the
// first.
RecordSet plateRecordSet(const QList<TestPlate> &plates);
