#include "worksheet/LayoutReader.h"

#include "core/WellList.h"
#include "platform/XlsxSheetReader.h"
#include "worksheet/CsvTable.h"
#include "worksheet/LayoutEditor.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

QString LayoutTable::place(int row, int col) const
{
    if (workbook)
        return QStringLiteral("Cell %1%2").arg(XlsxSheetReader::columnLetters(col)).arg(row + 1);
    return QStringLiteral("Line %1, field %2").arg(lines.value(row, row + 1)).arg(col + 1);
}

QString LayoutTable::rowPlace(int row) const
{
    if (workbook)
        return QStringLiteral("Row %1").arg(row + 1);
    return QStringLiteral("Line %1").arg(lines.value(row, row + 1));
}

namespace {

const QString kNeither = QStringLiteral(
    "The file is neither a table of wells and samples (a well column such as \"A1\" and a sample column) "
    "nor an 8 x 12 grid of samples.");

QString lowerFirst(QString text)
{
    if (!text.isEmpty())
        text[0] = text[0].toLower();
    return text;
}

LayoutReading refused(const QString &message)
{
    return LayoutReading{std::nullopt, message};
}

bool rowIsEmpty(const LayoutTable &t, int r)
{
    for (const QString &cell : t.rows[r])
        if (!cell.trimmed().isEmpty())
            return false;
    return true;
}

int filledCells(const QStringList &row)
{
    int n = 0;
    for (const QString &cell : row)
        n += !cell.trimmed().isEmpty();
    return n;
}

// What a cell may hold on a plate; an empty text when it is fine.
QString textProblem(const LayoutTable &t, int r, int c, const QString &text)
{
    if (text.contains(kWellDelimiter))
        return QStringLiteral("%1: the character \"%2\" can't be used on a plate.").arg(t.place(r, c), kWellDelimiter);
    if (text.size() > LayoutEditor::kMaxCellText)
        return QStringLiteral("%1: the text is longer than %2 characters.")
            .arg(t.place(r, c))
            .arg(LayoutEditor::kMaxCellText);
    return QString();
}

// Sets a well, with control names made the controls: a control well holds its name in both
// sheets, and a control name left in the group of a sample well is dropped.
void setWell(PlateLayout &layout, int well, QString group, QString sample)
{
    if (isControlName(sample.toUpper()))
        group = sample = sample.toUpper();
    else if (isControlName(group.toUpper()))
        group.clear();
    layout.set(well, group, sample);
}

int headerColumn(const QStringList &row, const QStringList &names)
{
    for (int c = 0; c < row.size(); ++c)
        if (names.contains(row[c].trimmed().toLower()))
            return c;
    return -1;
}

const QStringList kWellHeaders = {
    QStringLiteral("well"),     QStringLiteral("wells"), QStringLiteral("well id"), QStringLiteral("well position"),
    QStringLiteral("position"), QStringLiteral("pos"),   QStringLiteral("location")};
const QStringList kSampleHeaders = {
    QStringLiteral("sample"),   QStringLiteral("samples"), QStringLiteral("sample name"), QStringLiteral("sample id"),
    QStringLiteral("sampleid"), QStringLiteral("name"),    QStringLiteral("id"),          QStringLiteral("specimen")};
const QStringList kGroupHeaders = {QStringLiteral("group"), QStringLiteral("groups"), QStringLiteral("group name"),
                                   QStringLiteral("client"), QStringLiteral("owner")};

LayoutReading readLongTable(const LayoutTable &t, int first, int wellCol, int sampleCol, int groupCol)
{
    PlateLayout layout;
    std::array<int, wells::kCount> seenAt;
    seenAt.fill(-1);
    for (int r = first; r < t.rows.size(); ++r) {
        if (rowIsEmpty(t, r))
            continue;
        const QString wellText = t.cell(r, wellCol).trimmed();
        if (wellText.isEmpty())
            return refused(QStringLiteral("%1: the well is missing.").arg(t.place(r, wellCol)));
        bool outside = false;
        const std::optional<int> well = LayoutReader::parseWell(wellText, &outside);
        if (outside)
            return refused(
                QStringLiteral("%1: well %2 is outside the plate (A1 to H12).").arg(t.place(r, wellCol), wellText));
        if (!well)
            return refused(QStringLiteral("%1: \"%2\" is not a well (A1 to H12).").arg(t.place(r, wellCol), wellText));
        if (seenAt[*well] >= 0)
            return refused(
                QStringLiteral("%1: well %2 is given twice (first at %3).")
                    .arg(t.place(r, wellCol), wells::name(*well), lowerFirst(t.place(seenAt[*well], wellCol))));
        seenAt[*well] = r;
        const QString sample = t.cell(r, sampleCol).trimmed();
        const QString group = groupCol >= 0 ? t.cell(r, groupCol).trimmed() : QString();
        for (const QString &problem : {textProblem(t, r, sampleCol, sample), textProblem(t, r, groupCol, group)})
            if (!problem.isEmpty())
                return refused(problem);
        setWell(layout, *well, group, sample);
    }
    if (layout.count() == 0)
        return refused(QStringLiteral("%1: a header with no wells after it.").arg(t.rowPlace(first - 1)));
    return LayoutReading{layout, QString()};
}

// The column of the label "1" of a row labelled 1 to 12; -1 when the row isn't one.
int columnLabels(const QStringList &row)
{
    const int one = int(row.indexOf(QStringLiteral("1")));
    if (one < 0 || one > 1)
        return -1;
    for (int c = 1; c <= wells::kCols; ++c)
        if (row.value(one + c - 1).trimmed() != QString::number(c))
            return -1;
    for (int c = one + wells::kCols; c < row.size(); ++c)
        if (!row[c].trimmed().isEmpty())
            return -1;
    return one;
}

QString gridTitle(const QStringList &row)
{
    if (filledCells(row) != 1)
        return QString();
    for (const QString &cell : row) {
        const QString t = cell.trimmed().toLower();
        if (t == u"samples" || t == u"sample" || t == u"sample names")
            return QStringLiteral("samples");
        if (t == u"groups" || t == u"group" || t == u"group names")
            return QStringLiteral("groups");
    }
    return QString();
}

LayoutReading readGrids(const LayoutTable &raw)
{
    LayoutTable t = raw;
    for (QStringList &row : t.rows)
        for (QString &cell : row)
            cell = cell.trimmed();
    QStringList texts[2] = {QStringList(wells::kCount), QStringList(wells::kCount)}; // samples, groups
    bool filled[2] = {false, false};
    int r = 0;
    int grids = 0;
    const int n = int(t.rows.size());
    while (r < n) {
        if (rowIsEmpty(t, r)) {
            ++r;
            continue;
        }
        if (grids == 2)
            return refused(QStringLiteral("%1: the file goes on after a grid of samples and a grid of groups.")
                               .arg(t.rowPlace(r)));
        QString title = gridTitle(t.rows[r]);
        if (!title.isEmpty()) {
            ++r;
            while (r < n && rowIsEmpty(t, r))
                ++r;
        }
        if (r >= n)
            return refused(kNeither);
        const int kind = title == u"groups" || (title.isEmpty() && filled[0]) ? 1 : 0;
        if (filled[kind])
            return refused(QStringLiteral("%1: a second grid of %2.").arg(t.rowPlace(r), kind ? "groups" : "samples"));
        // Column labels 1-12 above the grid (after a corner cell or not), row labels A-H in
        // its first column: either, both or none.
        const int labelCol = columnLabels(t.rows[r]);
        if (labelCol >= 0)
            ++r;
        const bool rowLabels = labelCol >= 0 ? labelCol == 1
                                             : t.cell(r, 0).compare(u"A", Qt::CaseInsensitive) == 0 &&
                                                   t.cell(r + 1, 0).compare(u"B", Qt::CaseInsensitive) == 0;
        const int firstCol = rowLabels ? 1 : 0;
        for (int i = 0; i < wells::kRows; ++i, ++r) {
            if (r >= n) {
                if (labelCol >= 0 || rowLabels || grids > 0)
                    return refused(QStringLiteral("The grid ends before row %1.").arg(wells::rowLetter(i + 1)));
                break; // a sheet saved without its empty last rows
            }
            const QStringList &row = t.rows[r];
            if (rowLabels) {
                const QString label = t.cell(r, 0);
                if (label.compare(QString(wells::rowLetter(i + 1)), Qt::CaseInsensitive) != 0)
                    return refused(QStringLiteral("%1: the row label \"%2\" stands where \"%3\" was expected.")
                                       .arg(t.place(r, 0), label, QString(wells::rowLetter(i + 1))));
            }
            for (int c = firstCol + wells::kCols; c < row.size(); ++c)
                if (!row[c].isEmpty())
                    return refused(grids == 0 && labelCol < 0 && !rowLabels && i == 0
                                       ? kNeither
                                       : QStringLiteral("%1: a well beyond column 12.").arg(t.place(r, c)));
            for (int c = 0; c < wells::kCols; ++c) {
                const QString text = t.cell(r, firstCol + c);
                const QString problem = textProblem(t, r, firstCol + c, text);
                if (!problem.isEmpty())
                    return refused(problem);
                texts[kind][wells::index(i + 1, c + 1)] = text;
            }
        }
        filled[kind] = true;
        ++grids;
    }
    if (grids == 0)
        return refused(kNeither);
    PlateLayout layout;
    for (int k = 0; k < wells::kCount; ++k)
        setWell(layout, k, texts[1][k], texts[0][k]);
    return LayoutReading{layout, QString()};
}

} // namespace

