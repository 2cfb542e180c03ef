#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

// One cell of a sheet read back from a workbook file.
struct XlsxCell {
    QString text; // the shared or inline string, or the number as written
    bool isNumber = false;
    bool bold = false;
    QString numberFormat; // format code of a custom number format, empty for the general one
};

// Reads an .xlsx file back for tests: its parts as XML (through the unzip program) and the
// cells of the first sheet with their strings, bold and number formats resolved.
class XlsxReadBack {
public:
    explicit XlsxReadBack(const QString &path);

    // False when the file couldn't be read; error() says why.
    bool isValid() const { return mError.isEmpty(); }
    QString error() const { return mError; }

    // The bytes of one part ("xl/charts/chart1.xml"); empty when there is none.
    QByteArray part(const QString &name) const;

    // The cells of xl/worksheets/sheet1.xml by reference ("A1").
    const QMap<QString, XlsxCell> &cells() const { return mCells; }
    // Column widths of the first sheet, by column number from 1.
    const QMap<int, double> &columnWidths() const { return mWidths; }

private:
    void readSheet();

    QString mPath;
    QString mError;
    QMap<QString, XlsxCell> mCells;
    QMap<int, double> mWidths;
};
