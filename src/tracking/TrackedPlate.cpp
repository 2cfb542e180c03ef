#include "tracking/TrackedPlate.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "core/Wells.h"

#include <QStringList>

namespace {

const std::array<QStringView, 4> kControlNames = {u"PC", u"NC", u"AUX", u"BLANK"};

int controlIndex(QStringView name)
{
    // Asked for every well of thousands of plates: most names start with none of P, N, A, B.
    if (name.isEmpty() || (name[0] != u'P' && name[0] != u'N' && name[0] != u'A' && name[0] != u'B'))
        return -1;
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
    // The lists are read in place (views, no text per well): thousands of plates are read
    // for one chart, and only their few control wells are kept.
    for (auto &list : mCounted)
        list.clear();
    std::array<QStringView, wells::kCount> sampleItems, odItems, flagItems;
    const bool undelimitedFlags = isUndelimitedFlags(flags);
    try {
        sampleItems = splitWellListViews(samples);
        odItems = splitWellListViews(ods);
        if (!undelimitedFlags)
            flagItems = splitWellListViews(flags);
    } catch (const WellListOverflow &) {
        throw TrackingDataError(QStringLiteral("The plate %1 can't be tracked: one of its well lists has more "
                                               "than 96 items.")
                                    .arg(describe()));
    }
    for (int k = 0; k < wells::kCount; ++k) {
        const QStringView flagText = undelimitedFlags ? QStringView(flags).mid(k, 1) : flagItems[size_t(k)];
        qint16 flag = 0;
        if (flagText.size() == 1 && flagText[0] >= u'0' && flagText[0] <= u'9') {
            flag = qint16(flagText[0].unicode() - u'0'); // the usual 0 or 1, as toInt16 reads it
        } else {
            try {
                flag = legacy::toInt16(flagText.toString());
            } catch (const ConversionError &) {
                throw TrackingDataError(QStringLiteral("The plate %1 can't be tracked: the include flag of well %2 "
                                                       "(\"%3\") is not a number.")
                                            .arg(describe(), wells::name(k), flagText.toString()));
            }
        }
        const int control = controlIndex(sampleItems[size_t(k)]);
        if (control < 0 || flag == 0)
            continue;
        const QString odText = odItems[size_t(k)].toString();
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
