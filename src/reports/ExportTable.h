#pragma once

#include "core/RecordSet.h"
#include "reports/ExportRow.h"

#include <QStringList>
#include <QVariant>
#include <QVector>

#include <functional>
#include <stdexcept>

class Prompt;

// The selection can't be exported; what() is the message for the user.
class ExportError : public std::runtime_error {
public:
    explicit ExportError(const QString &what) : std::runtime_error(what.toStdString()) {}
    QString message() const { return QString::fromStdString(what()); }
};

// The rows of an export: per plate of the selection, its sample wells as the report's
// result table has them (each well alone) and, when asked, its control wells, in well
// order, each with what the plate says (kit, lot, reading, reader, technician, verdict).
//
// Plates never read have no results and are left out, with a note; a plate validated by
// an earlier version keeps that version's rules and is exported with a note saying so.
class ExportTable {
public:
    // The name of the run a plate belongs to, by its RunID.
    using RunNamer = std::function<QString(const QVariant &runID)>;

    QVector<ExportRow> rows;
    int plateCount = 0;
    // What the user should know about the plates (left out, older rules).
    QStringList notes;

    // plateName: the one plate (empty: all); groupName: the one group (empty: all), the
    // controls of a plate going with its samples of that group. Throws ExportError when
    // there is nothing to export or a plate can't be read; kit boxes go to prompt.
    static ExportTable build(const RecordSet &plates, const QString &plateName, const QString &groupName,
                             const RunNamer &runName, bool withControls, Prompt &prompt);

    static QString notReadText(const QString &plateName);
    static QString nothingText();
    static QString badVersionText(const QString &plateName, const QString &version);
    static QString olderVersionText(const QString &plateName, const QString &version);
    static QString leftOutText(int count);
};
