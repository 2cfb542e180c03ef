#pragma once

#include "reports/ExportTable.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

// The formats results leave in, their file names and the writing of the file.
class ResultExport {
public:
    enum class Format { Csv, CsvSemicolon, Json, Hl7 };

    static inline const QString kFileName = QStringLiteral("Results");
    static inline const QString kCaption = QStringLiteral("Export Results");

    // "csv", "csv-semicolon", "json", "hl7"; nullopt for any other name.
    static std::optional<Format> formatNamed(const QString &name);
    static QString name(Format format);
    // As the dialog offers it: "CSV (comma, 0.5)" and the like.
    static QString caption(Format format);
    static QString suffix(Format format);

    // The file's contents; now is the time of the HL7 messages.
    static QByteArray encode(const ExportTable &table, Format format, const QDateTime &now);
    // Writes the contents in place of path, whole or not at all: a temporary file beside
    // it is renamed over it. Throws ExportError naming the file when it can't be written;
    // nothing is then left behind.
    static void write(const QByteArray &contents, const QString &path);
    // encode's bytes written to path as they are made (never whole in memory), the same way.
    static void write(const ExportTable &table, Format format, const QDateTime &now, const QString &path);

    // What the status bar says: "Results of 3 plates (214 rows) exported as HL7 to F".
    static QString summary(const ExportTable &table, Format format, const QString &path);
};
