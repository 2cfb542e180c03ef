#include "SimulatedBioTekReader.h"

#include <QTimer>

namespace {

constexpr int kDone = 11;
constexpr int kResultsDone = 1017;
constexpr int kFailed = 0;

} // namespace

SimulatedBioTekReader::SimulatedBioTekReader()
{
    // A plate with a rising OD along the rows and down the columns.
    for (int row = 0; row < 8; ++row) {
        for (int col = 0; col < 12; ++col)
            plate << 0.041 + 0.013 * row + 0.157 * col;
    }
}

std::unique_ptr<Autoreader> SimulatedBioTekReader::create()
{
    ++controlsMade;
    return std::make_unique<SimulatedAutoreader>(*this);
}

QList<int> SimulatedBioTekReader::dispatchNumbers() const
{
    QList<int> numbers;
    for (const Call &c : calls)
        numbers << c.dispatch;
    return numbers;
}

int SimulatedBioTekReader::answer(int dispatch, QVariantList &arguments)
{
    calls.append({dispatch, arguments});
    if (statusOf.contains(dispatch))
        return statusOf.value(dispatch);
    const int first = arguments.value(0).toInt();
    switch (dispatch) {
    case 2: return first >= 1 && first <= 19 ? kDone : kFailed;
    case 54: return first > 0 ? kDone : kFailed;
    case 17: lineSet = arguments; return kDone;
    case 18: return lineSet == line ? kDone : kFailed;
    case 75: return filters.contains(first) ? kDone : kFailed;
    case 53:
    case 91:
    case 51:
    case 52:
    case 83: return kDone;
    case 121: measured = true; return kDone;
    case 80: {
        if (!measured)
            return kFailed;
        QVariantList values;
        for (double v : plate)
            values << v;
        if (arguments.size() > 3)
            arguments[3] = values;
        if (!arguments.isEmpty())
            arguments[0] = readyStatus;
        return kResultsDone;
    }
    default: return kFailed;
    }
}

int SimulatedAutoreader::call(int dispatchNumber, QVariantList &arguments)
{
    const int status = mReader.answer(dispatchNumber, arguments);
    if (dispatchNumber == 121 && status == kDone) {
        const qint16 readyStatus = mReader.readyStatus;
        QTimer::singleShot(mReader.readyAfterMs, &mEvents, [this, readyStatus] {
            if (mHandler)
                mHandler(readyStatus);
        });
    }
    return status;
}
