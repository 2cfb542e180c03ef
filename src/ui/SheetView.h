#pragma once

#include <QTableView>

// A grid of the plate: the program moves the cursor on Enter, Tab, Shift+Tab and the
// arrows (the wells wrap round the plate; Tab never leaves the grid), Delete empties the
// selection, a click within the selection keeps it, a right click opens the popup menu,
// and the tool tip tells all about the well under the pointer.
class SheetView : public QTableView {
    Q_OBJECT
public:
    explicit SheetView(QWidget *parent = nullptr);

signals:
    // Legacy key codes: 13 Enter, 9 Tab, 37-40 arrows, 46 Delete.
    void sheetKey(int key, bool shift);
    void popupRequested(int row, int col, const QPoint &globalPos);
    void toolTipRequested(int row, int col, const QPoint &globalPos);
    void editCancelled();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    bool repaintsFocusChangeInPart() const;
    void repaintFocusedParts();

    // A plain click on a cell of a selection of several cells: the selection to put back
    // when the button comes up on the same cell.
    QModelIndex mKeptPress;
    QModelIndex mKeptCurrent;
    QItemSelection mKeptSelection;
};
