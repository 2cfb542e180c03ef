#include "reports/ReportHtml.h"

#include "core/LegacyFormat.h"
#include "core/RecordSet.h"
#include "core/WellList.h"
#include "core/Wells.h"
#include "evaluation/clsTests.h"
#include "reports/ReportFile.h"
#include "reports/ReportText.h"

#include <QDate>

#include <array>

namespace {

const QString kTableOpen = QStringLiteral(
    "<TABLE borderColor=#c0c0c0 cellpadding = 0 cellSpacing=0 width=\"100%\" border=1 style=\"width:100%\">");
const QString kLogo = QStringLiteral("<img height = 42 width = 42 align = \"absmiddle\" src = \"logo.jpg\">");
const QString kLineStart = QStringLiteral("<P style=\"MARGIN-TOP: 0px; MARGIN-BOTTOM: 0px\">");
const QString kBullet = QStringLiteral(" \u2022 ");
const QString kCellStart = QStringLiteral("\t<td align=\"center\"><font size=\"-1\">");
const QString kCellEnd = QStringLiteral("</td>");

QString columnHead(const QString &text)
{
    return QStringLiteral("<TH align=middle bgColor=#ffffcc><FONT color=#000000 size=-1><B>") + text +
           QStringLiteral("</B></FONT></TH>");
}

// Default text of a field, or "None" when it is Null.
QString textOrNone(const QVariant &value)
{
    return value.isNull() ? QStringLiteral("None") : ReportText::defaultText(value);
}

} // namespace

void ReportHtml::writeDocumentHead()
{
    static const char *const lines[] = {
        "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0//EN\" \"http://www.w3.org/TR/REC-html40/strict.dtd\"-->",
        "",
        "<HTML>",
        "<HEAD>",
        "",
        "<TITLE>Tavimetra Report</TITLE>",
        "",
        "<META http-equiv=Content-Type content=\"text/html; charset=windows-1252\">",
        "<META content=\"MSHTML 6.00.2900.2627\" name=GENERATOR>",
        "<META http-equiv=\"X-UA-Compatible\" content=\"IE=5\">",
        "",
        "<STYLE type=\"text/CSS\">",
        "TABLE {BORDER-COLLAPSE: collapse; display: table-header-group; table-layout: fixed}",
        "THEAD {display: table-header-group;}",
        "TH.GroupTitle",
        "{",
        "\tborder:none;",
        "\tvertical-align: middle;",
        "\tbackground-color: #000080;",
        "}",
        "P.breakhere",
        "{",
        "page-break-before: always;",
        "}",
        "H3.GroupTitle",
        "{",
        "\tmargin: 0px;",
        "\ttext-indent: 10px;",
        "\tfont-face: Arial,Helvetica,Verdana,Swiss,sans-serif;",
        "\tcolor: #FFFFFF;",
        "}",
        "TD {PADDING-RIGHT: 0px; PADDING-LEFT: 0px; PADDING-BOTTOM: 0px; MARGIN: 0px; PADDING-TOP: 0px}",
        "</STYLE>",
        "",
        "</HEAD>",
        "",
        "<BODY width=\"100%\">",
        "",
        "<FONT face=Arial,Helvetica,Verdana,Swiss size=-1>",
    };
    for (const char *line : lines)
        mOut.writeLine(QString::fromLatin1(line));
}

void ReportHtml::writeDocumentTail()
{
    mOut.writeLine(u"</font>");
    mOut.writeLine(u"</body>");
    mOut.writeLine(u"</html>");
}

void ReportHtml::writePlateSection(const RecordSet &plates, int plate, const QString &runName)
{
    writePlateHeading(plates, plate, runName);
    writePlateMap(QStringLiteral("Group Names:"), plates.valueAt(plate, u"Groups").toString());
    writePlateMap(QStringLiteral("Sample Names:"), plates.valueAt(plate, u"Samples").toString());
    writePlateMap(QStringLiteral("Optical Density Values:"), plates.valueAt(plate, u"ODs").toString());
    writePlateMap(QStringLiteral("Results:"), plates.valueAt(plate, u"Results").toString());
    writeNotesBlock();
}

