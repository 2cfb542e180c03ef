#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// Group and technician names are one name whatever the case of any of their letters:
// "ødegård farm" is "Ødegård Farm". The comparison is Unicode case folding done here, not
// the database's, which folds only A to Z in some engines.
namespace names {

bool same(QStringView a, QStringView b);

// The first entry that is the same name; nothing when there is none.
std::optional<QString> find(const QStringList &list, QStringView name);

// The first entry, in the list's order, that starts with the prefix whatever its case;
// empty when there is none.
QString firstStartingWith(const QStringList &list, QStringView prefix);

// Alphabetical without regard to case; names that differ only in case keep a fixed order.
void sort(QStringList &list);

} // namespace names
