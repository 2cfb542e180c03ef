#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class DbConnection;

// A plate layout kept under a name: the groups and samples (controls among them) of the 96
// wells, no ODs, results or exclusions.
struct LayoutTemplate {
    QString name;
    QStringList groups;
    QStringList samples;
};

// The layout templates of the database, in the added table LayoutTemplates, so that every
// workstation on a server store shares them. Names are unique without regard to case. Each
// change is one transaction; a database without the table has no templates.
class LayoutTemplates {
public:
    explicit LayoutTemplates(const DbConnection &db) : mDb(db) {}

    // The names, in alphabetical order without regard to case.
    QStringList names() const;
    std::optional<LayoutTemplate> load(const QString &name) const;
    // The stored spelling of a name taken by a template, compared without regard to case.
    std::optional<QString> existing(const QString &name) const;

    // Keeps the layout under its name, replacing a template of that name.
    void save(const LayoutTemplate &layout) const;
    // False when no template has the old name.
    bool rename(const QString &from, const QString &to) const;
    bool remove(const QString &name) const;

    // What is wrong with a name for a template, or an empty text: it must not be blank, hold
    // the well-list delimiter or be longer than kMaxName characters.
    static QString nameProblem(const QString &name);
    static constexpr int kMaxName = 60;

private:
    const DbConnection &mDb;
};
