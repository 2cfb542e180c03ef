// tavimetra-cli read: one read of a plate through a reader driver, without a screen.
//
//   tavimetra-cli read --model ID --port PATH --settings "9600,N,8,1" [--flow N]
//                      --filter-no N --filter-value NM [--folder DIR] [--simulated-autoreader]
//
// Prints {"ok": bool, "values": [96 texts in well order A1, B1 ... H12], "messages": [...]}:
// the values as the driver's fillReaderValues gives them (none when the read failed) and
// the texts of the boxes the driver showed. A question is answered with its last button
// (Cancel, No), as nobody is there to answer it. The demo models read their file from the
// program's folder (--folder, else the user's program folder, else the installed data
// folder) and ignore --port. The Bio-Tek models (5, 9 to 26) go through Bio-Tek's control,
// which is not installed here: the read fails with a message that says so, unless
// --simulated-autoreader puts a simulated Bio-Tek reader behind them (then --port is a port
// number for the control). Exit code 0 for a good read, 1 for a failed one, 2 for bad
// options.

#include "cli/CliCommand.h"

#include "platform/Clock.h"
#include "platform/EventLoopSleeper.h"
#include "platform/Prompt.h"
#include "platform/QtSerialPort.h"
#include "platform/SerialLineSettings.h"
#include "platform/SerialPortMap.h"
#include "readers/WellValues.h"
#include "readers/clsReading.h"
#include "SimulatedBioTekReader.h"
#include "store/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <exception>

namespace {

// Keeps the boxes' texts for the output.
class RecordingPrompt : public Prompt {
public:
    QStringList texts;
    void message(const QString &text, const QString &, MsgIcon) override { texts << text; }
    MsgAnswer ask(const QString &text, const QString &, MsgButtons buttons, MsgIcon) override
    {
        texts << text;
        switch (buttons) {
        case MsgButtons::Ok: return MsgAnswer::Ok;
        case MsgButtons::YesNo: return MsgAnswer::No;
        default: return MsgAnswer::Cancel;
        }
    }
};

QString demoFolder(const QString &given, const QString &fileName)
{
    if (!given.isEmpty())
        return given;
    const QString standard = ProgramFolder::standard().path();
    if (QFileInfo(QDir(standard).filePath(fileName)).isFile())
        return standard;
    return ProgramFolder::installedDataDir();
}

int readCommand(const QStringList &args, CliContext &context)
{
    const QString simulatedFlag = QStringLiteral("simulated-autoreader");
    const CliOptions options(args, {simulatedFlag});
    if (!options.problem().isEmpty())
        return cliError(context, options.problem());
    for (const char *required : {"model", "filter-no", "filter-value"}) {
        if (!options.has(QString::fromLatin1(required)))
            return cliError(context, QStringLiteral("read needs --%1").arg(QString::fromLatin1(required)));
    }
    bool ok = false;
    const int model = options.value(QStringLiteral("model")).toInt(&ok);
    if (!ok)
        return cliError(
            context, QStringLiteral("--model must be a reader model number from 1 to %1").arg(clsReading::kModelCount));
    const bool demo = model == 6 || model == 7;
    const bool bioTek = model == 5 || (model >= 9 && model <= clsReading::kModelCount);
    const QString port = options.value(QStringLiteral("port"));
    if (!demo && !(bioTek && !options.has(simulatedFlag)) && port.isEmpty())
        return cliError(context, QStringLiteral("read needs --port for a serial reader"));
    const QString settings = options.value(QStringLiteral("settings"), QStringLiteral("9600,N,8,1"));
    if (!SerialLineSettings::parse(settings))
        return cliError(context, QStringLiteral("--settings must read like \"9600,N,8,1\""));
    const int flow = options.value(QStringLiteral("flow"), QStringLiteral("0")).toInt(&ok);
    if (!ok || flow < 0 || flow > 3)
        return cliError(context, QStringLiteral("--flow must be 0 (none), 1 (Xon/Xoff), 2 (RTS/CTS) or 3 (both)"));

    RecordingPrompt prompt;
    EventLoopSleeper sleeper;
    const QString fileName = model == 7 ? QStringLiteral("Results2.INI") : QStringLiteral("Results.INI");
    const QString folder = demo ? demoFolder(options.value(QStringLiteral("folder")), fileName)
                                : options.value(QStringLiteral("folder"), ProgramFolder::standard().path());
    SimulatedBioTekReader simulatedBioTek;
    simulatedBioTek.readyAfterMs = 300;
    AutoreaderFactory *autoreaders = options.has(simulatedFlag) ? &simulatedBioTek : nullptr;
    clsReading catalogue(ReaderEnvironment{prompt, sleeper, folder, autoreaders});
    if (!catalogue.SetReader(model))
        return cliError(context, QStringLiteral("There is no device driver present for reader model %1.").arg(model));

    QtSerialPort comm(folder);
    if (!demo) {
        const SerialPortMap map = SerialPortMap::load(folder);
        bool numeric = false;
        const int number = port.toInt(&numeric);
        if (numeric) {
            comm.setCommPort(number);
        } else {
            comm.setCommPort(map.numberOf(port));
            comm.setPortName(port);
        }
    }
    comm.setSettings(settings);
    comm.setHandshaking(flow);

    QJsonArray values;
    bool good = false;
    try {
        QString data;
        good = catalogue.currentReader->readData(comm, options.value(QStringLiteral("filter-no")),
                                                 options.value(QStringLiteral("filter-value")), data);
        if (good) {
            RecordSet wells = WellValues::create();
            catalogue.currentReader->fillReaderValues(wells, data);
            for (wells.moveFirst(); !wells.eof(); wells.moveNext())
                values.append(wells.text(u"Val"));
        }
    } catch (const std::exception &e) {
        good = false;
        values = QJsonArray();
        prompt.texts << QStringLiteral("Critical Error while reading plate.  Please contact Qorn.") + kCrLf +
                            QStringLiteral("Description: ") + QString::fromUtf8(e.what());
    }
    QJsonObject result;
    result.insert(QStringLiteral("ok"), good);
    result.insert(QStringLiteral("values"), values);
    result.insert(QStringLiteral("messages"), QJsonArray::fromStringList(prompt.texts));
    printJson(context, result);
    return good ? 0 : 1;
}

const CliCommandRegistration registration(
    "read",
    "read --model ID --port PATH --settings \"9600,N,8,1\" [--flow N] --filter-no N --filter-value NM [--folder DIR] "
    "[--simulated-autoreader]",
    readCommand);

} // namespace
