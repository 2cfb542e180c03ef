#include "ui/Pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

namespace {

void drawCheck(QPainter &p, int s, const QColor &colour)
{
    QPen pen(colour, s / 6.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    QPainterPath path;
    path.moveTo(s * 0.18, s * 0.55);
    path.lineTo(s * 0.42, s * 0.80);
    path.lineTo(s * 0.84, s * 0.22);
    p.drawPath(path);
}

void drawCross(QPainter &p, int s)
{
    QPen pen(QColor(200, 30, 30), s / 6.0, Qt::SolidLine, Qt::RoundCap);
    p.setPen(pen);
    p.drawLine(QPointF(s * 0.22, s * 0.22), QPointF(s * 0.78, s * 0.78));
    p.drawLine(QPointF(s * 0.78, s * 0.22), QPointF(s * 0.22, s * 0.78));
}

void drawLight(QPainter &p, int s, const QColor &colour)
{
    QRadialGradient g(QPointF(s * 0.4, s * 0.35), s * 0.6);
    g.setColorAt(0, colour.lighter(170));
    g.setColorAt(1, colour);
    p.setBrush(g);
    p.setPen(QPen(colour.darker(160), 1));
    p.drawEllipse(QRectF(1.5, 1.5, s - 3, s - 3));
}

} // namespace

QPixmap picture(const QString &name, int size)
{
    // Drawn once per name and size: the panel asks for its marks after every edit.
    const QString key = QStringLiteral("tavimetra/%1/%2").arg(name).arg(size);
    QPixmap pm;
    if (QPixmapCache::find(key, &pm))
        return pm;
    pm = QPixmap(size, size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    if (name == u"greencheck")
        drawCheck(p, size, QColor(20, 150, 40));
    else if (name == u"bluecheck")
        drawCheck(p, size, QColor(30, 80, 200));
    else if (name == u"xmark")
        drawCross(p, size);
    else if (name == u"greenlight")
        drawLight(p, size, QColor(30, 170, 50));
    else if (name == u"yellowlight")
        drawLight(p, size, QColor(230, 190, 20));
    // "nomark" stays empty.
    p.end();
    QPixmapCache::insert(key, pm);
    return pm;
}
