#pragma once

#include <QString>
#include <QStringList>

// The names shown by a management dialog's list box (lstGroupNames, lstTechNames) and its
// selection, with the rules that put the selection back after a command.
class DirectoryList {
public:
    const QStringList &names() const { return mNames; }
    int count() const { return int(mNames.size()); }

    // The selected index, -1 when nothing is selected.
    int listIndex() const { return mIndex; }
    // Selects an index; anything outside the list selects nothing.
    void setListIndex(int index);
    // The selected text; empty when nothing is selected.
    QString selectedText() const;

    // New contents; the selection is dropped.
    void setNames(const QStringList &names);

    // After an add or an edit: the selection back on the index it had, or on the last
    // entry when the list has become shorter.
    void restoreIndex(int remembered);
    // After a delete: index 0 when the remembered index was below 1 (and the list isn't
    // empty), otherwise the entry above the remembered one.
    void selectAfterDelete(int remembered);

private:
    QStringList mNames;
    int mIndex = -1;
};
