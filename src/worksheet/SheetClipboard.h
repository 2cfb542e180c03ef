#pragma once

#include <QString>
#include <QStringList>

class Workbench;

// Copy, cut and paste of a rectangle of cells as tab-separated text (so layouts go to and
// from spreadsheets), and Undo from the snapshots of the layout.
class SheetClipboard {
public:
    explicit SheetClipboard(Workbench &workbench) : mWb(workbench) {}

    void copy(int sheet);
    void cut(int sheet);
    void paste(int sheet);
    void undo();

    // The text of a rectangle: cells joined by tabs, each row ended by CR LF.
    static QString sheetRangeText(const QStringList &cells, int columns);
    // The rows and cells of clipboard text; each cell cut to 100 characters.
    static QList<QStringList> splitClipboardText(const QString &text);

private:
    Workbench &mWb;
};
