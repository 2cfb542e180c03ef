#include "worksheet/PlateSheet.h"

#include <algorithm>
#include <vector>
#include <stdexcept>

namespace {

int checkedIndex(int row, int col)
{
    if (!wells::valid(row, col))
        throw std::out_of_range("Subscript out of range: well row " + std::to_string(row) + ", column " +
                                std::to_string(col));
    return wells::index(row, col);
}

} // namespace

PlateSheet::PlateSheet(QObject *parent) : QObject(parent)
{
    resetWellArrays();
}

void PlateSheet::emitCell(int sheet, int well)
{
    if (mUpdateDepth == 0)
        Q_EMIT cellChanged(sheet, wells::row(well), wells::col(well));
    else
        mPending[sheet].set(well);
}

void PlateSheet::emitMark(int well)
{
    if (mUpdateDepth == 0) {
        Q_EMIT markChanged(wells::row(well), wells::col(well));
        return;
    }
    for (auto &pending : mPending) // the mark shows on all four sheets
        pending.set(well);
}

void PlateSheet::emitPendingCells()
{
    // Wells run down the columns, so each column's changed rows come as runs; a run
    // continues the rectangle of the column before when it spans the same rows.
    for (int sheet = 0; sheet < kSheets; ++sheet) {
        const std::bitset<wells::kCount> &pending = mPending[sheet];
        if (pending.none())
            continue;
        std::vector<SheetRange> open, next;
        for (int col = 1; col <= wells::kCols; ++col) {
            next.clear();
            for (int row = 1; row <= wells::kRows; ++row) {
                if (!pending[wells::index(row, col)])
                    continue;
                int last = row;
                while (last < wells::kRows && pending[wells::index(last + 1, col)])
                    ++last;
                auto same = std::find_if(open.begin(), open.end(),
                                         [&](const SheetRange &r) { return r.firstRow == row && r.lastRow == last; });
                if (same != open.end()) {
                    same->lastCol = col;
                    next.push_back(*same);
                    open.erase(same);
                } else {
                    next.push_back({row, col, last, col});
                }
                row = last;
            }
            for (const SheetRange &done : open)
                Q_EMIT cellsChanged(sheet, done);
            open.swap(next);
        }
        for (const SheetRange &done : open)
            Q_EMIT cellsChanged(sheet, done);
    }
}

void PlateSheet::setText(int sheet, int row, int col, const QString &text)
{
    setTextAt(sheet, checkedIndex(row, col), text);
}

void PlateSheet::setTextAt(int sheet, int well, const QString &text)
{
    SheetCell &c = mCells.at(sheet).at(well);
    if (c.text == text)
        return;
    c.text = text;
    emitCell(sheet, well);
}

void PlateSheet::setStyle(int sheet, int row, int col, bool bold, bool italic, quint32 foreColour)
{
    const int well = checkedIndex(row, col);
    SheetCell &c = mCells.at(sheet)[well];
    if (c.bold == bold && c.italic == italic && c.foreColour == foreColour)
        return;
    c.bold = bold;
    c.italic = italic;
    c.foreColour = foreColour;
    emitCell(sheet, well);
}

void PlateSheet::clearSheet(int sheet)
{
    beginUpdate();
    mResetPending = true;
    for (SheetCell &c : mCells.at(sheet))
        c = SheetCell();
    endUpdate();
}

void PlateSheet::fillSheetRange(int sheet, int firstRow, int firstCol, int lastRow, int lastCol, const QString &text)
{
    for (int c = firstCol; c <= lastCol; ++c)
        for (int r = firstRow; r <= lastRow; ++r)
            setText(sheet, r, c, text);
}

QStringList PlateSheet::sheetTexts(int sheet) const
{
    QStringList out;
    out.reserve(wells::kCount);
    for (const SheetCell &c : mCells.at(sheet))
        out.append(c.text);
    return out;
}

void PlateSheet::setSheetTexts(int sheet, const QStringList &texts)
{
    beginUpdate();
    mResetPending = true;
    for (int k = 0; k < wells::kCount; ++k)
        mCells.at(sheet)[k].text = k < texts.size() ? texts[k] : QString();
    endUpdate();
}

quint32 PlateSheet::backColour(int row, int col) const
{
    return mMarked[checkedIndex(row, col)] ? kExcludedBackColour : 0;
}

double PlateSheet::getRawOD(int row, int col) const
{
    return mRawODs[checkedIndex(row, col)];
}

qint16 PlateSheet::getInclusionFlag(int row, int col) const
{
    return mIncludeFlags[checkedIndex(row, col)];
}

void PlateSheet::setInclusionFlag(int row, int col, qint16 flag)
{
    setInclusionFlagAt(checkedIndex(row, col), flag);
}

void PlateSheet::setInclusionFlagAt(int well, qint16 flag)
{
    mIncludeFlags.at(well) = flag;
    const bool marked = flag == 0;
    if (mMarked[well] != marked) {
        mMarked[well] = marked;
        emitMark(well);
    }
}

void PlateSheet::resetWellArrays()
{
    beginUpdate();
    for (int k = 0; k < wells::kCount; ++k) {
        mRawODs[k] = 0.0;
        setInclusionFlagAt(k, 1);
    }
    endUpdate();
}

int PlateSheet::countSheetSamples(int sheet, const QString &name, quint32 backColour) const
{
    const QString wanted = name.toUpper();
    int count = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        const quint32 colour = mMarked[k] ? kExcludedBackColour : 0;
        if (colour != backColour)
            continue;
        const QString &text = mCells.at(sheet)[k].text;
        // Most cells differ in length, and the rest compare without a copy.
        if (text.size() == wanted.size() && text.compare(wanted, Qt::CaseInsensitive) == 0 && text.toUpper() == wanted)
            ++count;
    }
    return count;
}

void PlateSheet::setCursor(int row, int col)
{
    setSelection(row, col, row, col);
}

void PlateSheet::setSelection(int row, int col, int rowSel, int colSel)
{
    checkedIndex(row, col);
    checkedIndex(rowSel, colSel);
    if (row == mRow && col == mCol && rowSel == mRowSel && colSel == mColSel)
        return;
    mRow = row;
    mCol = col;
    mRowSel = rowSel;
    mColSel = colSel;
    Q_EMIT selectionChanged();
}

SheetRange PlateSheet::getSheetSelection() const
{
    return {std::min(mRow, mRowSel), std::min(mCol, mColSel), std::max(mRow, mRowSel), std::max(mCol, mColSel)};
}

void PlateSheet::beginUpdate()
{
    ++mUpdateDepth;
}

void PlateSheet::endUpdate()
{
    if (mUpdateDepth == 0 || --mUpdateDepth > 0)
        return;
    if (mResetPending)
        Q_EMIT sheetReset();
    else
        emitPendingCells();
    mResetPending = false;
    for (auto &pending : mPending)
        pending.reset();
}
