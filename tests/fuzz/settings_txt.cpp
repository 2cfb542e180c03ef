// settings.txt: whatever it holds, the database path is its first field, one line, cut
// at a comma.
#include "FuzzInput.h"

#include "store/ProgramFolder.h"
#include "store/SettingsFile.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir dir;
    static const ProgramFolder folder(dir.path());
    QFile file(folder.settingsPath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();
    const QString path = getDatabasePath(folder);
    fuzz::check(!path.contains(u',') && !path.contains(u'\n'), "one field of one line");
    return 0;
}
