#pragma once

#include <QString>

#include <stdexcept>

// A read that can't go on: a missing data file, a reader's answer that can't be parsed,
// a value too long for the well value record set. The read flow shows the text as the
// description of its critical box.
class ReadError : public std::runtime_error {
public:
    explicit ReadError(const QString &description) : std::runtime_error(description.toStdString()) {}
    QString description() const { return QString::fromStdString(what()); }
};
