#pragma once

#include "reports/SampleRanking.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QVector>

#include <vector>

// The result rows of the analytical report, held small: a report over thousands of plates
// keeps per row only its plate, well, group and sample rank, and its own four texts
// (sample, OD, ratio, result), already in the report's code page, in one growing buffer.
// What the rows of a plate share is kept once per plate.
//
// The order is the one of the sort "Group ASC, Testname ASC, PlateName[, NumericSample ASC]"
// on the full result table: stable, texts without regard to case, and NumericSample the
// number that the sample ranking gives the first entry of the row's name.
class AnalyticalRows {
public:
    struct Plate {
        QString testName;
        QString version;
        QByteArray plateName;  // encoded, as are the two below
        QByteArray criticalOD; // empty when the plate has none
        QByteArray dateTime;   // "date time"
        int testId = 0;
        int plateNameId = 0;
    };
    struct Row {
        qint64 text = 0; // where its texts start in the buffer
        qint64 numericSample = 0;
        int plate = 0;
        int group = 0;
        int well = 0;
    };

    // rankNames: the sort is by sample name too, so the names are kept for the ranking.
    explicit AnalyticalRows(bool rankNames) : mRankNames(rankNames) {}

    // The plate the rows added next belong to.
    void startPlate(const QString &testName, const QString &version, const QString &plateName,
                    const QString &criticalOD, const QString &dateTime);
    void addRow(int well, QStringView group, QStringView sample, QStringView od, QStringView calcRatio,
                QStringView result);
    // Ranks the sample names (when asked to) and puts the rows in the report's order.
    void sort();

    int count() const { return int(mRows.size()); }
    const std::vector<Row> &rows() const { return mRows; }
    const Plate &plate(const Row &row) const { return mPlates[size_t(row.plate)]; }
    const QString &group(const Row &row) const { return mGroups.names[row.group]; }
    // Text 0 to 3 of the row: sample, OD, calculation ratio, result.
    QByteArrayView text(const Row &row, int piece) const;
    // Asks the processor for the row's texts ahead of their use: once sorted, the rows read
    // their texts all over the buffer, and a report of thousands of plates waits on memory.
    void prefetchTexts(const Row &row) const { __builtin_prefetch(mTexts.data() + row.text); }

private:
    // Distinct texts in the order they came, and their rank without regard to case.
    struct Names {
        QVector<QString> names;
        QHash<QStringView, int> ids; // views of the texts in names
        std::vector<int> ranks;
        int idOf(QStringView name);
        void rank();
    };

    bool mRankNames;
    std::vector<Plate> mPlates;
    std::vector<Row> mRows;
    std::vector<char> mTexts;
    Names mGroups;
    Names mTestNames;
    Names mPlateNames;
    QVector<SampleRank> mSamples; // one per row, when ranking
};
