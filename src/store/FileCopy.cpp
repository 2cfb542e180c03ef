#include "store/FileCopy.h"

#include "platform/SafeFile.h"

bool copyFileReplacing(const QString &source, const QString &target, QString *error)
{
    return SafeFile::copy(source, target, error);
}
