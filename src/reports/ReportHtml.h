#pragma once

#include <QString>
#include <QStringList>

class RecordSet;
class ReportFile;
class clsTests;

// The pieces of the report document, line by line. The texts are the format of the report
// and stay exactly as they are, spacing, case of tags and unbalanced tags included. Values
// are written as they stand, without HTML escaping.
class ReportHtml {
public:
    ReportHtml(ReportFile &out, const clsTests &tests) : mOut(out), mTests(tests) {}

    void writeDocumentHead();
    void writeDocumentTail();
    // The plate at row `plate` of the set: heading, four maps, notes.
    void writePlateSection(const RecordSet &plates, int plate, const QString &runName);
    void writePlateHeading(const RecordSet &plates, int plate, const QString &runName);
    void writePlateMap(const QString &title, const QString &wellList);
    void writeNotesBlock();
    void writeClientGroupHeading(const QString &groupName);
    void writeAnalyticalGroupHeading(const QString &groupName);
    void writeTestHeading(const QString &testName, const QString &version);

    // A table row: <tr>, one cell per value, </tr>.
    void writeRow(const QStringList &values);

private:
    void writeGroupTitle(const QString &groupName);

    ReportFile &mOut;
    const clsTests &mTests;
};
