#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class Browser;
class Prompt;
class Workbook;

// Copies the OD sheet of the plate on screen into a new workbook, cell by cell (well A1 to
// row 1, column 1; H12 to row 8, column 12), writes it into a folder and opens it in the
// user's spreadsheet program. A text that is a number goes in as that number, shown with
// the decimals of its text, so the sheet reads as the grid does and can be calculated
// with; any other text goes in as it stands; an empty cell stays empty.
class OdExport {
public:
    using WorkbookFactory = std::function<std::unique_ptr<Workbook>()>;

    static inline const QString kNotFoundTitle = QStringLiteral("Microsoft Excel not found.");
    static inline const QString kNotFoundText = QStringLiteral(
        "Unable to export data.  Make sure you have a spreadsheet program installed that opens Excel workbooks "
        "(.xlsx files).");
    static inline const QString kBaseName = QStringLiteral("Tavimetra OD Export");

    // folder: where the workbooks go (a temporary folder); each export takes a new name
    // there, so a workbook still open in the spreadsheet program is never written over.
    OdExport(Prompt &prompt, Browser &browser, const QString &folder, WorkbookFactory newWorkbook = {});

    // The 96 texts of the OD sheet in well order. Returns the file written; empty when it
    // could not be opened (the user was told). Throws std::runtime_error when the file
    // can't be written.
    QString exportODs(const QStringList &odTexts);

    // Fills a workbook with the texts, as exportODs does.
    static void fillWorkbook(Workbook &workbook, const QStringList &odTexts);
    // The number format that shows a number text with its own decimals ("0.000" for
    // "-0.125"); empty for a whole number.
    static QString numberFormatOf(const QString &text);

    // The first free file name in the folder.
    QString newFilePath() const;

private:
    Prompt &mPrompt;
    Browser &mBrowser;
    QString mFolder;
    WorkbookFactory mNewWorkbook;
};
