#pragma once

#include "readers/drivers/DemoResultsReader.h"

// The Demo2 reader (model 7): reads the capture "Results2.INI" in the program's folder.
class clsDemo2Reader : public DemoResultsReader {
public:
    static inline const QString kFileName = QStringLiteral("Results2.INI");
    explicit clsDemo2Reader(const ReaderEnvironment &environment) : DemoResultsReader(environment, kFileName) {}
};
