#include "store/FileCopy.h"

#include <QFile>
#include <QSaveFile>

bool copyFileReplacing(const QString &source, const QString &target)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    constexpr qint64 kChunk = 1 << 20;
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(kChunk);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError) {
            out.cancelWriting();
            break;
        }
        if (out.write(chunk) != chunk.size()) {
            out.cancelWriting();
            break;
        }
    }
    return out.commit();
}
