#include "evaluation/ValidationPipeline.h"

#include "core/LegacyFormat.h"
#include "evaluation/MathLibrary.h"
#include "evaluation/clsTests.h"
#include "platform/Clock.h"
#include "platform/Prompt.h"
#include "worksheet/Workbench.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace {

const QString kPC = QStringLiteral("PC");
const QString kNC = QStringLiteral("NC");
const QString kAUX = QStringLiteral("AUX");
const QString kBLANK = QStringLiteral("BLANK");

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

// The OD sheet holds the program's own "#0.000" texts, and an evaluation reads them a few
// hundred times. Plain decimals ("-0.125", "3.001") are converted here directly, correctly
// rounded as the general conversion does; any other text takes the general road, with its
// checks and failures.
template <typename Number>
bool plainDecimal(const QString &text, Number &out)
{
    char buffer[32];
    const qsizetype n = text.size();
    if (n == 0 || n >= qsizetype(sizeof buffer))
        return false;
    bool digit = false;
    bool point = false;
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9')
            digit = true;
        else if (c == u'.' && !point)
            point = true;
        else if (!(c == u'-' && i == 0))
            return false;
        buffer[i] = char(c);
    }
    if (!digit)
        return false;
    const auto [end, error] = std::from_chars(buffer, buffer + n, out);
    return error == std::errc() && end == buffer + n;
}

// An OD sheet text as a number.
double sheetNumber(const QString &text)
{
    double value = 0;
    return plainDecimal(text, value) ? value : legacy::toDouble(text);
}

// An OD sheet text read back through a 32-bit float.
double sheetSingle(const QString &text)
{
    float value = 0;
    return plainDecimal(text, value) ? double(value) : legacy::readBackSingle(text);
}

} // namespace

// ---------------------------------------------------------------------------------------
// Control statistics

std::vector<double> ValidationPipeline::controlValues(const QString &name) const
{
    const PlateSheet &sheet = mWb.sheet();
    std::vector<double> values;
    for (int k = 0; k < wells::kCount; ++k) {
        if (sheet.textAt(PlateSheet::Samples, k) == name && sheet.inclusionFlagAt(k) != 0)
            values.push_back(sheetSingle(sheet.textAt(PlateSheet::ODs, k)));
    }
    return values;
}

double ValidationPipeline::getControlMean(const QString &name)
{
    return MathLibrary::calculateMean(controlValues(name), mWb.prompt());
}

double ValidationPipeline::getControlCV(const QString &name)
{
    return MathLibrary::calculateCV(controlValues(name), mWb.prompt());
}

void ValidationPipeline::excludeFromGrid(const QString &name, int n)
{
    PlateSheet &sheet = mWb.sheet();
    int count = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (sheet.textAt(PlateSheet::Samples, k) == name && sheet.inclusionFlagAt(k) == 1) {
            ++count;
            if (count == n)
                sheet.setInclusionFlagAt(k, 0);
        }
    }
}

double ValidationPipeline::getMeanBlank() const
{
    const PlateSheet &sheet = mWb.sheet();
    double sum = 0;
    int count = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (sheet.textAt(PlateSheet::Samples, k) == kBLANK && sheet.inclusionFlagAt(k) != 0) {
            sum += sheet.rawODAt(k);
            ++count;
        }
    }
    return count == 0 ? 0.0 : sum / count;
}

// ---------------------------------------------------------------------------------------
// The pipeline

bool ValidationPipeline::plateWasValidated() const
{
    return !mWb.plateVersion().isEmpty();
}

void ValidationPipeline::refreshEvaluation()
{
    if (plateWasValidated())
        evaluatePlate();
    else
        mWb.setValidationBoxes(QString());
}

bool ValidationPipeline::evaluatePlate()
{
    mWb.setDirty(true);
    if (!validatePlate()) {
        clearResultSheet();
        return false;
    }
    const double meanPC = getControlMean(kPC);
    const double meanNC = getControlMean(kNC);
    calculateResults(mWb.plates().text(u"TestName"), meanPC, meanNC);
    return true;
}

// The failure is shown first and the note appended after, so a kit that cannot say whether
// it is current (the Generic kit) still leaves the failure in the boxes when it fails.
void ValidationPipeline::showFailureWithPinNote(const QString &failure, const QString &testName,
                                                const QString &version)
{
    mWb.setValidationBoxes(failure);
    if (mWb.tests().isTestCurrent(testName, version))
        return;
    mWb.setValidationBoxes(failure + kCrLf + QStringLiteral("Validation and Specification from")
                           + QStringLiteral("version ") + version
                           + QStringLiteral(" is being used because this plate was read ")
                           + QStringLiteral("in Tavimetra version ") + version + QStringLiteral("."));
}

