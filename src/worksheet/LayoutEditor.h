#pragma once

#include "worksheet/WorksheetDialogs.h"

#include <QString>
#include <QStringList>

class Prompt;
class Workbench;

// Keys of the sheets, with the legacy key codes.
enum class SheetKey { Enter = 13, Tab = 9, Left = 37, Up = 38, Right = 39, Down = 40, Delete = 46 };

// What an edit of a Groups cell shows after a key: the text and the part of it selected
// (the completion offered).
struct GroupEditText {
    QString text;
    int selectionStart = 0;
    int selectionLength = 0;
};

// Laying out a plate on the Groups and Samples sheets: control buttons, typing in cells,
// Delete, the cursor keys, Add Samples and Set Group. Every change takes an undo snapshot
// first and ends by refreshing the panel and the evaluation.
class LayoutEditor {
public:
    // The text resolveGroupName gives back when the user cancelled the group question; it
    // never stays in a cell.
    static inline const QString kCancelSentinel =
        QStringLiteral("----SOFTWARE CODE----The user has pressed cancel----SOFTWARE CODE");
    static constexpr int kMaxCellText = 100;

    explicit LayoutEditor(Workbench &workbench) : mWb(workbench) {}

    void pushUndoSnapshot();
    // The buttons PC, NC, AUX, BLANK (text) and CLEAR (empty text) of sheet 0 or 1.
    void controlButton(int sheet, const QString &text);
    void syncControlCells(int sheet);

    // Typing in a cell: the start of an edit, each key while a Groups cell is edited, and
    // the end of the edit with the text the cell holds then.
    void beginEdit();
    GroupEditText groupEditKey(const GroupEditText &before, QChar key, bool backspace) const;
    // The end of an edit. The cursor then moves by moveKey: Down after Enter, or the key
    // (Tab, an arrow) that ended the edit.
    void afterEdit(int sheet, int row, int col, const QString &text, SheetKey moveKey = SheetKey::Down);
    // An edit left with Escape: the snapshot taken at its start goes again.
    void cancelEdit();

    void deleteKey(int sheet);
    void navigate(SheetKey key, bool shift);

    // A group name as the plate may hold it: the stored spelling of a known group, the text
    // itself for empty text and control names, otherwise what the user answers to the new
    // group question (kCancelSentinel when cancelled).
    QString resolveGroupName(const QString &name);
    bool groupExists(const QString &name) const;
    QString getCanonicalGroupName(const QString &name) const;
    // The first group whose name starts with the text, compared without regard to case.
    QString completeGroupName(const QString &prefix) const;

    void addSamples();
    void setGroup();

    // The checks of the Add Samples dialog's OK: a name is required and may not be a control
    // name, and the user confirms that wells may be overwritten. ok is true only then.
    static AddSamplesRequest acceptAddSamples(Prompt &prompt, const QString &sampleName, const QString &groupChoice,
                                              int numSamples, int startingNumber);
    // Group names for the lists: sorted by name, or in the table's own order.
    QStringList groupNames(bool sorted) const;

private:
    Workbench &mWb;
};

// Removes the well-list delimiter from text going into a sheet: it can't be stored.
QString withoutWellDelimiter(const QString &text);
