#include "tracking/TrackedPlate.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "core/Wells.h"

#include <QStringList>

namespace {

const std::array<QStringView, 4> kControlNames = {u"PC", u"NC", u"AUX", u"BLANK"};

int controlIndex(QStringView name)
{
    for (int i = 0; i < int(kControlNames.size()); ++i) {
        if (name == kControlNames[i])
            return i;
    }
    return -1;
}

// The flags of a plate that was never stored: 96 digits with no delimiter.
bool isUndelimitedFlags(const QString &flags)
{
    if (flags.size() != wells::kCount || flags.contains(kWellDelimiter))
        return false;
    for (const QChar c : flags) {
        if (!c.isDigit())
            return false;
    }
    return true;
}

} // namespace

QString TrackedPlate::describe() const
{
    return QStringLiteral("\"%1\" of run \"%2\"").arg(plateName, runName);
}

void TrackedPlate::setWells(const QString &samples, const QString &ods, const QString &flags)
{
    for (auto &list : mCounted)
        list.clear();
    QStringList sampleItems, odItems, flagItems;
    try {
        sampleItems = splitWellList(samples);
        odItems = splitWellList(ods);
        flagItems = isUndelimitedFlags(flags) ? QStringList() : splitWellList(flags);
    } catch (const WellListOverflow &) {
        throw TrackingDataError(QStringLiteral("The plate %1 can't be tracked: one of its well lists has more "
                                               "than 96 items.")
                                    .arg(describe()));
    }
    for (int k = 0; k < wells::kCount; ++k) {
        const QString flagText = flagItems.isEmpty() ? QString(flags.at(k)) : flagItems.at(k);
        qint16 flag = 0;
        try {
            flag = legacy::toInt16(flagText);
        } catch (const ConversionError &) {
            throw TrackingDataError(QStringLiteral("The plate %1 can't be tracked: the include flag of well %2 "
                                                   "(\"%3\") is not a number.")
                                        .arg(describe(), wells::name(k), flagText));
        }
        const int control = controlIndex(sampleItems.at(k));
        if (control < 0 || flag == 0)
            continue;
        const QString &odText = odItems.at(k);
        if (!legacy::isNumeric(odText))
            throw TrackingDataError(QStringLiteral("The plate %1 can't be tracked: the OD of control well %2 "
                                                   "(\"%3\") is not a number.")
                                        .arg(describe(), wells::name(k), odText));
        mCounted[size_t(control)].push_back(legacy::toDouble(odText));
    }
}

const std::vector<double> &TrackedPlate::countedODs(QStringView controlType) const
{
    static const std::vector<double> none;
    const int control = controlIndex(controlType);
    return control < 0 ? none : mCounted[size_t(control)];
}
