#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QPointer>
#include <QStyle>

// A standard icon of the style that is only made when it is first drawn or asked about.
// The style's icons are read from image files in several sizes at once; a window that
// gets its tool bar's icons this way shows without waiting for the files. Once made, the
// icon is the style's own, and everything goes to it unchanged.
class DeferredStyleIcon : public QIconEngine {
public:
    static QIcon icon(const QStyle *style, QStyle::StandardPixmap which);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    void addPixmap(const QPixmap &pixmap, QIcon::Mode mode, QIcon::State state) override;
    void addFile(const QString &fileName, const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    bool isNull() override;
    QString key() const override;
    QIconEngine *clone() const override;

private:
    DeferredStyleIcon(const QStyle *style, QStyle::StandardPixmap which) : mStyle(style), mWhich(which) {}
    QIcon &made();

    QPointer<const QStyle> mStyle;
    QStyle::StandardPixmap mWhich;
    QIcon mIcon;
    bool mMade = false;
};
