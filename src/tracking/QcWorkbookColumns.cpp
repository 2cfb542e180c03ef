#include "tracking/QcWorkbookColumns.h"

#include "platform/Workbook.h"
#include "tracking/QcHistory.h"
#include "tracking/QcLine.h"

#include <QStringList>

#include <cmath>
#include <iterator>

namespace {

// The guide-set lines after the value: the mean, then -3 to +3 SD.
const int kSteps[] = {0, -3, -2, -1, 1, 2, 3};

QString stepHead(const QString &quantity, int step)
{
    if (step == 0)
        return quantity + QStringLiteral(" Guide Mean");
    return QStringLiteral("%1 %2%3SD")
        .arg(quantity, step > 0 ? QStringLiteral("+") : QStringLiteral("-"))
        .arg(std::abs(step));
}

} // namespace

QString QcWorkbookColumns::violations(const QcHistory &history, int run)
{
    const std::vector<QcFlag> flags = history.flagsOf(run);
    const QString rejected = QcLine::ruleList(history, flags, true);
    const QString warned = QcLine::ruleList(history, flags, false);
    if (warned.isEmpty())
        return rejected;
    const QString warning = QStringLiteral("warning ") + warned;
    return rejected.isEmpty() ? warning : rejected + QStringLiteral("; ") + warning;
}

int QcWorkbookColumns::write(Workbook &book, const QcHistory &history, int headRow, int firstRow, int firstColumn)
{
    const int perQuantity = 1 + int(std::size(kSteps));
    int column = firstColumn;
    for (const QString &quantity : history.quantities) {
        book.setText(headRow, column, quantity);
        book.setBold(headRow, column);
        book.setColumnWidth(column, 10);
        for (int i = 0; i < int(std::size(kSteps)); ++i) {
            book.setText(headRow, column + 1 + i, stepHead(quantity, kSteps[i]));
            book.setBold(headRow, column + 1 + i);
            book.setColumnWidth(column + 1 + i, 13);
        }
        column += perQuantity;
    }
    const int violationsColumn = column;
    book.setText(headRow, violationsColumn, kViolations);
    book.setBold(headRow, violationsColumn);
    book.setColumnWidth(violationsColumn, 30);

    for (size_t r = 0; r < history.runs.size(); ++r) {
        const QcRun &run = history.runs[r];
        const int row = firstRow + int(r);
        for (int q = 0; q < history.quantities.size(); ++q) {
            const int col = firstColumn + q * perQuantity;
            if (const std::optional<double> &value = run.values[size_t(q)])
                book.setNumber(row, col, *value);
            if (const std::optional<GuideSet> &set = run.sets[size_t(q)]) {
                for (int i = 0; i < int(std::size(kSteps)); ++i)
                    book.setNumber(row, col + 1 + i, set->mean + kSteps[i] * set->sd);
            }
        }
        const QString text = violations(history, int(r));
        if (!text.isEmpty())
            book.setText(row, violationsColumn, text);
    }
    return violationsColumn - firstColumn + 1;
}
