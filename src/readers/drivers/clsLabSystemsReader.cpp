#include "readers/drivers/clsLabSystemsReader.h"

#include "core/Wells.h"
#include "readers/WellValues.h"

const LabSystemsModel clsLabSystemsReader::kModel{QStringLiteral("P"), 121, 576, 500, 0, 576};

clsLabSystemsReader::clsLabSystemsReader(const ReaderEnvironment &environment) : mDialogue(environment, kModel)
{
}

void clsLabSystemsReader::parse(RecordSet &values, const QString &data)
{
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row)
            WellValues::append(values, QString(), data.mid(row * kRowSize + col * kFieldSize, kFieldSize));
    }
}
