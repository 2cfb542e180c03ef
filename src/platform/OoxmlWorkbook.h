#pragma once

#include "platform/Workbook.h"

#include <QHash>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class OoxmlPackage;
struct OoxmlCachedCell;

// A Workbook written as an Office Open XML file (.xlsx) by our own writer: the same parts,
// byte for byte, as libxlsxwriter 1.1.4 makes of the same workbook (the tests compare them),
// written straight into memory and deflated fast, without the library's temporary files.
// Two departures: a page header holding a picture's place ("&G"), which crashes the library,
// is left out; a title or line name starting with "=" stays a text, where the library takes
// it for a formula.
class OoxmlWorkbook : public Workbook {
public:
    static inline const QString kSheetName = QStringLiteral("Sheet1");

    QString sheetName() const override { return kSheetName; }
    void setText(int row, int column, const QString &text) override;
    void setNumber(int row, int column, double value, const QString &numberFormat = QString()) override;
    void setBold(int row, int column, bool bold = true) override;
    void setColumnWidth(int column, double width) override;
    void addLineChart(const WorkbookLineChart &chart) override;
    void setPageHeader(const QString &text) override { mPageHeader = text; }
    bool save(const QString &path, QString *error = nullptr) override;

private:
    enum class Kind : uint8_t { Empty, Text, Number };
    struct Cell {
        uint16_t column = 0; // from 0
        Kind kind = Kind::Empty;
        bool bold = false;
        uint32_t format = 0; // 1 + index in mFormats; 0: none
        union {
            double number;
            uint32_t text; // index in mTexts
        };
        Cell() : number(0) {}
    };
    using Row = std::vector<Cell>; // by column
    struct Text {
        std::string utf8;
        bool tooLong = false; // longer than a cell can hold: left out
    };

    Cell &cell(int row, int column);
    uint32_t intern(const QString &text);
    uint32_t formatId(const QString &numberFormat);
    void readRange(const WorkbookRange &range, std::vector<OoxmlCachedCell> &cells) const;

    QByteArray build() const;
    void writeSheet(OoxmlPackage &package, std::vector<uint32_t> &sharedIndex, std::vector<uint32_t> &sharedOrder,
                    uint32_t &stringCount, std::vector<uint32_t> &styles) const;
    void writeStyles(std::string &out, const std::vector<uint32_t> &styles) const;
    uint32_t columnPixels(uint32_t column) const;

    std::map<uint32_t, Row> mRows; // by row from 0
    std::vector<Text> mTexts;
    QHash<QString, uint32_t> mTextIds;
    std::vector<std::string> mFormats; // number formats as libxlsxwriter keeps them
    QHash<QString, uint32_t> mFormatIds;
    std::map<uint32_t, double> mColumnWidths; // by column from 0
    QList<WorkbookLineChart> mCharts;
    QString mPageHeader;
};
