#pragma once

#include "core/RecordSet.h"

#include <QChar>
#include <QString>

// The filter list of a reader in the reader configuration: rows of FilterNo (the place
// in the reader, 1-based) and FilterValue (the wavelength in nm, at most three digits),
// and the row the user stands on, which becomes the reader's default filter.
class ReaderFilterList {
public:
    // What a typed character does in a filter cell.
    enum class KeyVerdict {
        Pass,   // the character goes into the cell
        Reject, // dropped, with a beep
        AddRow, // the list is empty: a row is added and the character is its first digit
    };

    ReaderFilterList();

    const RecordSet &rows() const { return mRows; }
    int count() const { return mRows.recordCount(); }
    // The current row, -1 for none.
    int current() const { return mCurrent; }
    void setCurrent(int row);
    int filterNo(int row) const { return mRows.valueAt(row, u"FilterNo").toInt(); }
    int filterValue(int row) const { return mRows.valueAt(row, u"FilterValue").toInt(); }

    // A fresh list from rows that have FilterNo and FilterValue (read from the database
    // or the catalogue); the current row is selectedRow when it exists, none otherwise.
    void assign(RecordSet rows, int selectedRow);

    // A row at the end, numbered after the others, with the value 0; it becomes current.
    void add();
    // A row with the value 0 at the current place (at the end of an empty list); the rows
    // are numbered 1, 2, 3 ... again. It becomes current.
    void insert();
    // Removes the current row and numbers the rest 1, 2, 3 ... again; the current row
    // stays at its place, or falls on the last.
    void remove();
    // Swaps the current row's value with the row above (-1) or below (+1); the numbers
    // stay with their places and the current row follows the value. False at either end.
    bool move(int direction);
    // Stores a cell's text: its digits as the value (0 for an empty cell).
    void setValueText(int row, const QString &text);

    // "(Default filter: 450 nm) ", or "none" in the brackets when there is no current row
    // or its value is 0.
    QString defaultFilterCaption() const;

    // The rule of a typed character: Tab, Escape, Backspace and Enter pass; anything else
    // but a digit is rejected; a digit in an empty list adds a row; a digit into a cell
    // that already has 3 characters is rejected unless some of them are selected.
    static KeyVerdict keyVerdict(QChar typed, int rowCount, const QString &cellText, bool cellTextSelected);

private:
    void renumber();

    RecordSet mRows;
    int mCurrent = -1;
};
