#include "reports/OdExport.h"

#include "core/LegacyFormat.h"
#include "core/RecordSet.h"
#include "core/Wells.h"
#include "platform/Browser.h"
#include "platform/Prompt.h"
#include "platform/OoxmlWorkbook.h"
#include "store/DocumentFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <stdexcept>
#include <utility>

OdExport::OdExport(Prompt &prompt, Browser &browser, const QString &folder, WorkbookFactory newWorkbook)
    : mPrompt(prompt), mBrowser(browser), mFolder(folder), mNewWorkbook(std::move(newWorkbook))
{
    if (!mNewWorkbook)
        mNewWorkbook = [] { return std::make_unique<OoxmlWorkbook>(); };
}

QString OdExport::numberFormatOf(const QString &text)
{
    // Plain decimal texts only: an exponent form keeps the general format.
    static const QRegularExpression decimals(QStringLiteral("^\\s*[+-]?\\d*\\.(\\d+)\\s*$"));
    const QRegularExpressionMatch m = decimals.match(text);
    if (!m.hasMatch())
        return QString();
    return QStringLiteral("0.") + QString(m.capturedLength(1), u'0');
}

OdSheetHeading OdExport::headingOf(const RecordSet &plates, const QString &runName, const QString &chosenTest)
{
    OdSheetHeading h;
    h.runName = runName;
    h.testName = chosenTest;
    if (plates.eof())
        return h;
    h.plateName = plates.text(u"PlateName");
    if (!plates.text(u"TestName").isEmpty())
        h.testName = plates.text(u"TestName");
    h.readerName = plates.text(u"ReaderUsed");
    if (!plates.text(u"FilterUsed").isEmpty())
        h.filter = plates.text(u"FilterUsed") + QStringLiteral(" nm");
    const QVariant date = plates.value(u"DateRead");
    const QVariant time = plates.value(u"TimeRead");
    if (!date.isNull())
        h.dateRead = legacy::defaultDate(date.toDate());
    if (!time.isNull())
        h.timeRead = legacy::defaultTime(time.toTime());
    return h;
}

void OdExport::fillWorkbook(Workbook &workbook, const OdSheetHeading &heading, const QStringList &odTexts)
{
    for (int col = 1; col <= wells::kCols; ++col) {
        for (int row = 1; row <= wells::kRows; ++row) {
            const int well = wells::index(row, col);
            const QString text = well < odTexts.size() ? odTexts[well] : QString();
            if (text.isEmpty())
                continue;
            if (legacy::isNumeric(text))
                workbook.setNumber(row, col, legacy::toDouble(text), numberFormatOf(text));
            else
                workbook.setText(row, col, text);
        }
    }

    for (int row = 1; row <= wells::kRows; ++row) {
        workbook.setText(row, kRowLabelColumn, QString(QChar(u'A' + row - 1)));
        workbook.setBold(row, kRowLabelColumn);
    }
    for (int col = 1; col <= wells::kCols; ++col) {
        workbook.setText(kColumnLabelRow, col, QString::number(col));
        workbook.setBold(kColumnLabelRow, col);
    }

    const std::pair<const char *, QString> lines[] = {
        {"Plate", heading.plateName},    {"Run", heading.runName},   {"Test", heading.testName},
        {"Reader", heading.readerName},  {"Filter", heading.filter}, {"Date Read", heading.dateRead},
        {"Time Read", heading.timeRead},
    };
    int row = 1;
    for (const auto &[caption, value] : lines) {
        workbook.setText(row, kHeadingColumn, QString::fromLatin1(caption));
        workbook.setBold(row, kHeadingColumn);
        workbook.setText(row, kHeadingColumn + 1, value);
        ++row;
    }
    workbook.setColumnWidth(kHeadingColumn, 11);
    workbook.setColumnWidth(kHeadingColumn + 1, 24);

    const QString read = (heading.dateRead + u' ' + heading.timeRead).trimmed();
    QStringList printed;
    for (const QString &part :
         {heading.plateName, heading.runName, heading.testName, heading.readerName, heading.filter, read}) {
        if (!part.isEmpty())
            printed << part;
    }
    workbook.setPageHeader(printed.join(QStringLiteral(" - ")));
}

QString OdExport::exportODs(const OdSheetHeading &heading, const QStringList &odTexts, const QDateTime &when)
{
    std::unique_ptr<Workbook> workbook = mNewWorkbook();
    fillWorkbook(*workbook, heading, odTexts);
    const QString path =
        DocumentFolder(mFolder).newFilePath({kFileName, heading.testName, heading.runName, heading.plateName}, when);
    QString error;
    if (!workbook->save(path, &error))
        throw std::runtime_error(error.toStdString());
    if (!mBrowser.openFile(path)) {
        QFile::remove(path);
        mPrompt.message(Workbook::kNotFoundText, Workbook::kNotFoundTitle, MsgIcon::None);
        return QString();
    }
    return path;
}
