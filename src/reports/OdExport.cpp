#include "reports/OdExport.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "platform/Browser.h"
#include "platform/Prompt.h"
#include "platform/XlsxWorkbook.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <stdexcept>

OdExport::OdExport(Prompt &prompt, Browser &browser, const QString &folder, WorkbookFactory newWorkbook)
    : mPrompt(prompt), mBrowser(browser), mFolder(folder), mNewWorkbook(std::move(newWorkbook))
{
    if (!mNewWorkbook)
        mNewWorkbook = [] { return std::make_unique<XlsxWorkbook>(); };
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

void OdExport::fillWorkbook(Workbook &workbook, const QStringList &odTexts)
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
}

QString OdExport::newFilePath() const
{
    const QDir dir(mFolder);
    QString path = dir.filePath(kBaseName + QStringLiteral(".xlsx"));
    for (int n = 2; QFileInfo::exists(path); ++n)
        path = dir.filePath(QStringLiteral("%1 %2.xlsx").arg(kBaseName).arg(n));
    return path;
}

QString OdExport::exportODs(const QStringList &odTexts)
{
    std::unique_ptr<Workbook> workbook = mNewWorkbook();
    fillWorkbook(*workbook, odTexts);
    QDir().mkpath(mFolder);
    const QString path = newFilePath();
    QString error;
    if (!workbook->save(path, &error))
        throw std::runtime_error(error.toStdString());
    if (!mBrowser.openFile(path)) {
        QFile::remove(path);
        mPrompt.message(kNotFoundText, kNotFoundTitle, MsgIcon::None);
        return QString();
    }
    return path;
}
