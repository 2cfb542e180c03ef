#pragma once

#include "readers/drivers/DemoResultsReader.h"

// The Demo reader (model 6): reads the capture "Results.INI" in the program's folder.
class clsDemoReader : public DemoResultsReader {
public:
    static inline const QString kFileName = QStringLiteral("Results.INI");
    explicit clsDemoReader(const ReaderEnvironment &environment) : DemoResultsReader(environment, kFileName) {}
};
