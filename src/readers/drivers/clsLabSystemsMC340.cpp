#include "readers/drivers/clsLabSystemsMC340.h"

#include "core/Wells.h"
#include "readers/WellValues.h"
#include "readers/drivers/LabSystemsReplies.h"

const LabSystemsModel clsLabSystemsMC340::kModel{QStringLiteral("M12"), 241, kPlateLength, 690, 1000, kPlateLength};

clsLabSystemsMC340::clsLabSystemsMC340(const ReaderEnvironment &environment) : mDialogue(environment, kModel)
{
}

void clsLabSystemsMC340::parse(RecordSet &values, const QString &data)
{
    const QString text = LabSystemsReplies::removeLineEnds(data);
    constexpr int columnSize = wells::kRows * kFieldSize;
    QString fields;
    for (int record = 0; record < wells::kCols; ++record)
        fields += text.mid(record * kRecordSize + kHeaderSize, columnSize);
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row)
            WellValues::append(values, QString(), fields.mid(col * columnSize + row * kFieldSize, kFieldSize));
    }
}
