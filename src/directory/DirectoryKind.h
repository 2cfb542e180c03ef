#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class DbConnection;
class RecordSet;

// What sets the two directories apart, groups and technicians: the texts their dialogs
// show and the operations on the table and on the plates that name its entries. The
// managers, forms and dialogs are written once over it.
struct DirectoryKind {
    // The form for one entry.
    int fieldCount;      // boxes of the form; the name is box 0
    QString addCaption;  // "ADD" and "ADDNAME"
    QString editCaption; // "EDIT"
    QString nameRequiredTitle, nameRequiredText;
    QString existsTitle, existsText;
    bool refusesControlNames;              // a group can't be named "PC", "NC", "AUX" or "BLANK"
    QString delimiterTitle, delimiterText; // the well-list delimiter in a name
    QString missingText;                   // "The group '" ... : the entry to edit has gone

    // The list and its commands.
    QString inRunTitle, inRunText;       // a plate of the run in hand uses the entry
    QString inSavedTitle, inSavedText;   // a saved plate uses it
    QString deleteTitle, deleteQuestion; // question: text before the quoted name

    // The table (every value bound, names compared as names::same).
    QStringList (*names)(const DbConnection &db);
    std::optional<QStringList> (*find)(const DbConnection &db, const QString &name);
    bool (*insert)(const DbConnection &db, const QStringList &fields);
    bool (*update)(const DbConnection &db, const QString &oldName, const QStringList &fields);
    void (*remove)(const DbConnection &db, const QString &name);
    bool (*savedPlatesUse)(const DbConnection &db, const QString &name);
    // The plates of the run in hand.
    bool (*platesUse)(const RecordSet &plates, const QString &name);
    void (*renameInPlates)(RecordSet &plates, const QString &oldName, const QString &newName);

    static const DirectoryKind &groups();
    static const DirectoryKind &technicians();
};
