#include "evaluation/PlateEvaluator.h"

#include "core/LegacyFormat.h"
#include "evaluation/MathLibrary.h"
#include "evaluation/clsTests.h"
#include "platform/Prompt.h"

#include <cmath>

namespace {

const QString kPC = QStringLiteral("PC");
const QString kNC = QStringLiteral("NC");
const QString kAUX = QStringLiteral("AUX");
const QString kBLANK = QStringLiteral("BLANK");
const QString kPOS = QStringLiteral("POS");
const QString kSUS = QStringLiteral("SUS");

// isControlName, against texts of known length: a sample's text is compared with the four
// names for every well.
bool isControlSample(const QString &text)
{
    return text == kPC || text == kNC || text == kAUX || text == kBLANK;
}

// A date field of the plate record as a point in time: a date alone is its midnight.
QDateTime fieldDateTime(const QVariant &field)
{
    if (field.typeId() == QMetaType::QDateTime)
        return field.toDateTime();
    return field.toDate().startOfDay();
}

// a before b, for two date fields of the plate record (the usual case: two dates).
bool fieldBefore(const QVariant &a, const QVariant &b)
{
    if (a.typeId() == QMetaType::QDate && b.typeId() == QMetaType::QDate)
        return a.toDate() < b.toDate();
    return fieldDateTime(a) < fieldDateTime(b);
}

QString fieldDateText(const QVariant &field)
{
    if (field.typeId() == QMetaType::QDate)
        return legacy::defaultDate(field.toDate());
    return legacy::defaultDateTime(fieldDateTime(field));
}

char16_t asciiUpper(char16_t c)
{
    return c >= u'a' && c <= u'z' ? char16_t(c - (u'a' - u'A')) : c;
}

// text.toUpper() == upper, without making the upper-case copy for a text of ASCII
// characters (sample names, control names): there each letter has one capital of its own.
// An ASCII first character is the first of the upper-case text, so most samples are told
// apart from a control name by it alone.
bool upperCaseEquals(const QString &text, const QString &upper)
{
    if (!text.isEmpty() && text[0].unicode() < 0x80 &&
        (upper.isEmpty() || asciiUpper(text[0].unicode()) != upper[0].unicode()))
        return false;
    for (const QChar c : text) {
        if (c.unicode() >= 0x80)
            return text.toUpper() == upper;
    }
    if (text.size() != upper.size())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (asciiUpper(text[i].unicode()) != upper[i].unicode())
            return false;
    }
    return true;
}

// An adjusted OD text as a number.
double sheetNumber(const QString &text)
{
    double value = 0;
    return legacy::readPlainDecimal(text, value) ? value : legacy::toDouble(text);
}

// An adjusted OD text read back through a 32-bit float.
double sheetSingle(const QString &text)
{
    float value = 0;
    return legacy::readPlainDecimal(text, value) ? double(value) : legacy::readBackSingle(text);
}

} // namespace

PlateEvaluator::PlateEvaluator(const PlateInput &plate, PlateEvaluation &out)
    : mPlate(plate), mOut(out), mLog(out.messages), mTests(mLog)
{
}

PlateEvaluation PlateEvaluator::evaluate(const PlateInput &plate)
{
    PlateEvaluation out;
    PlateEvaluator evaluator(plate, out);
    try {
        evaluator.run();
    } catch (...) {
        out.failure = std::current_exception();
    }
    return out;
}

void PlateEvaluator::run()
{
    mOut.flags = mPlate.flags;
    mOut.version = mPlate.version.isEmpty() ? kProgramVersion : mPlate.version;
    mODs = {};
    const bool passed = validatePlate();
    if (!passed) {
        mOut.results.emplace();
        return;
    }
    // The control means the kit's rule passed the plate on: no flag has changed since.
    calculateResults(mMeanPC, mMeanNC);
    mOut.passed = true;
}

// ---------------------------------------------------------------------------------------
// Control statistics

qint16 PlateEvaluator::countControls(const PlateInput &plate, const std::array<qint16, wells::kCount> &flags,
                                     const QString &name)
{
    const QString wanted = name.toUpper();
    int count = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (flags[k] != 0 && upperCaseEquals(plate.samples[k], wanted))
            ++count;
    }
    return qint16(count);
}

// The kit is looked up at the first question put to it, where a plate of an unknown test
// stops with its boxes, and then asked everything else.
const TestKit &PlateEvaluator::kit()
{
    if (!mKit)
        mKit = mTests.getTestClass(mPlate.testName, mOut.version);
    return *mKit;
}

// From the adjusted ODs as they are shown, read back through 32-bit floats. Wells count
// when their sample text equals the name exactly and their flag isn't 0.
std::vector<double> PlateEvaluator::controlValues(const QString &name) const
{
    std::vector<double> values;
    for (int k = 0; k < wells::kCount; ++k) {
        if (mPlate.samples[k] == name && mOut.flags[k] != 0)
            values.push_back(sheetSingle(mODs[k]));
    }
    return values;
}