std::optional<int> LayoutReader::parseWell(const QString &text, bool *outside)
{
    static const QRegularExpression pattern(QStringLiteral("^([A-Za-z])\\s*:?\\s*(\\d{1,3})$"));
    *outside = false;
    const QRegularExpressionMatch m = pattern.match(text.trimmed());
    if (!m.hasMatch())
        return std::nullopt;
    const int row = m.captured(1).toUpper()[0].unicode() - 'A' + 1;
    const int col = m.captured(2).toInt();
    if (!wells::valid(row, col)) {
        *outside = true;
        return std::nullopt;
    }
    return wells::index(row, col);
}

LayoutReading LayoutReader::interpret(const LayoutTable &t)
{
    int first = 0;
    while (first < t.rows.size() && rowIsEmpty(t, first))
        ++first;
    if (first == t.rows.size())
        return refused(QStringLiteral("The file is empty."));

    const QStringList &head = t.rows[first];
    const int wellHeader = headerColumn(head, kWellHeaders);
    if (wellHeader >= 0) {
        const int sampleCol = headerColumn(head, kSampleHeaders);
        if (sampleCol < 0)
            return refused(
                QStringLiteral("%1: a well column but no sample column (\"Sample\").").arg(t.rowPlace(first)));
        return readLongTable(t, first + 1, wellHeader, sampleCol, headerColumn(head, kGroupHeaders));
    }
    int c0 = 0;
    while (c0 < head.size() && head[c0].trimmed().isEmpty())
        ++c0;
    bool outside = false;
    if (LayoutReader::parseWell(head.value(c0), &outside) && filledCells(head) <= 3)
        return readLongTable(t, first, c0, c0 + 1, c0 + 2);
    return readGrids(t);
}

LayoutReading LayoutReader::readText(const QByteArray &bytes)
{
    return interpret(CsvTable::split(CsvTable::decode(bytes)));
}

LayoutReading LayoutReader::readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(QStringLiteral("The file can't be read: %1.").arg(file.errorString()));
    const QByteArray head = file.peek(8);
    if (head.startsWith("PK\x03\x04")) {
        file.close();
        QString error;
        const std::optional<QList<QStringList>> rows = XlsxSheetReader::read(path, &error);
        if (!rows)
            return refused(error);
        LayoutTable table;
        table.rows = *rows;
        table.workbook = true;
        return interpret(table);
    }
    if (head.startsWith("\xD0\xCF\x11\xE0"))
        return refused(
            QStringLiteral("Workbooks of Excel 97-2003 (.xls) can't be read: save the sheet as .xlsx or CSV."));
    // Far beyond any layout: a wrong file chosen by mistake.
    if (file.size() > 16 * 1024 * 1024)
        return refused(kNeither);
    return readText(file.readAll());
}
