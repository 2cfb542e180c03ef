// Carrying a plate between its record and the screen.
#include "worksheet/Workbench.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "platform/Prompt.h"

namespace {

// Walks a list of numbers and stores a value only at each delimiter, so a list that was
// never stored (no delimiters) leaves the array as it stood.
template <typename Store> void walkNumberList(const QString &list, Store store)
{
    int k = 0;
    QString work;
    for (const QChar c : list) {
        if (c == kWellDelimiter) {
            if (k >= wells::kCount)
                throw WellListOverflow();
            store(k, work);
            work.clear();
            ++k;
        } else {
            work += c;
        }
    }
}

} // namespace

void Workbench::storePlateRecord()
{
    if (mPlates.eof())
        return;
    QString lists[4];
    QString rawODs;
    QString flags;
    for (QString &l : lists)
        l.reserve(wells::kCount * 8);
    for (int k = 0; k < wells::kCount; ++k) {
        for (int s = 0; s < PlateSheet::kSheets; ++s) {
            lists[s] += wellListItem(mSheet.textAt(s, k));
            lists[s] += kWellDelimiter;
        }
        rawODs += legacy::doubleToText(mSheet.rawODAt(k));
        rawODs += kWellDelimiter;
        flags += QString::number(mSheet.inclusionFlagAt(k));
        flags += kWellDelimiter;
    }
    mPlates.setValue(u"Groups", lists[PlateSheet::Groups]);
    mPlates.setValue(u"Samples", lists[PlateSheet::Samples]);
    mPlates.setValue(u"ODs", lists[PlateSheet::ODs]);
    mPlates.setValue(u"RawODs", rawODs);
    mPlates.setValue(u"Results", lists[PlateSheet::Results]);
    mPlates.setValue(u"IncludeExcludeFlags", flags);
    mPlates.setValue(u"CurrentTest", combo(Tests).text());
    mPlates.setValue(u"CurrentReader", combo(Readers).hasSelection() ? combo(Readers).text() : QString(""));
    mPlates.setValue(u"CurrentFilter",
                     combo(Filters).hasSelection() ? combo(Filters).itemData() : QVariant(QString("")));
    mPlates.setValue(u"TechName", combo(Technicians).text());
}

void Workbench::loadPlateRecord()
{
    if (mPlates.eof())
        return;
    const QStringList groups = splitWellList(mPlates.text(u"Groups"));
    const QStringList samples = splitWellList(mPlates.text(u"Samples"));
    const QStringList ods = splitWellList(mPlates.text(u"ODs"));
    const QStringList results = splitWellList(mPlates.text(u"Results"));

    // Convert both number lists before touching the screen, so a list that can't be read
    // leaves the plate on screen as it was.
    std::array<double, wells::kCount> raw;
    std::array<qint16, wells::kCount> flags;
    for (int k = 0; k < wells::kCount; ++k) {
        raw[k] = mSheet.rawODAt(k);
        flags[k] = mSheet.inclusionFlagAt(k);
    }
    walkNumberList(mPlates.text(u"RawODs"), [&raw](int k, const QString &item) { raw[k] = legacy::toDouble(item); });
    walkNumberList(mPlates.text(u"IncludeExcludeFlags"),
                   [&flags](int k, const QString &item) { flags[k] = legacy::toInt16(item); });

    mSheet.beginUpdate();
    mSheet.setSheetTexts(PlateSheet::Groups, groups);
    mSheet.setSheetTexts(PlateSheet::Samples, samples);
    mSheet.setSheetTexts(PlateSheet::ODs, ods);
    mSheet.setSheetTexts(PlateSheet::Results, results);
    for (int k = 0; k < wells::kCount; ++k) {
        mSheet.setRawODAt(k, raw[k]);
        mSheet.setInclusionFlagAt(k, flags[k]);
    }
    mSheet.endUpdate();

    const QString currentTest = mPlates.text(u"CurrentTest");
    if (!currentTest.isEmpty()) {
        const int index = combo(Tests).findText(currentTest);
        if (index >= 0)
            selectComboIndex(Tests, index);
    }
    const QString currentReader = mPlates.text(u"CurrentReader");
    if (!currentReader.isEmpty()) {
        const int index = combo(Readers).findText(currentReader);
        if (index >= 0)
            selectComboIndex(Readers, index);
        else
            mPrompt.message(QStringLiteral("The reader previously selected for this plate no longer exists."),
                            QStringLiteral("Filter No Longer Exists"));
    }
    const QVariant currentFilter = mPlates.value(u"CurrentFilter");
    if (!currentFilter.toString().isEmpty()) {
        const int index = findComboItem(combo(Filters), currentFilter);
        if (index >= 0)
            selectComboIndex(Filters, index);
        else
            mPrompt.message(QStringLiteral("The filter previously selected for this plate no longer exists."),
                            QStringLiteral("Filter No Longer Exists"));
    }
}
