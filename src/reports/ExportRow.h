#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <QVector>

#include <optional>

// One well of a plate as it leaves for a laboratory information system: a sample with its
// result, or a control with its inclusion, and what the plate says about both.
struct ExportRow {
    int plate = 0; // the plate's place in the export, from 0: rows of one plate follow each other
    QString runName;
    QString plateName;
    int plateId = 0;
    QString well;   // "A1" ... "H12"
    QString group;  // empty for none
    QString sample; // for a control its name: PC, NC, AUX or BLANK
    bool control = false;
    bool included = true;
    QString testName;
    QString kitLot;
    QDate kitExpiry; // null: none given
    QDate dateRead;
    QTime timeRead; // null: not known
    QString technician;
    QString reader;
    QString filter;    // wavelength in nm, as digits
    QString od;        // as the OD sheet shows it ("0.512")
    QString ratioName; // the kit's figure ("% Inhibition", "S/P"); empty when it has none
    QString ratio;     // as the kit gives it ("47.4%"); empty when there is none
    QString result;    // POS or NEG; empty for a control, a failed plate or a Generic plate
    QString verdict;   // the plate's validation text, lines joined by CR LF
    QString version;   // the program version stamped on the plate

    // The number in a figure: "0.512" or "47.4%" (the sign of a percentage dropped).
    static std::optional<double> number(const QString &text);
    // number(text).has_value(), without reading a plain decimal's value.
    static bool isNumber(const QString &text);
};
Q_DECLARE_TYPEINFO(ExportRow, Q_RELOCATABLE_TYPE);

using ExportRows = QVector<ExportRow>;
