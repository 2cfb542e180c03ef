#pragma once

#include <QString>

// Copies the file at source to target, replacing a file that is there, through SafeFile:
// a failure leaves the former target whole. False (with *error) when the source can't be
// read or the target can't be written.
bool copyFileReplacing(const QString &source, const QString &target, QString *error = nullptr);
