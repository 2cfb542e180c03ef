// layout --from FILE [--test NAME]: the plate a sample list or grid would lay out, as
// PLATES.json of one plate ("Plate #1" of run 1), for evaluate, report or save-run. Groups
// are written as the file names them; the program asks about new groups when it lays the
// file out, the command line does not.
#include "cli/CliCommand.h"

#include "core/WellList.h"
#include "evaluation/clsTests.h"
#include "reports/PlatesJsonWriter.h"
#include "store/clsPlates.h"
#include "worksheet/LayoutReader.h"

namespace {

int layout(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, QStringLiteral("layout: ") + options.problem());
    const QString path = options.value(QStringLiteral("from"));
    if (path.isEmpty() || !options.positional().isEmpty())
        return cliError(context, QStringLiteral("layout: usage: layout --from FILE [--test NAME]"));
    const QString test = options.value(QStringLiteral("test"));
    if (options.has(QStringLiteral("test")) && !clsTests::allTestNames().contains(test))
        return cliError(context, QStringLiteral("layout: unknown test \"%1\"; the tests are: %2")
                                     .arg(test, clsTests::allTestNames().join(QStringLiteral(", "))));
    const LayoutReading reading = LayoutReader::readFile(path);
    if (!reading.layout)
        return cliError(context, QStringLiteral("layout: %1: %2").arg(path, reading.error));

    RecordSet plates = clsPlates::getNewPlateRecordSet(1);
    plates.setValue(u"Groups", joinWellList(reading.layout->groups));
    plates.setValue(u"Samples", joinWellList(reading.layout->samples));
    plates.setValue(u"TestName", test);
    plates.setValue(u"CurrentTest", test);
    printJson(context, PlatesJsonWriter::toJson(plates));
    return 0;
}

const CliCommandRegistration registration("layout", "layout --from FILE.csv|FILE.xlsx [--test NAME]", layout);

} // namespace