// Sets to 0 the flag of the n-th well (from 1) of that name whose flag is exactly 1.
void PlateEvaluator::excludeFromGrid(const QString &name, int n)
{
    int count = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (mPlate.samples[k] == name && mOut.flags[k] == 1) {
            ++count;
            if (count == n)
                mOut.flags[k] = 0;
        }
    }
}

// Mean raw OD of the blanks still counted; 0 when there are none.
double PlateEvaluator::meanBlank() const
{
    double sum = 0;
    int count = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (mPlate.samples[k] == kBLANK && mOut.flags[k] != 0) {
            sum += mPlate.rawODs[k];
            ++count;
        }
    }
    return count == 0 ? 0.0 : sum / count;
}

// ---------------------------------------------------------------------------------------
// The steps

// The failure is shown first and the note appended after, so a kit that cannot say whether
// it is current (the Generic kit) still leaves the failure in the boxes when it fails.
void PlateEvaluator::failWithPinNote(const QString &failure)
{
    mOut.validation = failure;
    if (kit().isTestCurrent())
        return;
    mOut.validation = failure + kCrLf + QStringLiteral("Validation and Specification from") +
                      QStringLiteral("version ") + mOut.version +
                      QStringLiteral(" is being used because this plate was read ") +
                      QStringLiteral("in Tavimetra version ") + mOut.version + QStringLiteral(".");
}

bool PlateEvaluator::areODsInRange(const PlateInput &plate)
{
    for (double od : plate.rawODs) {
        if (!(od >= -1.0 && od <= 3.0))
            return false;
    }
    return true;
}

bool PlateEvaluator::validatePlate()
{
    const QString &testName = mPlate.testName;
    const QString &version = mOut.version;

    excludeAbnormalBlanks();

    const double blank = meanBlank();
    for (int k = 0; k < wells::kCount; ++k)
        mODs[k] = legacy::format(mPlate.rawODs[k] - blank, u"#0.000");
    mOut.adjustedODs = mODs;

    if (!areODsInRange(mPlate)) {
        mOut.validation = QStringLiteral("VALIDATION FAILED:  ODs out of expected range.");
        return false;
    }

    const qint16 filter = legacy::toInt16(mPlate.filter);
    if (!(filter >= kit().getMinFilter() && filter <= kit().getMaxFilter())) {
        failWithPinNote(QStringLiteral("VALIDATION FAILED:  Filter used is not within specified range for test."));
        return false;
    }

    const bool pcOut = excludeAbnormalControls(kPC);
    const bool ncOut = excludeAbnormalControls(kNC);
    const bool auxOut = excludeAbnormalControls(kAUX);
    if (pcOut || ncOut || auxOut) {
        mOut.controlsExcluded = true;
        mLog.message(
            QStringLiteral("One or more control samples have been detected as abnormal.") + kCrLf +
                QStringLiteral("These controls are marked, and have been excluded from possible calculations."),
            QStringLiteral("Abnormal Controls Detected"), MsgIcon::None);
    }

    if (countControls(mPlate, mOut.flags, kPC) < kit().getMinimumPC() ||
        countControls(mPlate, mOut.flags, kNC) < kit().getMinimumNC() ||
        countControls(mPlate, mOut.flags, kAUX) < kit().getMinimumAux()) {
        failWithPinNote(QStringLiteral("VALIDATION FAILED:  Required controls missing."));
        return false;
    }

    if (testName == u"Generic") {
        mOut.validation = QStringLiteral("Generic Test:  Validation Not Required.");
        return false;
    }

    // The kit may be used up to and including the day it expires.
    const QVariant dateRead = mPlate.dateRead.isNull() ? QVariant(mPlate.today) : mPlate.dateRead;
    const QVariant &expiry = mPlate.expDate;
    if (!expiry.isNull() && fieldBefore(expiry, dateRead)) {
        mOut.validation = QStringLiteral("TEST VALIDATION FAILED: ") +
                          QStringLiteral("Expiration date for the test kit has been exceeded.") + kCrLf +
                          QStringLiteral("Expiration date for Test Kit is: ") + fieldDateText(expiry);
        return false;
    }

    const std::vector<double> pc = controlValues(kPC);
    const std::vector<double> nc = controlValues(kNC);
    mMeanPC = MathLibrary::calculateMean(pc, mLog);
    mMeanNC = MathLibrary::calculateMean(nc, mLog);
    const double cvPC = MathLibrary::calculateCV(pc, mLog);
    const double cvNC = MathLibrary::calculateCV(nc, mLog);
    KitValidationText text;
    const bool passed = kit().validateTest(mMeanPC, mMeanNC, cvPC, cvNC, version, text);
    mOut.validation = text.boxes;
    if (text.infoWritten)
        mOut.info = text.info;
    return passed;
}

