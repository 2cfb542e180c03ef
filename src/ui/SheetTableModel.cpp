#include "ui/SheetTableModel.h"

#include "worksheet/PlateSheet.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPalette>
#include <QApplication>

namespace {

// Legacy colour values hold blue, green and red bytes from high to low.
QColor legacyColour(quint32 value)
{
    return QColor(int(value & 0xFF), int((value >> 8) & 0xFF), int((value >> 16) & 0xFF));
}

} // namespace

SheetTableModel::SheetTableModel(PlateSheet &sheet, int sheetIndex, QObject *parent)
    : QAbstractTableModel(parent), mSheet(sheet), mSheetIndex(sheetIndex)
{
    connect(&sheet, &PlateSheet::cellChanged, this, [this](int s, int row, int col) {
        if (s == mSheetIndex)
            Q_EMIT dataChanged(index(row - 1, col - 1), index(row - 1, col - 1));
    });
    connect(&sheet, &PlateSheet::cellsChanged, this, [this](int s, const SheetRange &r) {
        if (s == mSheetIndex)
            Q_EMIT dataChanged(index(r.firstRow - 1, r.firstCol - 1), index(r.lastRow - 1, r.lastCol - 1));
    });
    connect(&sheet, &PlateSheet::markChanged, this,
            [this](int row, int col) { Q_EMIT dataChanged(index(row - 1, col - 1), index(row - 1, col - 1)); });
    connect(&sheet, &PlateSheet::sheetReset, this,
            [this] { Q_EMIT dataChanged(index(0, 0), index(wells::kRows - 1, wells::kCols - 1)); });
}

int SheetTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : wells::kRows;
}

int SheetTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : wells::kCols;
}

QVariant SheetTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const int row = index.row() + 1, col = index.column() + 1;
    const SheetCell &cell = mSheet.cell(mSheetIndex, row, col);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return cell.text;
    case Qt::BackgroundRole:
        if (mSheet.isMarked(row, col))
            return QBrush(QApplication::palette().color(QPalette::Dark));
        return QVariant();
    case Qt::ForegroundRole: return cell.foreColour == 0 ? QVariant() : QVariant(QBrush(legacyColour(cell.foreColour)));
    case Qt::FontRole:
        if (cell.bold || cell.italic) {
            QFont f;
            f.setBold(cell.bold);
            f.setItalic(cell.italic);
            return f;
        }
        return QVariant();
    case Qt::TextAlignmentRole: return int(Qt::AlignCenter);
    default: return QVariant();
    }
}

QVariant SheetTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return QString::number(section + 1);
    return QString(wells::rowLetter(section + 1));
}

Qt::ItemFlags SheetTableModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (mEditable && index.isValid())
        f |= Qt::ItemIsEditable;
    return f;
}

bool SheetTableModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || !mEditable)
        return false;
    Q_EMIT cellEdited(index.row() + 1, index.column() + 1, value.toString());
    return true;
}

QString SheetTableModel::cornerText() const
{
    static const char *names[] = {"Groups", "Samples", "ODs", "Results"};
    return QString::fromLatin1(names[mSheetIndex]);
}
