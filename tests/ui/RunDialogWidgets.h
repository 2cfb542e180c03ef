#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

#include <gtest/gtest.h>

// Gestures on the run dialogs' lists, as a user makes them.
namespace RunDialogWidgets {

inline void clickItem(QListWidget *list, int row)
{
    QListWidgetItem *item = list->item(row);
    ASSERT_NE(item, nullptr) << "no row " << row << " in " << list->objectName().toStdString();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
}

inline void doubleClickItem(QListWidget *list, int row)
{
    const QPoint at = list->visualItemRect(list->item(row)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
}

inline QStringList itemTexts(const QListWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->item(row)->text());
    return texts;
}

// The editor of an edit in place, while one is open.
inline QLineEdit *openEditor(QListWidget *list)
{
    for (QLineEdit *editor : list->viewport()->findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly)) {
        if (editor->isVisible())
            return editor;
    }
    return nullptr;
}

// Selects the item, starts an edit in place with F2, types the text over the old one and
// ends with Enter. (A click on the item already selected would start a delayed edit of its
// own, so the item is clicked only when it isn't.)
inline void renameInPlace(QListWidget *list, int row, const QString &text)
{
    if (list->currentRow() != row)
        clickItem(list, row);
    QTest::keyClick(list, Qt::Key_F2);
    QLineEdit *editor = openEditor(list);
    ASSERT_NE(editor, nullptr) << "F2 opened no editor";
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents(); // the edit ends through a queued call
}

} // namespace RunDialogWidgets
