#pragma once

#include "platform/Workbook.h"

#include <QMap>
#include <QPair>

#include <variant>

// A Workbook written as an Office Open XML file (.xlsx) with libxlsxwriter: no longer the
// program's writer, kept as the independent reference OoxmlWorkbook is checked against.
class XlsxWorkbook : public Workbook {
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
    struct Cell {
        std::variant<std::monostate, QString, double> value;
        QString numberFormat;
        bool bold = false;
    };

    Cell &cell(int row, int column);

    QMap<QPair<int, int>, Cell> mCells; // (row, column) from 1
    QMap<int, double> mColumnWidths;
    QList<WorkbookLineChart> mCharts;
    QString mPageHeader;
};
