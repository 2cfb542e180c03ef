#pragma once

#include "FakePrompt.h"

#include "evaluation/PlateEvaluator.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QString>

#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>

// A plate laid out and read the way the technician and the reader would leave it, for
// the evaluation alone.
class TestPlate {
public:
    static constexpr const char *kReadDay = "2026-11-23"; // today, for every plate here

    explicit TestPlate(const QString &testName)
    {
        in.testName = testName;
        in.flags.fill(1);
        in.today = QDate::fromString(QString::fromLatin1(kReadDay), Qt::ISODate);
    }

    PlateInput in;
    PlateEvaluation out;

    // "A1" .. "H12" to the well index (column by column).
    static int well(const char *name)
    {
        const std::string s(name);
        if (s.size() < 2 || s[0] < 'A' || s[0] > 'H')
            throw std::invalid_argument("bad well " + s);
        return wells::index(s[0] - 'A' + 1, std::stoi(s.substr(1)));
    }

    // Sample text and raw OD of one well.
    void put(const char *at, const QString &sample, double rawOD)
    {
        in.samples[well(at)] = sample;
        in.rawODs[well(at)] = rawOD;
    }
    // The same sample in wells taken in order, one raw OD each.
    void put(std::initializer_list<const char *> at, const QString &sample, std::initializer_list<double> rawODs)
    {
        ASSERT_EQ(at.size(), rawODs.size());
        auto od = rawODs.begin();
        for (const char *w : at)
            put(w, sample, *od++);
    }
    void rawOD(const char *at, double od) { in.rawODs[well(at)] = od; }
    void setFlag(const char *at, qint16 flag) { in.flags[well(at)] = flag; }

    // The plate as a read leaves it: filter (text of the wavelength) and day of the read.
    // version is the plate's pin; empty for a plate read for the first time.
    void read(const QString &filter = QStringLiteral("450"),
              std::optional<QDate> dateRead = QDate::fromString(QString::fromLatin1(kReadDay), Qt::ISODate),
              const QString &version = QString(), std::optional<QDate> expDate = std::nullopt)
    {
        in.filter = filter;
        in.dateRead = dateRead ? QVariant(*dateRead) : QVariant();
        in.version = version;
        in.expDate = expDate ? QVariant(*expDate) : QVariant();
    }

    // True when the plate passed; an error that stopped the evaluation is thrown.
    bool evaluate()
    {
        out = PlateEvaluator::evaluate(in);
        if (out.failure)
            std::rethrow_exception(out.failure);
        return out.passed;
    }

    QString od(const char *at) const { return out.adjustedODs ? (*out.adjustedODs)[well(at)] : QString(); }
    const ResultCell &resultCell(const char *at) const
    {
        static const ResultCell none;
        return out.results ? (*out.results)[well(at)] : none;
    }
    QString result(const char *at) const { return resultCell(at).text; }
    qint16 flag(const char *at) const { return out.flags[well(at)]; }
    QString verdict() const { return out.validation.value_or(QString()); }
    QString infoBox() const { return out.info.value_or(QString()); }

    bool resultSheetEmpty() const
    {
        for (int k = 0; k < wells::kCount; ++k) {
            if (out.results && !(*out.results)[k].text.isEmpty())
                return false;
        }
        return true;
    }
    // The boxes the evaluation wants shown, in order.
    QList<PromptBox> boxes() const
    {
        QList<PromptBox> list;
        for (const ShownMessage &m : out.messages)
            list.append(PromptBox{m.title, m.text, m.icon});
        return list;
    }
};

// Lines joined with CR LF, as the validation texts are.
inline QString crlf(std::initializer_list<const char *> lines)
{
    QStringList list;
    for (const char *line : lines)
        list << QString::fromUtf8(line);
    return list.join(QStringLiteral("\r\n"));
}

// The kit used where the kit's own rule is not the point: "JMV v2 6615.01-1" (filter 450,
// one PC and one NC needed, %CV limit 50; passes when the PC mean is at least 1.5 times
// the NC mean and the NC mean is at most 0.15; a sample is POS at or above the PC mean).
inline const QString kJmv2 = QStringLiteral("JMV v2 6615.01-1");

// Three PC of 1.000, two NC of 0.100, and three samples: S1 above, S2 below and S3 at
// the PC mean.
template <typename Plate> void layOutJmv2Plate(Plate &p)
{
    p.put({"A1", "B1", "C1"}, QStringLiteral("PC"), {1.0, 1.0, 1.0});
    p.put({"D1", "E1"}, QStringLiteral("NC"), {0.1, 0.1});
    p.put("A2", QStringLiteral("S1"), 1.2);
    p.put("B2", QStringLiteral("S2"), 0.3);
    p.put("C2", QStringLiteral("S3"), 1.0);
}

inline const QString kJmv2Passed =
    crlf({"TEST VALIDATION PASSED", "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.000"});
