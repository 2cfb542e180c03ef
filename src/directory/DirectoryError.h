#pragma once

#include <QString>

#include <stdexcept>

// A directory entry that should be in the database and isn't: the group or technician
// being edited was removed behind the dialog's back. Reported like any other unexpected
// failure; nothing has been written.
class DirectoryError : public std::runtime_error {
public:
    explicit DirectoryError(const QString &message) : std::runtime_error(message.toStdString()) {}
};
