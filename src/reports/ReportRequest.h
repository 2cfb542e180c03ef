#pragma once

#include <QJsonArray>
#include <QString>
#include <QStringList>

#include <optional>

class RecordSet;

// A report asked for on the command line:
//   report --style client|analytical --plates PLATES.json --run-name NAME [--separate-groups]
//          [--replicates] [--sort position|name] [--plate NAME] [--group NAME] --out FILE.htm
//   report-rows --plates PLATES.json --run-name NAME [--replicates] [--plate NAME] [--group NAME]
struct ReportRequest {
    enum class Command { Report, ReportRows };

    bool analytical = false;
    QString platesPath;
    QString runName;
    bool separateGroups = false;
    bool replicates = false;
    bool sortByName = true; // --sort left out: by name
    QString plateName;
    QString groupName;
    QString outPath;

    qint16 replicatesMode() const { return replicates ? 1 : 0; }

    // The request, or nullopt with a message for the user.
    static std::optional<ReportRequest> parse(Command command, const QStringList &args, QString *error);

    // The result rows as JSON, in table order: one object per row with the fields of the
    // result table; dates "YYYY-MM-DD", times "HH:MM:SS", Null as null.
    static QJsonArray rowsToJson(const RecordSet &rows);
};
