#include "readers/ReaderFilterList.h"

namespace {

RecordSet emptyRows()
{
    return RecordSet({QStringLiteral("FilterNo"), QStringLiteral("FilterValue")});
}

} // namespace

ReaderFilterList::ReaderFilterList() : mRows(emptyRows())
{
}

void ReaderFilterList::setCurrent(int row)
{
    mCurrent = (row >= 0 && row < count()) ? row : -1;
}

void ReaderFilterList::assign(RecordSet rows, int selectedRow)
{
    mRows = emptyRows();
    for (int r = 0; r < rows.recordCount(); ++r) {
        mRows.addNew();
        mRows.setValue(u"FilterNo", rows.valueAt(r, u"FilterNo").toInt());
        mRows.setValue(u"FilterValue", rows.valueAt(r, u"FilterValue").toInt());
    }
    setCurrent(selectedRow);
}

void ReaderFilterList::add()
{
    mRows.addNew();
    mRows.setValue(u"FilterNo", count());
    mRows.setValue(u"FilterValue", 0);
    mCurrent = count() - 1;
}

void ReaderFilterList::insert()
{
    if (count() == 0 || mCurrent < 0) {
        add();
        return;
    }
    RecordSet rebuilt = emptyRows();
    for (int r = 0; r < count(); ++r) {
        if (r == mCurrent) {
            rebuilt.addNew();
            rebuilt.setValue(u"FilterValue", 0);
        }
        rebuilt.addNew();
        rebuilt.setValue(u"FilterValue", filterValue(r));
    }
    mRows = rebuilt;
    renumber();
}

void ReaderFilterList::remove()
{
    if (mCurrent < 0)
        return;
    RecordSet rebuilt = emptyRows();
    for (int r = 0; r < count(); ++r) {
        if (r == mCurrent)
            continue;
        rebuilt.addNew();
        rebuilt.setValue(u"FilterValue", filterValue(r));
    }
    mRows = rebuilt;
    renumber();
    if (count() == 0)
        mCurrent = -1;
    else if (mCurrent >= count())
        mCurrent = count() - 1;
}

bool ReaderFilterList::move(int direction)
{
    const int other = mCurrent + (direction < 0 ? -1 : 1);
    if (mCurrent < 0 || other < 0 || other >= count())
        return false;
    const QVariant mine = mRows.valueAt(mCurrent, u"FilterValue");
    mRows.setValueAt(mCurrent, u"FilterValue", mRows.valueAt(other, u"FilterValue"));
    mRows.setValueAt(other, u"FilterValue", mine);
    mCurrent = other;
    return true;
}

void ReaderFilterList::setValueText(int row, const QString &text)
{
    if (row < 0 || row >= count())
        return;
    mRows.setValueAt(row, u"FilterValue", text.trimmed().toInt());
}

void ReaderFilterList::renumber()
{
    for (int r = 0; r < count(); ++r)
        mRows.setValueAt(r, u"FilterNo", r + 1);
}

QString ReaderFilterList::defaultFilterCaption() const
{
    QString text = QStringLiteral("none");
    if (mCurrent >= 0 && filterValue(mCurrent) != 0)
        text = QString::number(filterValue(mCurrent)) + QStringLiteral(" nm");
    return QStringLiteral("(Default filter: ") + text + QStringLiteral(") ");
}

ReaderFilterList::KeyVerdict ReaderFilterList::keyVerdict(QChar typed, int rowCount, const QString &cellText,
                                                          bool cellTextSelected)
{
    constexpr char16_t kBackspace = 8, kTab = 9, kEnter = 13, kEscape = 27;
    const char16_t c = typed.unicode();
    if (c == kBackspace || c == kTab || c == kEnter || c == kEscape)
        return KeyVerdict::Pass;
    if (c < u'0' || c > u'9')
        return KeyVerdict::Reject;
    if (rowCount == 0)
        return KeyVerdict::AddRow;
    if (cellText.size() >= 3 && !cellTextSelected)
        return KeyVerdict::Reject;
    return KeyVerdict::Pass;
}
