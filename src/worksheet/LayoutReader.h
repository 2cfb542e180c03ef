#pragma once

#include "worksheet/PlateLayout.h"

#include <QByteArray>
#include <QString>

#include <optional>

// The outcome of reading a layout: the layout, or the reason it was refused (naming the
// line or cell at fault).
struct LayoutReading {
    std::optional<PlateLayout> layout;
    QString error;
};

// Reads a plate layout from a CSV file or an .xlsx workbook, in one of two forms:
// - a long table: a well column ("A1", "A01" or "A:1"), a sample column and an optional
//   group column, with a header naming them or, without one, in that order;
// - an 8 x 12 grid of sample names, with or without the labels A-H and 1-12, optionally
//   followed by a second grid of groups (a title row "Samples" or "Groups" above a grid
//   says which it is).
// Control names in any case become the controls. Texts holding the well-list delimiter or
// longer than a cell holds are refused, as are duplicate wells and wells off the plate.
class LayoutReader {
public:
    static LayoutReading readFile(const QString &path);
    static LayoutReading readText(const QByteArray &bytes);
    static LayoutReading interpret(const LayoutTable &table);

    // The well named by "B3", "B03" or "B:3" (any case, blanks around); std::nullopt for
    // text of another form. outside is set when the form is right but the well isn't on
    // the plate ("I3", "A13").
    static std::optional<int> parseWell(const QString &text, bool *outside);
};
