#pragma once

#include <QStyledItemDelegate>

class Workbench;

// The in-cell editor of the Groups and Samples sheets. In the Groups sheet each key offers
// the first known group that starts with what was typed, selected so the next key replaces
// it. Texts are at most 100 characters and never hold the well-list delimiter.
class SheetEditDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    SheetEditDelegate(Workbench &workbench, int sheet, QObject *parent = nullptr);

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

    // The legacy code of the key that ended the last committed edit (Tab, an arrow); Down
    // when it ended with Enter or by leaving the cell. Read once per edit.
    int takeEndKey();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    Workbench &mWb;
    int mSheet;
    mutable int mEndKey = 40;
};
