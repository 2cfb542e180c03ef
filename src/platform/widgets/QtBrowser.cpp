#include "platform/widgets/QtBrowser.h"

#include <QDesktopServices>
#include <QUrl>

bool QtBrowser::openFile(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