void ReportHtml::writePlateHeading(const RecordSet &plates, int plate, const QString &runName)
{
    const QString testName = plates.valueAt(plate, u"TestName").toString();
    const QString lotNumber = plates.valueAt(plate, u"LotNumber").toString();
    const QString lot = lotNumber.isEmpty() ? QStringLiteral("None") : lotNumber;
    const QString expiry = textOrNone(plates.valueAt(plate, u"ExpDate"));
    const QVariant dateRead = plates.valueAt(plate, u"DateRead");
    QString date = QStringLiteral("None");
    if (!dateRead.isNull()) {
        const QDate d = dateRead.typeId() == QMetaType::QDateTime ? dateRead.toDateTime().date() : dateRead.toDate();
        date = d.isValid() ? legacy::formatDate(d, u"MM/DD/YYYY") : dateRead.toString();
    }
    const QString time = textOrNone(plates.valueAt(plate, u"TimeRead"));

    mOut.writeLine(u" <font size=-1 face=Arial,Helvetica,Verdana,Swiss>");
    mOut.writeLine(kTableOpen);
    mOut.writeLine(u"<COL width=\"35%\"><COL width=\"35%\"><COL width=\"15%\"><COL width=\"15%\">");
    mOut.writeLine(u"<THEAD>");
    mOut.writeLine(u"<TR>");
    mOut.writeLine(u"<TR>");
    mOut.writeLine(u"<TH colspan = 3 class = \"GroupTitle\" align = \"left\" >");
    writeGroupTitle(testName);
    mOut.writeLine(u"</TR>");
    mOut.writeLine(u"</table>");
    mOut.writeLine(kLineStart + QStringLiteral("<B>Run: </B>") + runName + kBullet + QStringLiteral("<B>Plate: </B>") +
                   plates.valueAt(plate, u"PlateName").toString());
    mOut.writeLine(kLineStart + QStringLiteral("<B>Lot: </B>") + lot + kBullet +
                   QStringLiteral("<B>Test Kit Expiration Date: </B>") + expiry + QStringLiteral("</p>"));
    mOut.writeLine(kLineStart + QStringLiteral("<B>Test Date: </B>") + date + kBullet +
                   QStringLiteral("<B>Test Time: </B>") + time);
}

void ReportHtml::writePlateMap(const QString &title, const QString &wellList)
{
    // The head of a map and the start of each of its rows are the same in every map: made
    // once. The values are cut out of the well list in place.
    static const QByteArray head = [] {
        QString text = QStringLiteral("     <table borderColor=#c0c0c0 cellSpacing=0 width=\"100%\" border=1>\r\n"
                                      "<thead>\r\n<tr>\r\n"
                                      "     <th width=\"5%\" align=\"center\" ><font size=\"-1\" "
                                      "color=\"#000000\">&nbsp;</th>\r\n");
        for (int col = 1; col <= wells::kCols; ++col) {
            text += QStringLiteral("     <th width=\"%1%\" align=\"center\" bgcolor=\"#ffffcc\"><font size=\"-1\" "
                                   "color=\"#000000\"><b>%2</b></th>\r\n")
                        .arg(col <= 3 ? 7 : 8)
                        .arg(col);
        }
        text += QStringLiteral("</tr>\r\n</thead>\r\n");
        return text.toLatin1();
    }();
    static const std::array<QByteArray, wells::kRows + 1> rowStarts = [] {
        std::array<QByteArray, wells::kRows + 1> starts;
        for (int row = 1; row <= wells::kRows; ++row) {
            starts[size_t(row)] = (QStringLiteral("<tr>\r\n\t<td width=\"5%\" align=\"center\" bgcolor=\"#ffffcc\">"
                                                  "<font size=\"-1\" color=\"#000000\"><b>") +
                                   wells::rowLetter(row) + QStringLiteral("</b></td>\r\n"))
                                      .toLatin1();
        }
        return starts;
    }();

    const std::array<QStringView, wells::kCount> values = splitWellListViews(wellList);
    mOut.writeLine({u"<p><b><i>", title, u"</i></b>"});
    mOut.append(head);
    for (int row = 1; row <= wells::kRows; ++row) {
        mOut.append(rowStarts[size_t(row)]);
        for (int col = 1; col <= wells::kCols; ++col) {
            mOut.append("\t<td width=\"8%\" align=\"center\"><font size=\"-1\">");
            mOut.appendText(values[size_t(wells::index(row, col))]);
            mOut.append("</td>\r\n");
        }
        mOut.append("</tr>\r\n");
    }
    mOut.writeLine(u"</TABLE>");
}

