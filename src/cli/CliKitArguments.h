#pragma once

#include "core/LegacyFormat.h"
#include "evaluation/clsTests.h"

#include <QString>

// Checks the test name and version given to a kit command before any question is asked,
// so that an unknown test is told plainly instead of through the program's two boxes.
// Returns an error text, empty when both are usable.
inline QString checkKitArguments(const QString &name, const QString &version)
{
    if (!clsTests::allTestNames().contains(name))
        return QStringLiteral("unknown test \"%1\"; the tests are: %2")
            .arg(name, clsTests::allTestNames().join(QStringLiteral(", ")));
    try {
        getVersionMinor(version);
    } catch (const ConversionError &) {
        return QStringLiteral("version \"%1\" is not a version text such as \"1.5.4\"").arg(version);
    }
    return QString();
}
