#pragma once

#include <QString>
#include <QStringList>

// The validation text that every kit writes.
namespace KitText {

// Heads of the validation text. Most kits put a blank after the failure head; a few
// put it after the pass head instead, so both spellings are here.
inline const QString kFailed = QStringLiteral("TEST VALIDATION FAILED: ");
inline const QString kPassed = QStringLiteral("TEST VALIDATION PASSED");
inline const QString kFailedBare = QStringLiteral("TEST VALIDATION FAILED");
inline const QString kPassedColon = QStringLiteral("TEST VALIDATION PASSED: ");

// Labels of the two control lines.
struct ControlLabels {
    QString nc;
    QString pc;
};
const ControlLabels &shortLabels(); // "Neg Control (AVG): ", "Pos Control (AVG): "
const ControlLabels &longLabels();  // "Negative Control (AVG): ", "Positive Control (AVG): "

// A control mean as the validation text shows it: "##,##0.000".
QString mean(double value);

// The validation text: head, then the lines before the controls (the failed rule's
// message and any extra lines), then the NC line and the PC line, then the lines after
// them; all joined with a carriage return and line feed.
QString compose(const QString &head, const QStringList &before, const ControlLabels &labels, double meanNC,
                double meanPC, const QStringList &after = {});

// "POS" or "NEG", the verdict on one sample well.
QString verdict(bool positive);

} // namespace KitText