bool ValidationPipeline::validatePlate()
{
    RecordSet &plate = mWb.plates();
    const clsTests &tests = mWb.tests();
    Prompt &prompt = mWb.prompt();

    if (!plateWasValidated())
        plate.setValue(u"LastVersionValidated", kProgramVersion);
    plate.setValue(u"TestName", mWb.combo(Workbench::Tests).text());
    mWb.showPlateInfo();

    if (excludeAbnormalBlanks()) {
        prompt.message(QStringLiteral("One or more blanks had Optical Density values greater than 0.1, ")
                           + QStringLiteral("so they have been excluded from calculations."),
                       QStringLiteral("Abnormal Blanks Excluded"));
    }
    showAdjustedODs();

    if (!areODsInRange()) {
        mWb.setValidationBoxes(QStringLiteral("VALIDATION FAILED:  ODs out of expected range."));
        return false;
    }

    const QString testName = plate.text(u"TestName");
    const QString version = plate.text(u"LastVersionValidated");
    const qint16 filter = legacy::toInt16(plate.text(u"FilterUsed"));
    if (!tests.isFilterInRange(testName, version, filter)) {
        showFailureWithPinNote(QStringLiteral("VALIDATION FAILED:  Filter used is not within specified range for test."),
                               testName, version);
        return false;
    }

    const bool pcOut = excludeAbnormalControls(testName, kPC);
    const bool ncOut = excludeAbnormalControls(testName, kNC);
    const bool auxOut = excludeAbnormalControls(testName, kAUX);
    if (pcOut || ncOut || auxOut) {
        mWb.refreshTestPanel(mWb.combo(Workbench::Tests).text());
        prompt.message(QStringLiteral("One or more control samples have been detected as abnormal.") + kCrLf
                           + QStringLiteral("These controls are marked, and have been excluded from possible calculations."),
                       QStringLiteral("Abnormal Controls Detected"));
    }

    const PlateSheet &sheet = mWb.sheet();
    const qint16 pc = qint16(sheet.countSheetSamples(PlateSheet::Samples, kPC, 0));
    const qint16 nc = qint16(sheet.countSheetSamples(PlateSheet::Samples, kNC, 0));
    const qint16 aux = qint16(sheet.countSheetSamples(PlateSheet::Samples, kAUX, 0));
    if (!tests.isEnoughPC(testName, version, pc) || !tests.isEnoughNC(testName, version, nc)
        || !tests.isEnoughAux(testName, version, aux)) {
        showFailureWithPinNote(QStringLiteral("VALIDATION FAILED:  Required controls missing."), testName, version);
        return false;
    }

    if (testName == u"Generic") {
        mWb.setValidationBoxes(QStringLiteral("Generic Test:  Validation Not Required."));
        return false;
    }

    // The kit may be used up to and including the day it expires.
    const QVariant dateReadField = plate.value(u"DateRead");
    const QVariant dateRead = dateReadField.isNull() ? QVariant(mWb.clock().now().date()) : dateReadField;
    const QVariant expField = plate.value(u"ExpDate");
    if (!expField.isNull() && fieldBefore(expField, dateRead)) {
        mWb.setValidationBoxes(QStringLiteral("TEST VALIDATION FAILED: ")
                               + QStringLiteral("Expiration date for the test kit has been exceeded.") + kCrLf
                               + QStringLiteral("Expiration date for Test Kit is: ") + fieldDateText(expField));
        return false;
    }

    const double meanPC = getControlMean(kPC);
    const double meanNC = getControlMean(kNC);
    const double cvPC = getControlCV(kPC);
    const double cvNC = getControlCV(kNC);
    KitValidationText text;
    const bool passed = tests.validateTest(testName, version, meanPC, meanNC, cvPC, cvNC, text);
    mWb.setValidationBoxes(text.boxes);
    if (text.infoWritten)
        mWb.setValidationText(4, text.info);
    return passed;
}

bool ValidationPipeline::excludeAbnormalBlanks()
{
    PlateSheet &sheet = mWb.sheet();
    bool excluded = false;
    for (int k = 0; k < wells::kCount; ++k) {
        if (sheet.textAt(PlateSheet::Samples, k) == kBLANK && sheet.rawODAt(k) > 0.1 && sheet.inclusionFlagAt(k) == 1) {
            sheet.setInclusionFlagAt(k, 0);
            excluded = true;
        }
    }
    return excluded;
}

void ValidationPipeline::showAdjustedODs()
{
    PlateSheet &sheet = mWb.sheet();
    const double meanBlank = getMeanBlank();
    sheet.beginUpdate();
    for (int k = 0; k < wells::kCount; ++k)
        sheet.setTextAt(PlateSheet::ODs, k, legacy::format(sheet.rawODAt(k) - meanBlank, u"#0.000"));
    sheet.endUpdate();
}

