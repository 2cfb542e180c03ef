#pragma once

#include "core/LegacyFormat.h"
#include "core/RecordSet.h"
#include "core/WellList.h"
#include "core/Wells.h"

#include <QString>

#include <array>
#include <charconv>
#include <type_traits>

// The per-well lists of one plate record (groups, samples, results, ODs, inclusion
// flags), each split once for everyone who reads the plate.
struct PlateLists {
    // Held in place rather than in a QStringList: 480 items a plate, each moved in.
    using Items = std::array<QString, wells::kCount>;

    Items groups;
    Items samples;
    Items results;
    Items ods;
    Items flags;

    // The lists of row `plate` of the set; WellListOverflow for a list of more than 96.
    static PlateLists of(const RecordSet &plates, int plate);
    // splitWellList, but with shareRepeats an item equal to one of the last few different
    // items of its list shares that one's text: flags, results and groups repeat a few
    // values over a plate, and each item made is an allocation.
    static Items split(const QString &text, bool shareRepeats = true);
    // An item as legacy::toDouble reads it, ConversionError included. An export reads some
    // hundred per plate, so plain decimals ("0.512") are read directly, correctly rounded
    // as the legacy conversion does; any other text takes the legacy road.
    static double number(const QString &text)
    {
        double value = 0;
        return plain(text, value) ? value : legacy::toDouble(text);
    }
    // An item as legacy::toDouble or toInt16 reads it, or `otherwise` for a text that is no
    // number.
    template <typename Number> static Number numberOr(QStringView text, Number otherwise)
    {
        Number value{};
        if (plain(text, value))
            return value;
        const QString whole = text.toString();
        if (!legacy::isNumeric(whole))
            return otherwise;
        if constexpr (std::is_floating_point_v<Number>)
            return legacy::toDouble(whole);
        else
            return legacy::toInt16(whole);
    }

private:
    // Digits with at most one point between digits; a whole number for an integer type, of
    // at most 4 digits.
    template <typename Number> static bool plain(QStringView text, Number &value)
    {
        char buffer[24];
        const qsizetype n = text.size();
        if (n == 0 || n >= qsizetype(sizeof buffer) || !text[0].isDigit() || !text[n - 1].isDigit())
            return false;
        bool point = false;
        for (qsizetype i = 0; i < n; ++i) {
            const char16_t c = text[i].unicode();
            if (c == u'.' && !point && std::is_floating_point_v<Number>)
                point = true;
            else if (c < u'0' || c > u'9')
                return false;
            buffer[i] = char(c);
        }
        if (!std::is_floating_point_v<Number> && n > 4)
            return false;
        return std::from_chars(buffer, buffer + n, value).ec == std::errc();
    }
};
