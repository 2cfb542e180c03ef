#include "ui/PlateMapPrinter.h"

#include "platform/SafeFile.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

namespace {

struct Note {
    QString well, what, text;
};

QFont font(QPagedPaintDevice &device, double points, bool bold = false, bool italic = false)
{
    QFont f(QStringLiteral("Sans Serif"));
    f.setPointSizeF(points);
    f.setBold(bold);
    f.setItalic(italic);
    return QFont(f, &device);
}

// The text as it fits the width; a shortened text is noted with its full form.
QString fitted(const QFontMetricsF &metrics, const QString &text, double width, const QString &well,
               const QString &what, QList<Note> &notes)
{
    const QString shown = metrics.elidedText(text, Qt::ElideRight, width);
    if (shown != text)
        notes.append({well, what, text});
    return shown;
}

// Paints the notes from the first one given, as many as fit down to bottom; returns the
// index of the first note not painted.
int paintNotes(QPainter &p, QPagedPaintDevice &device, const QList<Note> &notes, int first, double top, double bottom,
               double width)
{
    p.setFont(font(device, 9, true));
    QFontMetricsF heading(p.font());
    p.setPen(Qt::black);
    p.drawText(QPointF(0, top + heading.ascent()),
               first == 0 ? QStringLiteral("Shortened names") : QStringLiteral("Shortened names (continued)"));
    double y = top + heading.height() * 1.4;
    p.setFont(font(device, 8));
    const QFontMetricsF m(p.font());
    int i = first;
    for (; i < notes.size() && y + m.height() <= bottom; ++i, y += m.height()) {
        const QString line = QStringLiteral("%1 %2: %3").arg(notes[i].well, notes[i].what, notes[i].text);
        p.drawText(QRectF(0, y, width, m.height()), Qt::AlignLeft | Qt::AlignVCenter, line);
    }
    return i;
}

void paintPage(QPainter &p, QPagedPaintDevice &device, const PlateMapPage &page, bool &firstPage)
{
    const double width = device.width(), height = device.height();
    if (!firstPage)
        device.newPage();
    firstPage = false;

    // Heading.
    p.setFont(font(device, 14, true));
    QFontMetricsF titleMetrics(p.font());
    p.setPen(Qt::black);
    double y = titleMetrics.ascent();
    p.drawText(QPointF(0, y),
               titleMetrics.elidedText(QStringLiteral("Plate map: ") + page.plate, Qt::ElideRight, width));
    y += titleMetrics.descent() + titleMetrics.height() * 0.3;
    p.setFont(font(device, 9));
    const QFontMetricsF headMetrics(p.font());
    const QString lines[] = {
        QStringLiteral("Run: %1     Plate: %2     Test: %3").arg(page.run, page.plate, page.test),
        QStringLiteral("Lot: %1     Technician: %2     Date: %3").arg(page.lot, page.technician, page.date),
    };
    for (const QString &line : lines) {
        y += headMetrics.height();
        p.drawText(QPointF(0, y - headMetrics.descent()), headMetrics.elidedText(line, Qt::ElideRight, width));
    }
    y += headMetrics.height() * 0.6;

    // Grid: row letters and column numbers around 8 x 12 wells, in the upper part of the page.
    const double labelWidth = width * 0.03;
    const double cellWidth = (width - labelWidth) / wells::kCols;
    const double labelHeight = headMetrics.height() * 1.3;
    const double cellHeight = std::min((height - y - labelHeight) * 0.78 / wells::kRows, cellWidth * 0.75);
    const double gridTop = y + labelHeight;
    p.setFont(font(device, 9, true));
    for (int c = 1; c <= wells::kCols; ++c)
        p.drawText(QRectF(labelWidth + (c - 1) * cellWidth, y, cellWidth, labelHeight), Qt::AlignCenter,
                   QString::number(c));
    for (int r = 1; r <= wells::kRows; ++r)
        p.drawText(QRectF(0, gridTop + (r - 1) * cellHeight, labelWidth, cellHeight), Qt::AlignCenter,
                   QString(wells::rowLetter(r)));

    const double pad = cellWidth * 0.05;
    const QFont groupFont = font(device, 7, false, true);
    const QFontMetricsF groupMetrics(groupFont);
    QList<Note> notes;
    for (int c = 1; c <= wells::kCols; ++c) {
        for (int r = 1; r <= wells::kRows; ++r) {
            const int k = wells::index(r, c);
            const PlateMapPage::Well &w = page.wells[k];
            const QRectF cell(labelWidth + (c - 1) * cellWidth, gridTop + (r - 1) * cellHeight, cellWidth, cellHeight);
            if (w.control)
                p.fillRect(cell, QColor(225, 225, 225));
            p.setPen(QPen(Qt::black, std::max(1.0, width / 4000)));
            p.drawRect(cell);
            const QRectF inner = cell.adjusted(pad, pad, -pad, -pad);
            const QString well = wells::name(k);
            const QString groupLine =
                w.control ? (w.excluded ? QStringLiteral("excluded") : QStringLiteral("control"))
                          : fitted(groupMetrics, w.group, inner.width(), well, QStringLiteral("group"), notes);
            p.setFont(groupFont);
            p.setPen(QColor(70, 70, 70));
            p.drawText(QRectF(inner.left(), inner.top(), inner.width(), inner.height() / 2),
                       Qt::AlignLeft | Qt::AlignTop, groupLine);
            QFont sampleFont = font(device, 8.5, w.control);
            sampleFont.setStrikeOut(w.excluded);
            p.setFont(sampleFont);
            p.setPen(Qt::black);
            const QString sampleLine =
                fitted(QFontMetricsF(sampleFont), w.sample, inner.width(), well, QStringLiteral("sample"), notes);
            p.drawText(QRectF(inner.left(), inner.top() + inner.height() / 2, inner.width(), inner.height() / 2),
                       Qt::AlignLeft | Qt::AlignBottom, sampleLine);
        }
    }

    // The names that were shortened, in full, under the grid and on further pages.
    const double notesTop = gridTop + wells::kRows * cellHeight + headMetrics.height();
    int next = notes.isEmpty() ? 0 : paintNotes(p, device, notes, 0, notesTop, height, width);
    while (next < notes.size()) {
        device.newPage();
        next = paintNotes(p, device, notes, next, 0, height, width);
    }
}

} // namespace

void PlateMapPrinter::paint(QPagedPaintDevice &device, const QList<PlateMapPage> &pages)
{
    QPainter p(&device);
    bool firstPage = true;
    for (const PlateMapPage &page : pages)
        paintPage(p, device, page, firstPage);
}

bool PlateMapPrinter::writePdf(const QString &path, const QList<PlateMapPage> &pages, QPageSize::PageSizeId size,
                               QString *error)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setCreator(QStringLiteral("Tavimetra"));
        writer.setTitle(QStringLiteral("Plate map"));
        writer.setResolution(300);
        writer.setPageLayout(
            QPageLayout(QPageSize(size), QPageLayout::Landscape, QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter));
        paint(writer, pages);
    }
    return SafeFile::writeWhole(path, buffer.data(), error);
}
