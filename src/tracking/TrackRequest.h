#pragma once

#include "tracking/ControlTracking.h"
#include "tracking/TrackingWorkbook.h"

#include <QJsonArray>
#include <QString>
#include <QStringList>

#include <optional>

// The arguments of the command-line "track":
//   --db PATH --test NAME [--lot L] [--tech T] --from M/D/YYYY --to M/D/YYYY
//   [--x plate,run,date,time] [--no-stddev] --out FILE.xlsx
// --x names what the charts show on their X axis (plate name by default); the options
// otherwise mean what the controls of the control report dialog mean.
struct TrackRequest {
    QString databasePath;
    QString outPath;
    TrackingCriteria criteria;
    TrackingChartOptions chart;

    // nullopt with the reason in *error when the arguments are not of that form: an
    // option missing or without its value, a kit that isn't in the list (or "Generic"), a
    // date that isn't one, a start after the end, an unknown or empty --x.
    static std::optional<TrackRequest> parse(const QStringList &args, QString *error);

    // A date typed M/D/YYYY, read as the dialog reads its three boxes.
    static std::optional<QDate> parseDate(const QString &text);

    // The tracking table as JSON rows in table order: one object per row with the twelve
    // fields by name; DateRead "YYYY-MM-DD", TimeRead "HH:MM:SS" or null, the rest texts.
    static QJsonArray rowsJson(const RecordSet &rows);
};
