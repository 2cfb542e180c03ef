#pragma once

#include "platform/Workbook.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

class OoxmlPackage;

// What a chart's cached copy of its data sees in one cell of the sheet.
struct OoxmlCachedCell {
    enum Kind { Absent, Number, Text, Blank } kind = Absent;
    double number = 0;
    std::string_view text;
};

// The XML of a line chart (xl/charts/chartN.xml) and of its place in the sheet's drawing,
// as libxlsxwriter writes them, with the charted cells' values cached in the chart.
class OoxmlChart {
public:
    // The cells of a block of one row or one column, in order.
    using CellReader = std::function<void(const WorkbookRange &range, std::vector<OoxmlCachedCell> &cells)>;
    // Pixel width of a column (from 0).
    using ColumnPixels = std::function<uint32_t(uint32_t column)>;

    static void writeChart(OoxmlPackage &package, const WorkbookLineChart &chart, const CellReader &cells);
    // The <xdr:twoCellAnchor> of chart number index (from 1) in the drawing.
    static void writeAnchor(std::string &out, const WorkbookLineChart &chart, int index,
                            const ColumnPixels &columnPixels);
};
