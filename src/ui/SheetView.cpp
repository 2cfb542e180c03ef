#include "ui/SheetView.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

SheetView::SheetView(QWidget *parent) : QTableView(parent)
{
}

void SheetView::keyPressEvent(QKeyEvent *event)
{
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    int key = 0;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: key = 13; break;
    case Qt::Key_Tab: key = 9; break;
    case Qt::Key_Backtab: key = 37; break; // Shift+Tab moves left; it selects nothing
    case Qt::Key_Left: key = 37; break;
    case Qt::Key_Up: key = 38; break;
    case Qt::Key_Right: key = 39; break;
    case Qt::Key_Down: key = 40; break;
    case Qt::Key_Delete: key = 46; break;
    default: break;
    }
    if (key != 0 && state() != QAbstractItemView::EditingState) {
        Q_EMIT sheetKey(key, shift && event->key() != Qt::Key_Backtab);
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

bool SheetView::focusNextPrevChild(bool next)
{
    // Tab and Shift+Tab are the grid's own keys (keyPressEvent) outside an edit.
    if (state() != QAbstractItemView::EditingState)
        return false;
    return QTableView::focusNextPrevChild(next);
}

void SheetView::mousePressEvent(QMouseEvent *event)
{
    mKeptPress = QModelIndex();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && index.isValid() &&
        selectionModel()->isSelected(index) && selectionModel()->selectedIndexes().size() > 1) {
        mKeptPress = index;
        mKeptCurrent = currentIndex();
        mKeptSelection = selectionModel()->selection();
    }
    QTableView::mousePressEvent(event);
}

void SheetView::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    if (mKeptPress.isValid() && indexAt(event->position().toPoint()) == mKeptPress) {
        selectionModel()->setCurrentIndex(mKeptCurrent, QItemSelectionModel::NoUpdate);
        selectionModel()->select(mKeptSelection, QItemSelectionModel::ClearAndSelect);
    }
    mKeptPress = QModelIndex();
}

bool SheetView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        auto *help = static_cast<QHelpEvent *>(event);
        const QModelIndex index = indexAt(help->pos());
        if (!index.isValid()) {
            QToolTip::hideText();
            return true;
        }
        Q_EMIT toolTipRequested(index.row() + 1, index.column() + 1, help->globalPos());
        return true;
    }
    return QTableView::viewportEvent(event);
}

void SheetView::contextMenuEvent(QContextMenuEvent *event)
{
    const QModelIndex index = indexAt(viewport()->mapFrom(this, event->pos()));
    if (index.isValid())
        Q_EMIT popupRequested(index.row() + 1, index.column() + 1, event->globalPos());
}

void SheetView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    QTableView::closeEditor(editor, hint);
    if (hint == QAbstractItemDelegate::RevertModelCache)
        Q_EMIT editCancelled();
}

// Qt repaints the whole grid, headers included, whenever the grid gains or loses the focus,
// and every edit moves the focus to the cell's editor and back. What the focus changes is
// the colour group the cells are painted with (inactive without the focus), the look of the
// selection and current cell, and the frame. Where the palette's active and inactive
// colours are the same, the selection, the current cell and the frame are all that can
// look different, so only they are repainted.
bool SheetView::repaintsFocusChangeInPart() const
{
    return currentIndex().isValid() && !QAccessible::isActive() &&
           palette().isEqual(QPalette::Active, QPalette::Inactive);
}

void SheetView::repaintFocusedParts()
{
    viewport()->update(visualRegionForSelection(selectionModel()->selection()) | visualRect(currentIndex()));
    update(QRegion(rect()) - viewport()->geometry() - horizontalHeader()->geometry() - verticalHeader()->geometry());
}

void SheetView::focusInEvent(QFocusEvent *event)
{
    if (!repaintsFocusChangeInPart()) {
        QTableView::focusInEvent(event);
        return;
    }
    setAttribute(Qt::WA_InputMethodEnabled, bool(currentIndex().flags() & Qt::ItemIsEditable));
    repaintFocusedParts();
}

void SheetView::focusOutEvent(QFocusEvent *event)
{
    if (!repaintsFocusChangeInPart()) {
        QTableView::focusOutEvent(event);
        return;
    }
    repaintFocusedParts();
}
