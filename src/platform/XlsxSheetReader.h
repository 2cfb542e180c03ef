#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The cells of the first sheet of an .xlsx workbook as text: shared strings, inline strings,
// formula strings, booleans and numbers (written without a trailing ".0"). Rows and columns
// keep their places: rows[0][1] is cell B1.
class XlsxSheetReader {
public:
    // Rows of a sheet, or nothing with the reason in error.
    static std::optional<QList<QStringList>> read(const QString &path, QString *error);
    // The cells of a worksheet's XML, given the workbook's shared strings.
    static std::optional<QList<QStringList>> readSheetXml(const QByteArray &xml, const QStringList &sharedStrings,
                                                          QString *error);
    static QStringList readSharedStrings(const QByteArray &xml);
    // "B12" as row 11, column 1 (from 0); false for text that isn't a cell reference.
    static bool parseReference(const QString &reference, int *row, int *col);
    static QString columnLetters(int col);

    // The largest sheet a layout can sensibly come from; cells beyond are refused.
    static constexpr int kMaxRows = 5000;
    static constexpr int kMaxCols = 200;
};
