#include "ui/SheetView.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

SheetView::SheetView(QWidget *parent) : QTableView(parent) {}

void SheetView::keyPressEvent(QKeyEvent *event)
{
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    int key = 0;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: key = 13; break;
    case Qt::Key_Tab: key = 9; break;
    case Qt::Key_Backtab: key = 37; break;
    case Qt::Key_Left: key = 37; break;
    case Qt::Key_Up: key = 38; break;
    case Qt::Key_Right: key = 39; break;
    case Qt::Key_Down: key = 40; break;
    case Qt::Key_Delete: key = 46; break;
    default: break;
    }
    if (key != 0 && state() != QAbstractItemView::EditingState) {
        Q_EMIT sheetKey(key, shift);
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
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