void ReportHtml::writeNotesBlock()
{
    mOut.writeLine(u"<p><b><i>Notes:</i></b></p>");
    mOut.writeLine(u"<P CLASS = \"breakhere\">");
}

void ReportHtml::writeGroupTitle(const QString &groupName)
{
    mOut.writeLine(QStringLiteral("<H3 class=\"GroupTitle\">") + groupName + QStringLiteral("</H3>"));
    mOut.writeLine(u"</TH>");
    mOut.writeLine(u"<TH class = \"GroupTitle\" align = \"right\">");
    mOut.writeLine(kLogo);
    mOut.writeLine(u"</TH>");
}

void ReportHtml::writeClientGroupHeading(const QString &groupName)
{
    mOut.writeLine(u"<P>");
    mOut.writeLine(kTableOpen);
    mOut.writeLine(u"<COL width=\"35%\"><COL width=\"35%\"><COL width=\"15%\"><COL width=\"15%\">");
    mOut.writeLine(u"<THEAD>");
    mOut.writeLine(u"<TR>");
    mOut.writeLine(u"<TH colspan = 3 class = \"GroupTitle\" align = \"left\" >");
    writeGroupTitle(groupName);
    mOut.writeLine(u"</TR>");
    mOut.writeLine(u"<TR>");
    for (const char *head : {"Sample Name", "Test Name", "Test Result", "Date"})
        mOut.writeLine(columnHead(QString::fromLatin1(head)));
    mOut.writeLine(u"</TR>");
    mOut.writeLine(u"</THEAD>");
}

void ReportHtml::writeAnalyticalGroupHeading(const QString &groupName)
{
    mOut.writeLine(u"<P>");
    mOut.writeLine(kTableOpen);
    mOut.writeLine(u"<COL width=\"20%\"><COL width=\"7%\"><COL width=\"8%\"><COL width=\"8%\">");
    mOut.writeLine(u"<COL width=\"7%\"><COL width=\"13%\"><COL width=\"14%\"><COL width=\"15%\"><COL width=\"8%\">");
    mOut.writeLine(u"<THEAD>");
    mOut.writeLine(u"<TR>");
    mOut.writeLine(u"<TH colspan = 8 class = \"GroupTitle\" align = \"left\" >");
    writeGroupTitle(groupName);
    mOut.writeLine(u"</TR>");
    mOut.writeLine(u"</THEAD>");
}

void ReportHtml::writeTestHeading(const QString &testName, const QString &version)
{
    const QString ratioHeader = mTests.getCalculationRatioHeader(testName, version);
    const QString criticalHeader = mTests.getCriticalControlHeader(testName, version);
    mOut.writeLine(u"<THEAD>");
    mOut.writeLine(u"<TR>");
    mOut.writeLine(u"<th colspan = 10 align = \"left\">");
    mOut.writeLine(u"<font size = 3>");
    mOut.writeLine(testName);
    mOut.writeLine(u"</font>");
    mOut.writeLine(u"</th>");
    mOut.writeLine(u"</tr>");
    mOut.writeLine(u"<TR>");
    for (const QString &head : {QStringLiteral("Sample"), QStringLiteral("OD"), criticalHeader, ratioHeader,
                                QStringLiteral("Result"), QStringLiteral("Date/Time"), QStringLiteral("Run Name"),
                                QStringLiteral("Plate Name"), QStringLiteral("Position")})
        mOut.writeLine(columnHead(head));
    mOut.writeLine(u"</TR>");
    mOut.writeLine(u"</thead>");
}

void ReportHtml::writeRow(const QStringList &values)
{
    mOut.writeLine(u"<tr>");
    for (const QString &value : values)
        mOut.writeLine({kCellStart, value, kCellEnd});
    mOut.writeLine(u"</tr>");
}
