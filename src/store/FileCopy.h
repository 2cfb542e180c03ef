#pragma once

#include <QString>

// Copies the file at source to target, replacing a file that is there. The target is
// written under a temporary name and renamed into place only once the copy is complete,
// so a failure leaves the former target as it was. False when the source can't be read
// or the target can't be written.
bool copyFileReplacing(const QString &source, const QString &target);
