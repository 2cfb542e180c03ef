#include "store/DocumentFolder.h"

#include <QDir>
#include <QFileInfo>

QString DocumentFolder::fileNamePart(const QString &text)
{
    static const QString forbidden = QStringLiteral("\\/:*?\"<>|");
    QString part;
    part.reserve(text.size());
    for (const QChar c : text)
        part += (c.category() == QChar::Other_Control || forbidden.contains(c)) ? u'_' : c;
    part = part.simplified().left(kMaxPartLength);
    while (!part.isEmpty() && (part.back() == u'.' || part.back() == u' '))
        part.chop(1);
    while (!part.isEmpty() && part.front() == u'.')
        part.remove(0, 1);
    return part;
}

QString DocumentFolder::newFilePath(const QStringList &parts, const QDateTime &when, const QString &suffix) const
{
    if (!QDir().mkpath(mPath))
        throw DocumentFolderError(QStringLiteral("The folder %1 can't be made.").arg(QDir::toNativeSeparators(mPath)));
    QStringList pieces;
    for (const QString &p : parts) {
        const QString piece = fileNamePart(p);
        if (!piece.isEmpty())
            pieces << piece;
    }
    pieces << when.toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"));
    const QString base = pieces.join(QStringLiteral(" - "));
    const QDir dir(mPath);
    QString path = dir.filePath(base + u'.' + suffix);
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = dir.filePath(QStringLiteral("%1 (%2).%3").arg(base).arg(n).arg(suffix));
    return path;
}