void PlateEvaluator::excludeAbnormalBlanks()
{
    bool excluded = false;
    for (int k = 0; k < wells::kCount; ++k) {
        if (mPlate.samples[k] == kBLANK && mPlate.rawODs[k] > 0.1 && mOut.flags[k] == 1) {
            mOut.flags[k] = 0;
            excluded = true;
        }
    }
    if (excluded) {
        mLog.message(QStringLiteral("One or more blanks had Optical Density values greater than 0.1, ") +
                         QStringLiteral("so they have been excluded from calculations."),
                     QStringLiteral("Abnormal Blanks Excluded"), MsgIcon::None);
    }
}

bool PlateEvaluator::excludeAbnormalControls(const QString &name)
{
    std::vector<double> values;
    double sum = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (mPlate.samples[k] == name && mOut.flags[k] == 1) {
            values.push_back(sheetSingle(mODs[k]));
            sum += values.back();
        }
    }
    if (values.size() < 3 || sum == 0)
        return false;

    // Remove the value farthest from the mean while the spread is above the kit's limit,
    // keeping at least two. Indices are 1-based positions in the array as it then stood.
    const qint16 maxVariation = kit().getMaxVariation();
    std::vector<double> work = values;
    std::vector<int> removed;
    while (MathLibrary::calculateCV(work, mLog) > maxVariation && work.size() >= 3) {
        const double m = MathLibrary::calculateMean(work, mLog);
        int farthest = 1;
        double deviation = 0;
        for (int i = 1; i <= int(work.size()); ++i) {
            if (std::fabs(work[i - 1] - m) > deviation) {
                deviation = std::fabs(work[i - 1] - m);
                farthest = i;
            }
        }
        work = MathLibrary::removeElement(work, farthest - 1);
        removed.push_back(farthest);
    }

    // Back to positions in the collected list: each earlier removal at or below the index
    // shifts it one on.
    std::vector<qint16> positions;
    for (int index : removed) {
        std::vector<qint16> sorted = positions;
        MathLibrary::sortIntegers(sorted);
        int position = index;
        for (qint16 p : sorted) {
            if (p <= position)
                ++position;
        }
        positions.push_back(qint16(position));
    }
    MathLibrary::sortIntegers(positions);
    for (int k = 1; k <= int(positions.size()); ++k)
        excludeFromGrid(name, positions[k - 1] - (k - 1));
    return !removed.empty();
}

void PlateEvaluator::calculateResults(double meanPC, double meanNC)
{
    const TestKit &kit = this->kit();
    std::array<ResultCell, wells::kCount> &results = mOut.results.emplace();
    for (int k = 0; k < wells::kCount; ++k) {
        const QString &sample = mPlate.samples[k];
        ResultCell &cell = results[k];
        if (!sample.isEmpty() && !isControlSample(sample)) {
            const float od = static_cast<float>(sheetNumber(mODs[k]));
            cell.text = kit.mathResults(od, meanPC, meanNC);
            if (cell.text == kPOS)
                cell = {cell.text, true, false, 255};
            else if (cell.text == kSUS)
                cell = {cell.text, true, true, 65280};
        } else {
            cell.text = sample;
        }
    }
}

bool PlateEvaluator::confirmControlsBeforeRead(const PlateInput &plate, qint16 filter, Prompt &prompt)
{
    const clsTests tests(prompt);
    const QString &testName = plate.testName;
    const QString &version = plate.version;
    const QString tail =
        QStringLiteral(" for test validation and for test results to be calculated.  Optical densities "
                       "can still be read, but validation will fail and calculations will not be "
                       "performed.") +
        kCrLf + kCrLf + QStringLiteral("Do you want to continue?");

    struct Need {
        const QString &name;
        bool (clsTests::*enough)(const QString &, const QString &, qint16) const;
        qint16 (clsTests::*minimum)(const QString &, const QString &) const;
        const char *words;
    };
    const Need needs[] = {
        {kPC, &clsTests::isEnoughPC, &clsTests::getMinimumPC, " positive controls"},
        {kNC, &clsTests::isEnoughNC, &clsTests::getMinimumNC, " negative controls"},
        {kAUX, &clsTests::isEnoughAux, &clsTests::getMinimumAux, " auxillary controls"},
    };
    for (const Need &need : needs) {
        if ((tests.*need.enough)(testName, version, countControls(plate, plate.flags, need.name)))
            continue;
        const QString text = QStringLiteral("You must have at least ") +
                             QString::number((tests.*need.minimum)(testName, version)) +
                             QString::fromLatin1(need.words) + tail;
        if (prompt.ask(text, QStringLiteral("Essential Controls Missing"), MsgButtons::YesNo, MsgIcon::Exclamation) !=
            MsgAnswer::Yes)
            return false;
    }

    if (!tests.isFilterInRange(testName, version, filter)) {
        const QString text =
            QStringLiteral("The selected filter is invalid for this test. Optical densities can still "
                           "be read, but validation will fail and calculations will not be performed.") +
            kCrLf + kCrLf + QStringLiteral("Do you want to continue?");
        if (prompt.ask(text, QStringLiteral("Invalid Filter"), MsgButtons::YesNo, MsgIcon::None) != MsgAnswer::Yes)
            return false;
    }
    return true;
}
