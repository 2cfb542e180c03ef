#pragma once

#include "reports/ExportBuffer.h"
#include "reports/ExportRow.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVector>

#include <functional>

// Export rows as HL7 v2.5.1 ORU^R01 messages, one per plate, UTF-8, each segment ended by
// CR. The message:
//
//   MSH  the program as sending application, a control id of its own, version 2.5.1
//   SFT  the program and its version
//   per well, in well order:
//   ORC  RE, the sample as filler order number; ORC-21 the client group
//   OBR  OBR-3 the sample, OBR-4 the test, OBR-7 the time read, OBR-20/21 plate and well,
//        OBR-25 F
//   NTE  the plate's verdict, and the version stamped on it
//   OBX  the OD (NM); the kit's figure (NM) where it has one; the result (CWE, OBX-8 POS
//        or NEG, OBX-11 F, or no value and OBX-11 X where the plate gave none); for a
//        control whether it was included (CWE Y or N). Each with OBX-14 the time read,
//        OBX-16 the technician, OBX-17 the kit and lot, OBX-18 the reader.
//   SPM  the specimen: its id the sample name, role P for a sample, Q for a control
//
// Every text is escaped: \ | ^ & ~ as \E\ \F\ \S\ \T\ \R\, CR and LF as \X0D\ and \X0A\.
class Hl7Export {
public:
    using ControlIds = std::function<QString()>;

    static inline const QString kApplication = QStringLiteral("Tavimetra");

    // now: the time of the messages; controlId: a new unique id for each message (by
    // default a random UUID in hex).
    static QByteArray write(const QVector<ExportRow> &rows, const QDateTime &now, const ControlIds &controlId = {});
    // The same bytes into out.
    static void write(ExportBuffer &out, const QVector<ExportRow> &rows, const QDateTime &now,
                      const ControlIds &controlId = {});
    static QString escape(const QString &text);
    // HL7 date and time: "20261123093000", or the date alone when the time is not known.
    static QString timestamp(const QDate &date, const QTime &time);
};
