#include "ui/DeferredStyleIcon.h"

#include <QApplication>
#include <QPainter>

QIcon DeferredStyleIcon::icon(const QStyle *style, QStyle::StandardPixmap which)
{
    return QIcon(new DeferredStyleIcon(style, which));
}

QIcon &DeferredStyleIcon::made()
{
    if (!mMade) {
        const QStyle *style = mStyle ? mStyle.data() : QApplication::style();
        mIcon = style->standardIcon(mWhich);
        mMade = true;
    }
    return mIcon;
}

void DeferredStyleIcon::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    // The rectangle is already fitted to the icon by the QIcon that calls here.
    made().paint(painter, rect, Qt::AlignCenter, mode, state);
}

QSize DeferredStyleIcon::actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    // Above a device pixel ratio of 1 the size asked here is already multiplied by it, and
    // the style icon's own actualSize would multiply again; its plain pixmap has the size
    // its engine would answer.
    if (qApp->devicePixelRatio() > 1.0)
        return made().pixmap(size, 1.0, mode, state).size();
    return made().actualSize(size, mode, state);
}

// QIcon asks an engine for a plain pixmap only at a device pixel ratio of 1 or less, and
// for a scaled one, already multiplied by the ratio, above that: both go back to the
// style's icon with the ratio it would have been given.
QPixmap DeferredStyleIcon::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    return made().pixmap(size, 1.0, mode, state);
}

QPixmap DeferredStyleIcon::scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale)
{
    if (!(scale > 1.0))
        return pixmap(size, mode, state);
    return made().pixmap(size / scale, scale, mode, state);
}

void DeferredStyleIcon::addPixmap(const QPixmap &pixmap, QIcon::Mode mode, QIcon::State state)
{
    made().addPixmap(pixmap, mode, state);
}

void DeferredStyleIcon::addFile(const QString &fileName, const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    made().addFile(fileName, size, mode, state);
}

QList<QSize> DeferredStyleIcon::availableSizes(QIcon::Mode mode, QIcon::State state)
{
    return made().availableSizes(mode, state);
}

// A tool button asks this while it is laid out, before anything is drawn. Every style
// derives from QCommonStyle, which has an image for each standard icon of the tool bar (a
// theme's icon, or else its own files), so the answer is known without reading them.
bool DeferredStyleIcon::isNull()
{
    return mMade && mIcon.isNull();
}

QString DeferredStyleIcon::key() const
{
    return QStringLiteral("DeferredStyleIcon");
}

QIconEngine *DeferredStyleIcon::clone() const
{
    auto *copy = new DeferredStyleIcon(mStyle, mWhich);
    copy->mIcon = mIcon;
    copy->mMade = mMade;
    return copy;
}