bool ValidationPipeline::areODsInRange() const
{
    for (int k = 0; k < wells::kCount; ++k) {
        const double od = mWb.sheet().rawODAt(k);
        if (!(od >= -1.0 && od <= 3.0))
            return false;
    }
    return true;
}

bool ValidationPipeline::excludeAbnormalControls(const QString &testName, const QString &name)
{
    const PlateSheet &sheet = mWb.sheet();
    std::vector<double> values;
    double sum = 0;
    for (int k = 0; k < wells::kCount; ++k) {
        if (sheet.textAt(PlateSheet::Samples, k) == name && sheet.inclusionFlagAt(k) == 1) {
            values.push_back(sheetSingle(sheet.textAt(PlateSheet::ODs, k)));
            sum += values.back();
        }
    }
    if (values.size() < 3 || sum == 0)
        return false;

    // Remove the value farthest from the mean while the spread is above the kit's limit,
    // keeping at least two. Indices are 1-based positions in the array as it then stood.
    std::vector<double> work = values;
    std::vector<int> removed;
    Prompt &prompt = mWb.prompt();
    while (MathLibrary::calculateCV(work, prompt) > mWb.tests().getMaxVariation(testName, mWb.plateVersion())
           && work.size() >= 3) {
        const double m = MathLibrary::calculateMean(work, prompt);
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

void ValidationPipeline::calculateResults(const QString &testName, double meanPC, double meanNC)
{
    PlateSheet &sheet = mWb.sheet();
    const QString version = mWb.plateVersion();
    for (int k = 0; k < wells::kCount; ++k) {
        const int row = wells::row(k), col = wells::col(k);
        const QString sample = sheet.textAt(PlateSheet::Samples, k);
        if (!isControlName(sample) && !sample.isEmpty()) {
            const float od = static_cast<float>(sheetNumber(sheet.textAt(PlateSheet::ODs, k)));
            const QString result = mWb.tests().mathResults(testName, version, od, meanPC, meanNC);
            if (result == u"POS")
                sheet.setStyle(PlateSheet::Results, row, col, true, false, 255);
            else if (result == u"SUS")
                sheet.setStyle(PlateSheet::Results, row, col, true, true, 65280);
            else
                sheet.setStyle(PlateSheet::Results, row, col, false, false, 0);
            sheet.setTextAt(PlateSheet::Results, k, result);
        } else {
            sheet.setStyle(PlateSheet::Results, row, col, false, false, 0);
            sheet.setTextAt(PlateSheet::Results, k, sample);
        }
    }
}

bool ValidationPipeline::confirmControlsBeforeRead()
{
    const QString testName = mWb.combo(Workbench::Tests).text();
    const QString version = mWb.plateVersion();
    const clsTests &tests = mWb.tests();
    const PlateSheet &sheet = mWb.sheet();
    const QString tail = QStringLiteral(" for test validation and for test results to be calculated.  Optical densities "
                                        "can still be read, but validation will fail and calculations will not be "
                                        "performed.")
                         + kCrLf + kCrLf + QStringLiteral("Do you want to continue?");

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
        const qint16 count = qint16(sheet.countSheetSamples(PlateSheet::Samples, need.name, 0));
        if ((tests.*need.enough)(testName, version, count))
            continue;
        const QString text = QStringLiteral("You must have at least ")
                             + QString::number((tests.*need.minimum)(testName, version))
                             + QString::fromLatin1(need.words) + tail;
        if (mWb.prompt().ask(text, QStringLiteral("Essential Controls Missing"), MsgButtons::YesNo,
                             MsgIcon::Exclamation)
            != MsgAnswer::Yes)
            return false;
    }

    const qint16 filter = qint16(mWb.combo(Workbench::Filters).itemData().toInt());
    if (!tests.isFilterInRange(testName, version, filter)) {
        const QString text = QStringLiteral("The selected filter is invalid for this test. Optical densities can still "
                                            "be read, but validation will fail and calculations will not be performed.")
                             + kCrLf + kCrLf + QStringLiteral("Do you want to continue?");
        if (mWb.prompt().ask(text, QStringLiteral("Invalid Filter"), MsgButtons::YesNo, MsgIcon::None)
            != MsgAnswer::Yes)
            return false;
    }
    return true;
}

void ValidationPipeline::cmdReCheckControls()
{
    if (!plateWasValidated())
        return;
    for (int k = 0; k < wells::kCount; ++k)
        mWb.sheet().setInclusionFlagAt(k, 1);
    refreshEvaluation();
}

void ValidationPipeline::clearResults()
{
    mWb.sheet().clearSheet(PlateSheet::ODs);
    mWb.sheet().clearSheet(PlateSheet::Results);
    mWb.setValidationBoxes(QString());
}

void ValidationPipeline::clearResultSheet()
{
    mWb.sheet().clearSheet(PlateSheet::Results);
}
