#pragma once

#include "core/Wells.h"

#include <QStringList>

#include <array>

// A layout to lay out on a plate: the group and sample of the wells it gives. Wells it
// doesn't give keep what the plate holds (a sample list laid over a template's controls).
struct PlateLayout {
    std::array<bool, wells::kCount> given{};
    QStringList groups = QStringList(wells::kCount, QString());
    QStringList samples = QStringList(wells::kCount, QString());

    void set(int well, const QString &group, const QString &sample)
    {
        given[well] = true;
        groups[well] = group;
        samples[well] = sample;
    }
    int count() const
    {
        int n = 0;
        for (bool g : given)
            n += g;
        return n;
    }
};

// The rows of cells of a sheet or a text table, and how to name a place in it for the user:
// "cell B4" in a workbook, "line 4, field 2" in a text file.
struct LayoutTable {
    QList<QStringList> rows;
    QList<int> lines; // the line each row starts on (text files); empty for a workbook
    bool workbook = false;

    QString cell(int row, int col) const { return row < rows.size() ? rows[row].value(col) : QString(); }
    QString place(int row, int col) const;
    QString rowPlace(int row) const;
};
