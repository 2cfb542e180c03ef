#pragma once

#include "WorkbenchFixture.h"

#include "evaluation/ValidationPipeline.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QString>

#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>

// A plate on the main window's work in hand, laid out and read the way the technician and
// the reader would leave it, for driving the validation pipeline.
//
//     PlateOnBench p(QStringLiteral("JMV v2 6615.01-1"));
//     p.put("A1", "PC", 1.0);
//     p.read();              // stamps filter, read date ... as a read does
//     p.evaluate();
//     EXPECT_EQ(p.result("A2"), "POS");
class PlateOnBench {
public:
    static constexpr const char *kReadDay = "2026-11-23"; // the fake clock's day

    explicit PlateOnBench(const QString &testName) : wb(f.start()), prompt(f.prompt)
    {
        selectTest(testName);
    }

    WorkbenchFixture f;
    Workbench &wb;
    FakePrompt &prompt;

    // "A1" .. "H12" to the well index (column by column).
    static int well(const char *name)
    {
        const std::string s(name);
        if (s.size() < 2 || s[0] < 'A' || s[0] > 'H')
            throw std::invalid_argument("bad well " + s);
        const int row = s[0] - 'A' + 1;
        const int col = std::stoi(s.substr(1));
        return wells::index(row, col);
    }

    void selectTest(const QString &testName)
    {
        const int index = wb.combo(Workbench::Tests).findText(testName);
        ASSERT_GE(index, 0) << testName.toStdString();
        wb.selectComboIndex(Workbench::Tests, index);
    }

    // Sample text and raw OD of one well.
    void put(const char *at, const QString &sample, double rawOD)
    {
        wb.sheet().setTextAt(PlateSheet::Samples, well(at), sample);
        wb.sheet().setRawODAt(well(at), rawOD);
    }
    // The same sample in wells taken in order, one raw OD each.
    void put(std::initializer_list<const char *> at, const QString &sample, std::initializer_list<double> rawODs)
    {
        ASSERT_EQ(at.size(), rawODs.size());
        auto od = rawODs.begin();
        for (const char *w : at)
            put(w, sample, *od++);
    }
    void rawOD(const char *at, double od) { wb.sheet().setRawODAt(well(at), od); }
    void setFlag(const char *at, qint16 flag) { wb.sheet().setInclusionFlagAt(well(at), flag); }

    // The record as a read leaves it: reader, filter (text of the wavelength), time and
    // date of the read. version is the plate's pin; empty for a plate read for the first time.
    void read(const QString &filter = QStringLiteral("450"),
              std::optional<QDate> dateRead = QDate::fromString(QString::fromLatin1(kReadDay), Qt::ISODate),
              const QString &version = QString(), std::optional<QDate> expDate = std::nullopt)
    {
        RecordSet &plate = wb.plates();
        plate.setValue(u"TestName", wb.combo(Workbench::Tests).text());
        plate.setValue(u"ReaderUsed", QStringLiteral("Demo"));
        plate.setValue(u"FilterUsed", filter);
        plate.setValue(u"TimeRead", QTime(9, 30));
        plate.setValue(u"DateRead", dateRead ? QVariant(*dateRead) : QVariant());
        plate.setValue(u"LastVersionValidated", version);
        plate.setValue(u"ExpDate", expDate ? QVariant(*expDate) : QVariant());
    }

    bool evaluate() { return ValidationPipeline(wb).evaluatePlate(); }

    QString od(const char *at) const { return wb.sheet().textAt(PlateSheet::ODs, well(at)); }
    QString result(const char *at) const { return wb.sheet().textAt(PlateSheet::Results, well(at)); }
    const SheetCell &resultCell(const char *at) const
    {
        const int k = well(at);
        return wb.sheet().cell(PlateSheet::Results, wells::row(k), wells::col(k));
    }
    qint16 flag(const char *at) const { return wb.sheet().inclusionFlagAt(well(at)); }
    bool marked(const char *at) const
    {
        const int k = well(at);
        return wb.sheet().isMarked(wells::row(k), wells::col(k));
    }

    // The text of the four validation boxes beside the sheets, which always agree.
    QString verdict() const
    {
        for (int box = 1; box < 4; ++box)
            EXPECT_EQ(wb.validationText(box), wb.validationText(0)) << "box " << box;
        return wb.validationText(0);
    }
    QString infoBox() const { return wb.validationText(4); }

    bool resultSheetEmpty() const
    {
        for (int k = 0; k < wells::kCount; ++k) {
            if (!wb.sheet().textAt(PlateSheet::Results, k).isEmpty())
                return false;
        }
        return true;
    }
    QStringList boxTitles() const
    {
        QStringList titles;
        for (const PromptBox &box : prompt.boxes())
            titles << box.title;
        return titles;
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
inline void layOutJmv2Plate(PlateOnBench &p)
{
    p.put({"A1", "B1", "C1"}, QStringLiteral("PC"), {1.0, 1.0, 1.0});
    p.put({"D1", "E1"}, QStringLiteral("NC"), {0.1, 0.1});
    p.put("A2", QStringLiteral("S1"), 1.2);
    p.put("B2", QStringLiteral("S2"), 0.3);
    p.put("C2", QStringLiteral("S3"), 1.0);
}

inline const QString kJmv2Passed =
    crlf({"TEST VALIDATION PASSED", "Neg Control (AVG): 0.100", "Pos Control (AVG): 1.000"});
