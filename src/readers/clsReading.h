#pragma once

#include "core/RecordSet.h"
#include "readers/ReaderDriver.h"

#include <QtGlobal>

#include <memory>

// The only place that knows which reader models exist: the catalogue of 26 models, the
// driver of each, and the filters a new reader of a model starts with. The run database
// stores only the user's readers, which point at a catalogue row by ReaderModelID.
class clsReading {
public:
    static constexpr int kModelCount = 26;

    explicit clsReading(const ReaderEnvironment &environment);
    ~clsReading();

    // Makes a new driver for the model and keeps it in currentReader. False for a model
    // without a driver, and currentReader stays as it was.
    bool SetReader(qint32 modelId);

    // The filters a new reader of the model starts with (fields FilterNo, FilterValue;
    // a value of 0 means the user has yet to say). The cursor is left on the last row added.
    // An unknown model gives an empty set.
    static RecordSet getDefaultFilters(qint16 modelId);

    // The catalogue (fields ReaderModelID, ReaderModelName, DefaultSettings,
    // DefaultFlowControl, DefaultFilterNo): all 26 models for id 0, the one row for ids 1 to
    // 26, the cursor on the first row. Unlike getDefaultFilters, an id outside 0 to 26
    // doesn't give an empty set: it throws RecordSetError, as moving to the first row of
    // an empty set does. Callers rely on the difference.
    static RecordSet getReaderModelInfo(qint16 modelId);

    // The driver of the last successful SetReader.
    std::unique_ptr<ReaderDriver> currentReader;

private:
    std::unique_ptr<ReaderDriver> makeDriver(qint32 modelId) const;

    ReaderEnvironment mEnvironment;
};
