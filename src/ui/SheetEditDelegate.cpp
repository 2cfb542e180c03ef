#include "ui/SheetEditDelegate.h"

#include "core/WellList.h"
#include "worksheet/LayoutEditor.h"
#include "worksheet/Workbench.h"

#include <QKeyEvent>
#include <QLineEdit>

SheetEditDelegate::SheetEditDelegate(Workbench &workbench, int sheet, QObject *parent)
    : QStyledItemDelegate(parent), mWb(workbench), mSheet(sheet)
{
}

QWidget *SheetEditDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QStringLiteral("cellEditor"));
    edit->setMaxLength(LayoutEditor::kMaxCellText);
    edit->setFrame(false);
    edit->installEventFilter(const_cast<SheetEditDelegate *>(this));
    LayoutEditor(mWb).beginEdit();
    return edit;
}

void SheetEditDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    // Only the first time: later resets would undo what the user typed.
    auto *edit = static_cast<QLineEdit *>(editor);
    if (!edit->property("filled").toBool()) {
        edit->setText(index.data(Qt::EditRole).toString());
        edit->setProperty("filled", true);
    }
}

void SheetEditDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const int key = editor->property("endKey").toInt();
    mEndKey = (key == 0 || key == int(SheetKey::Enter)) ? int(SheetKey::Down) : key;
    model->setData(index, static_cast<QLineEdit *>(editor)->text(), Qt::EditRole);
}

int SheetEditDelegate::takeEndKey()
{
    const int key = mEndKey;
    mEndKey = int(SheetKey::Down);
    return key;
}

bool SheetEditDelegate::eventFilter(QObject *object, QEvent *event)
{
    auto *edit = qobject_cast<QLineEdit *>(object);
    if (!edit || event->type() != QEvent::KeyPress)
        return QStyledItemDelegate::eventFilter(object, event);
    auto *key = static_cast<QKeyEvent *>(event);
    int legacyKey = 0;
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: legacyKey = int(SheetKey::Enter); break;
    case Qt::Key_Tab: legacyKey = int(SheetKey::Tab); break;
    case Qt::Key_Backtab: legacyKey = int(SheetKey::Left); break;
    case Qt::Key_Up: legacyKey = int(SheetKey::Up); break;
    case Qt::Key_Down: legacyKey = int(SheetKey::Down); break;
    case Qt::Key_Left: legacyKey = int(SheetKey::Left); break;
    case Qt::Key_Right: legacyKey = int(SheetKey::Right); break;
    default: break;
    }
    if (legacyKey != 0) {
        edit->setProperty("endKey", legacyKey);
        Q_EMIT commitData(edit);
        // The edit moves the cursor, and the grid closes (hides) the editor of the cell left.
        if (edit->isVisible())
            Q_EMIT closeEditor(edit, QAbstractItemDelegate::NoHint);
        return true;
    }
    if (key->key() == Qt::Key_Escape)
        return QStyledItemDelegate::eventFilter(object, event);

    const QString typed = key->text();
    const bool backspace = key->key() == Qt::Key_Backspace;
    if (!backspace && typed.contains(kWellDelimiter))
        return true;
    if (mSheet != 0 || (!backspace && (typed.isEmpty() || !typed[0].isPrint())))
        return QStyledItemDelegate::eventFilter(object, event);

    // Groups: the completion from the table of groups.
    GroupEditText before;
    before.text = edit->text();
    before.selectionStart = edit->hasSelectedText() ? edit->selectionStart() : int(edit->text().size());
    before.selectionLength = edit->hasSelectedText() ? int(edit->selectedText().size()) : 0;
    const GroupEditText after = LayoutEditor(mWb).groupEditKey(before, backspace ? QChar() : typed[0], backspace);
    edit->setText(after.text);
    if (after.selectionLength > 0)
        edit->setSelection(after.selectionStart, after.selectionLength);
    else
        edit->setCursorPosition(after.selectionStart);
    return true;
}
