#include "ExpectedReport.h"

namespace expected {

namespace {

const QString kTable =
    QStringLiteral("<TABLE borderColor=#c0c0c0 cellpadding = 0 cellSpacing=0 width=\"100%\" border=1 style=\"width:100%\">");
const QString kStyleP = QStringLiteral("<P style=\"MARGIN-TOP: 0px; MARGIN-BOTTOM: 0px\">");

QStringList titleAndLogo(const QString &title)
{
    return {QStringLiteral("<H3 class=\"GroupTitle\">") + title + QStringLiteral("</H3>"),
            QStringLiteral("</TH>"),
            QStringLiteral("<TH class = \"GroupTitle\" align = \"right\">"),
            QStringLiteral("<img height = 42 width = 42 align = \"absmiddle\" src = \"logo.jpg\">"),
            QStringLiteral("</TH>"),
            QStringLiteral("</TR>")};
}

QString columnHead(const QString &text)
{
    return QStringLiteral("<TH align=middle bgColor=#ffffcc><FONT color=#000000 size=-1><B>") + text +
           QStringLiteral("</B></FONT></TH>");
}

QStringList map(const QString &title, const QMap<QString, QString> &values)
{
    QStringList lines;
    lines << QStringLiteral("<p><b><i>") + title + QStringLiteral("</i></b>")
          << QStringLiteral("     <table borderColor=#c0c0c0 cellSpacing=0 width=\"100%\" border=1>")
          << QStringLiteral("<thead>") << QStringLiteral("<tr>")
          << QStringLiteral("     <th width=\"5%\" align=\"center\" ><font size=\"-1\" color=\"#000000\">&nbsp;</th>");
    for (int c = 1; c <= 12; ++c) {
        const QString width = c <= 3 ? QStringLiteral("7%") : QStringLiteral("8%");
        lines << QStringLiteral("     <th width=\"") + width +
                     QStringLiteral("\" align=\"center\" bgcolor=\"#ffffcc\"><font size=\"-1\" color=\"#000000\"><b>") +
                     QString::number(c) + QStringLiteral("</b></th>");
    }
    lines << QStringLiteral("</tr>") << QStringLiteral("</thead>");
    for (const char letter : QByteArray("ABCDEFGH")) {
        lines << QStringLiteral("<tr>")
              << QStringLiteral("\t<td width=\"5%\" align=\"center\" bgcolor=\"#ffffcc\"><font size=\"-1\" "
                                "color=\"#000000\"><b>") +
                     QChar::fromLatin1(letter) + QStringLiteral("</b></td>");
        for (int c = 1; c <= 12; ++c) {
            const QString position = QChar::fromLatin1(letter) + QString::number(c);
            lines << QStringLiteral("\t<td width=\"8%\" align=\"center\"><font size=\"-1\">") + values.value(position) +
                         QStringLiteral("</td>");
        }
        lines << QStringLiteral("</tr>");
    }
    lines << QStringLiteral("</TABLE>");
    return lines;
}

} // namespace

QStringList head()
{
    return {
        QStringLiteral("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0//EN\" \"http://www.w3.org/TR/REC-html40/strict.dtd\"-->"),
        QString(),
        QStringLiteral("<HTML>"),
        QStringLiteral("<HEAD>"),
        QString(),
        QStringLiteral("<TITLE>Tavimetra Report</TITLE>"),
        QString(),
        QStringLiteral("<META http-equiv=Content-Type content=\"text/html; charset=windows-1252\">"),
        QStringLiteral("<META content=\"MSHTML 6.00.2900.2627\" name=GENERATOR>"),
        QStringLiteral("<META http-equiv=\"X-UA-Compatible\" content=\"IE=5\">"),
        QString(),
        QStringLiteral("<STYLE type=\"text/CSS\">"),
        QStringLiteral("TABLE {BORDER-COLLAPSE: collapse; display: table-header-group; table-layout: fixed}"),
        QStringLiteral("THEAD {display: table-header-group;}"),
        QStringLiteral("TH.GroupTitle"),
        QStringLiteral("{"),
        QStringLiteral("\tborder:none;"),
        QStringLiteral("\tvertical-align: middle;"),
        QStringLiteral("\tbackground-color: #000080;"),
        QStringLiteral("}"),
        QStringLiteral("P.breakhere"),
        QStringLiteral("{"),
        QStringLiteral("page-break-before: always;"),
        QStringLiteral("}"),
        QStringLiteral("H3.GroupTitle"),
        QStringLiteral("{"),
        QStringLiteral("\tmargin: 0px;"),
        QStringLiteral("\ttext-indent: 10px;"),
        QStringLiteral("\tfont-face: Arial,Helvetica,Verdana,Swiss,sans-serif;"),
        QStringLiteral("\tcolor: #FFFFFF;"),
        QStringLiteral("}"),
        QStringLiteral("TD {PADDING-RIGHT: 0px; PADDING-LEFT: 0px; PADDING-BOTTOM: 0px; MARGIN: 0px; PADDING-TOP: 0px}"),
        QStringLiteral("</STYLE>"),
        QString(),
        QStringLiteral("</HEAD>"),
        QString(),
        QStringLiteral("<BODY width=\"100%\">"),
        QString(),
        QStringLiteral("<FONT face=Arial,Helvetica,Verdana,Swiss size=-1>"),
    };
}

QStringList tail()
{
    return {QStringLiteral("</font>"), QStringLiteral("</body>"), QStringLiteral("</html>")};
}

QStringList clientHeading(const QString &group)
{
    QStringList lines = {QStringLiteral("<P>"), kTable,
                         QStringLiteral("<COL width=\"35%\"><COL width=\"35%\"><COL width=\"15%\"><COL width=\"15%\">"),
                         QStringLiteral("<THEAD>"), QStringLiteral("<TR>"),
                         QStringLiteral("<TH colspan = 3 class = \"GroupTitle\" align = \"left\" >")};
    lines << titleAndLogo(group) << QStringLiteral("<TR>") << columnHead(QStringLiteral("Sample Name"))
          << columnHead(QStringLiteral("Test Name")) << columnHead(QStringLiteral("Test Result"))
          << columnHead(QStringLiteral("Date")) << QStringLiteral("</TR>") << QStringLiteral("</THEAD>");
    return lines;
}

QStringList analyticalHeading(const QString &group)
{
    QStringList lines = {
        QStringLiteral("<P>"),
        kTable,
        QStringLiteral("<COL width=\"20%\"><COL width=\"7%\"><COL width=\"8%\"><COL width=\"8%\">"),
        QStringLiteral("<COL width=\"7%\"><COL width=\"13%\"><COL width=\"14%\"><COL width=\"15%\"><COL width=\"8%\">"),
        QStringLiteral("<THEAD>"),
        QStringLiteral("<TR>"),
        QStringLiteral("<TH colspan = 8 class = \"GroupTitle\" align = \"left\" >")};
    lines << titleAndLogo(group) << QStringLiteral("</THEAD>");
    return lines;
}

QStringList testHeading(const QString &testName, const QString &criticalHeader, const QString &ratioHeader)
{
    QStringList lines = {QStringLiteral("<THEAD>"), QStringLiteral("<TR>"), QStringLiteral("<th colspan = 10 align = \"left\">"),
                         QStringLiteral("<font size = 3>"), testName, QStringLiteral("</font>"),
                         QStringLiteral("</th>"), QStringLiteral("</tr>"), QStringLiteral("<TR>")};
    for (const QString &head : {QStringLiteral("Sample"), QStringLiteral("OD"), criticalHeader, ratioHeader,
                                QStringLiteral("Result"), QStringLiteral("Date/Time"), QStringLiteral("Run Name"),
                                QStringLiteral("Plate Name"), QStringLiteral("Position")})
        lines << columnHead(head);
    lines << QStringLiteral("</TR>") << QStringLiteral("</thead>");
    return lines;
}

QStringList row(const QStringList &values)
{
    QStringList lines = {QStringLiteral("<tr>")};
    for (const QString &value : values)
        lines << QStringLiteral("\t<td align=\"center\"><font size=\"-1\">") + value + QStringLiteral("</td>");
    lines << QStringLiteral("</tr>");
    return lines;
}

QStringList plateSection(const PlateHeading &h, const QMap<QString, QString> &groups,
                         const QMap<QString, QString> &samples, const QMap<QString, QString> &ods,
                         const QMap<QString, QString> &results)
{
    QStringList lines = {QStringLiteral(" <font size=-1 face=Arial,Helvetica,Verdana,Swiss>"), kTable,
                         QStringLiteral("<COL width=\"35%\"><COL width=\"35%\"><COL width=\"15%\"><COL width=\"15%\">"),
                         QStringLiteral("<THEAD>"), QStringLiteral("<TR>"), QStringLiteral("<TR>"),
                         QStringLiteral("<TH colspan = 3 class = \"GroupTitle\" align = \"left\" >")};
    lines << titleAndLogo(h.testName) << QStringLiteral("</table>");
    lines << kStyleP + QStringLiteral("<B>Run: </B>") + h.runName + QStringLiteral(" \u2022 <B>Plate: </B>") + h.plateName;
    lines << kStyleP + QStringLiteral("<B>Lot: </B>") + h.lot + QStringLiteral(" \u2022 <B>Test Kit Expiration Date: </B>") +
                 h.expiry + QStringLiteral("</p>");
    lines << kStyleP + QStringLiteral("<B>Test Date: </B>") + h.date + QStringLiteral(" \u2022 <B>Test Time: </B>") + h.time;
    lines << map(QStringLiteral("Group Names:"), groups) << map(QStringLiteral("Sample Names:"), samples)
          << map(QStringLiteral("Optical Density Values:"), ods) << map(QStringLiteral("Results:"), results);
    lines << QStringLiteral("<p><b><i>Notes:</i></b></p>") << QStringLiteral("<P CLASS = \"breakhere\">");
    return lines;
}

QByteArray bytes(const QStringList &lines)
{
    QByteArray out;
    for (const QString &line : lines) {
        for (const QChar c : line) {
            switch (c.unicode()) {
            case 0x2022: out += '\x95'; break; // the bullet
            case 0x20AC: out += '\x80'; break; // the euro sign
            case 0x0153: out += '\x9C'; break; // oe
            default:
                out += c.unicode() <= 0xFF ? char(c.unicode()) : '?';
            }
        }
        out += "\r\n";
    }
    return out;
}

} // namespace expected
