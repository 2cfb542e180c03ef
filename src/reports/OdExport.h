#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class Browser;
class Prompt;
class RecordSet;
class Workbook;

// What the OD workbook says about its plate; empty texts where the plate has none yet.
struct OdSheetHeading {
    QString plateName;
    QString runName;
    QString testName;
    QString readerName;
    QString filter;   // "630 nm"
    QString dateRead; // M/d/yyyy
    QString timeRead; // h:mm:ss AM/PM
};

// Copies the OD sheet of the plate on screen into a new workbook, cell by cell (well A1 to
// row 1, column 1; H12 to row 8, column 12), writes it into the user's documents folder
// and opens it in the user's spreadsheet program. A text that is a number goes in as that
// number, shown with the decimals of its text, so the sheet reads as the grid does and can
// be calculated with; any other text goes in as it stands; an empty cell stays empty.
//
// The block of values stays at A1:L8, where macros and formulas of the laboratory read it.
// Around it, as texts (so sums over whole rows or columns leave them out): the row letters
// A to H in column M beside their rows, the column numbers 1 to 12 in row 9 under their
// columns, and the plate's heading (plate, run, test, reader, filter, date and time read)
// at the top right in columns O and P; the same heading is printed above the sheet on
// every page.
class OdExport {
public:
    using WorkbookFactory = std::function<std::unique_ptr<Workbook>()>;

    static inline const QString kFileName = QStringLiteral("OD values");
    static constexpr int kRowLabelColumn = 13; // M
    static constexpr int kColumnLabelRow = 9;
    static constexpr int kHeadingColumn = 15; // O: the captions, P the values

    // folder: where the workbooks go; each export takes a new name there (DocumentFolder),
    // so an earlier one, or one still open in the spreadsheet program, is never written over.
    OdExport(Prompt &prompt, Browser &browser, const QString &folder, WorkbookFactory newWorkbook = {});

    // The 96 texts of the OD sheet in well order; when: the time in the file's name.
    // Returns the file written; empty when it could not be opened (the user was told, and
    // the file is gone). Throws std::runtime_error when the file can't be written.
    QString exportODs(const OdSheetHeading &heading, const QStringList &odTexts, const QDateTime &when);

    // The heading of the current plate of a run's plates: its name, test (the test chosen
    // on screen while the plate has none), reader, filter and time of reading.
    static OdSheetHeading headingOf(const RecordSet &plates, const QString &runName, const QString &chosenTest);

    // Fills a workbook with the heading and the texts, as exportODs does.
    static void fillWorkbook(Workbook &workbook, const OdSheetHeading &heading, const QStringList &odTexts);
    // The number format that shows a number text with its own decimals ("0.000" for
    // "-0.125"); empty for a whole number.
    static QString numberFormatOf(const QString &text);

private:
    Prompt &mPrompt;
    Browser &mBrowser;
    QString mFolder;
    WorkbookFactory mNewWorkbook;
};
