#include "worksheet/SheetClipboard.h"

#include "platform/Clipboard.h"
#include "platform/Prompt.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/Workbench.h"

#include <algorithm>

QString SheetClipboard::sheetRangeText(const QStringList &cells, int columns)
{
    QString text;
    for (int i = 0; i < cells.size(); ++i) {
        text += cells[i];
        text += (i + 1) % columns == 0 ? QStringLiteral("\r\n") : QStringLiteral("\t");
    }
    return text;
}

QList<QStringList> SheetClipboard::splitClipboardText(const QString &text)
{
    QString normal = text;
    normal.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines = normal.split(u'\n');
    // A line end closes a row; only text after the last one makes a further row.
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    QList<QStringList> rows;
    for (const QString &line : lines) {
        QStringList cells = line.split(u'\t');
        for (QString &cell : cells)
            cell = withoutWellDelimiter(cell).left(LayoutEditor::kMaxCellText);
        rows.append(cells);
    }
    return rows;
}

void SheetClipboard::copy(int sheet)
{
    Clipboard &clipboard = mWb.clipboard();
    clipboard.clear();
    const PlateSheet &s = mWb.sheet();
    const SheetRange r = s.getSheetSelection();
    QStringList cells;
    for (int row = r.firstRow; row <= r.lastRow; ++row)
        for (int c = r.firstCol; c <= r.lastCol; ++c)
            cells << s.text(sheet, row, c);
    clipboard.setText(sheetRangeText(cells, r.lastCol - r.firstCol + 1));
}

void SheetClipboard::cut(int sheet)
{
    copy(sheet);
    LayoutEditor editor(mWb);
    editor.pushUndoSnapshot();
    mWb.setDirty(true);
    const SheetRange r = mWb.sheet().getSheetSelection();
    mWb.sheet().fillSheetRange(sheet, r.firstRow, r.firstCol, r.lastRow, r.lastCol, QString());
    editor.syncControlCells(sheet);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
}

void SheetClipboard::paste(int sheet)
{
    const QString text = mWb.clipboard().text();
    if (std::all_of(text.begin(), text.end(),
                    [](QChar c) { return c == u'\r' || c == u'\n' || c == u' ' || c == u'\t'; }))
        return;
    const QList<QStringList> rows = splitClipboardText(text);
    int width = 0;
    for (const QStringList &row : rows)
        width = std::max(width, int(row.size()));

    PlateSheet &s = mWb.sheet();
    const int startRow = s.row(), startCol = s.col();
    if (startRow + rows.size() - 1 > wells::kRows || startCol + width - 1 > wells::kCols) {
        mWb.prompt().message(QStringLiteral("There are not enough destination cells to paste onto."),
                             QStringLiteral("Source and Destination Cell Range Not The Same"));
        return;
    }

    LayoutEditor editor(mWb);
    editor.pushUndoSnapshot();
    for (int i = 0; i < rows.size(); ++i) {
        for (int j = 0; j < rows[i].size(); ++j) {
            QString cell = rows[i][j];
            // A control name pasted in any case is that control, as when it is typed;
            // left in lower case it would be counted but not calculated as a control.
            if (isControlName(cell.trimmed().toUpper()))
                cell = cell.trimmed().toUpper();
            if (sheet == PlateSheet::Groups) {
                cell = editor.resolveGroupName(cell);
                if (cell == LayoutEditor::kCancelSentinel) {
                    undo();
                    return;
                }
            }
            s.setText(sheet, startRow + i, startCol + j, cell);
        }
    }
    mWb.setDirty(true);
    mWb.setUndoEnabled(true);
    editor.syncControlCells(sheet);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
}

void SheetClipboard::undo()
{
    clsUndoStack &stack = mWb.undoStack();
    if (stack.isEmpty())
        return;
    const QStringList groups = stack.getGroups();
    const QStringList samples = stack.getSamples();
    const clsUndoStack::Flags flags = stack.getIncludeExcludeFlags();
    stack.eraseFrontRecord();

    LayoutEditor editor(mWb);
    PlateSheet &s = mWb.sheet();
    for (int k = 0; k < wells::kCount; ++k) {
        QString group = editor.resolveGroupName(groups.value(k).trimmed());
        if (group == LayoutEditor::kCancelSentinel)
            group.clear();
        s.setTextAt(PlateSheet::Groups, k, group);
        s.setTextAt(PlateSheet::Samples, k, samples.value(k));
        s.setInclusionFlagAt(k, flags[k]);
    }
    if (stack.isEmpty())
        mWb.setUndoEnabled(false);
    mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
    mWb.refreshEvaluation();
}
