#pragma once

#include "worksheet/PlateMap.h"

#include <QPageSize>
#include <QString>

class QPagedPaintDevice;

// Paints plate maps: one landscape page per plate, the heading above an 8 x 12 grid with
// row letters and column numbers, each well's group over its sample; control wells shaded
// and bold, excluded controls struck through and marked "excluded". A name too long for
// its well is shortened with "…" and listed in full under the grid ("Shortened names"),
// continued on further pages when the list is long. The sizes follow the page, so the map
// fits A4 and Letter alike.
class PlateMapPrinter {
public:
    static void paint(QPagedPaintDevice &device, const QList<PlateMapPage> &pages);
    // Writes the map as a PDF through SafeFile. False with *error when the file stays as it was.
    static bool writePdf(const QString &path, const QList<PlateMapPage> &pages, QPageSize::PageSizeId size,
                         QString *error);
};
