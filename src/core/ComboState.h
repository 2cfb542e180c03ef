#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>

// The content of a drop-down list: entries with a text and an item datum, and the
// selected entry (-1 for none). The main window's combo boxes show these.
struct ComboState {
    QStringList texts;
    QVariantList data;
    int index = -1;
    QVariant tag;

    void clear()
    {
        texts.clear();
        data.clear();
        index = -1;
    }
    void add(const QString &text, const QVariant &datum = QVariant())
    {
        texts.append(text);
        data.append(datum);
    }
    int count() const { return int(texts.size()); }
    bool hasSelection() const { return index >= 0 && index < count(); }
    // The text of the selected entry; empty when none is selected.
    QString text() const { return hasSelection() ? texts[index] : QString(); }
    QVariant itemData() const { return hasSelection() ? data[index] : QVariant(); }
    int findText(const QString &text) const { return int(texts.indexOf(text)); }
};

// The index of the first entry whose item data equals the value (numbers by value), or -1.
int findComboItem(const ComboState &combo, const QVariant &itemData);
// The same, or entry 0 when none has it (-1 in an empty list).
int findComboItemOrFirst(const ComboState &combo, const QVariant &itemData);
