#include "ui/LayoutMenu.h"

#include "platform/Prompt.h"
#include "store/ProgramFolder.h"
#include "ui/PlateMapPrinter.h"
#include "ui/frmLayoutTemplates.h"
#include "ui/frmMain.h"
#include "worksheet/LayoutImport.h"
#include "worksheet/PlateTemplates.h"
#include "worksheet/Workbench.h"

#include <QAction>
#include <QFileDialog>
#include <QInputDialog>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>

namespace {

// A template chosen from the list; empty when there is none or the user cancelled.
QString chooseTemplate(frmMain &window, PlateTemplates &templates, const QString &title)
{
    const QStringList names = templates.names();
    if (names.isEmpty()) {
        window.workbench().prompt().message(
            QStringLiteral("There are no layout templates yet.  Lay out a plate and save it with Save Layout as "
                           "Template... first."),
            PlateTemplates::kTitle, MsgIcon::Information);
        return QString();
    }
    bool ok = false;
    const QString name = QInputDialog::getItem(&window, title, QStringLiteral("Template:"), names, 0, false, &ok);
    return ok ? name : QString();
}

void importLayout(frmMain &window)
{
    Workbench &wb = window.workbench();
    const QString path = QFileDialog::getOpenFileName(&window, LayoutImport::kTitle, wb.folder().documentsDir(),
                                                      QStringLiteral("Layouts (*.csv *.txt *.xlsx);;All files (*)"));
    if (!path.isEmpty())
        LayoutImport(wb).importFile(path);
}

void saveTemplate(frmMain &window)
{
    bool ok = false;
    const QString name =
        QInputDialog::getText(&window, QStringLiteral("Save Layout as Template"), QStringLiteral("Template name:"),
                              QLineEdit::Normal, window.workbench().combo(Workbench::Plates).text(), &ok);
    if (ok) {
        PlateTemplates templates(window.workbench());
        templates.saveAsTemplate(name);
    }
}

void printPlateMap(frmMain &window)
{
    Workbench &wb = window.workbench();
    const QList<PlateMapPage> pages = PlateMap::fromRun(wb);
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(QStringLiteral("Plate map"));
    QPrintDialog dialog(&printer, &window);
    dialog.setWindowTitle(QStringLiteral("Print Plate Map"));
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty()) {
        // A PDF goes through the program's safe writing, so a failed write leaves no half file.
        QString error;
        if (!PlateMapPrinter::writePdf(printer.outputFileName(), pages, printer.pageLayout().pageSize().id(), &error))
            wb.prompt().message(error, QStringLiteral("Print Plate Map"), MsgIcon::Exclamation);
        else
            wb.noteFileWritten(Workbench::WrittenFile::PlateMap, printer.outputFileName());
        return;
    }
    PlateMapPrinter::paint(printer, pages);
}

} // namespace

void LayoutMenu::add(frmMain &window, QMenu *plate)
{
    plate->addSeparator();
    const struct {
        const char *name, *caption;
        std::function<void()> command;
    } items[] = {
        {"mnuPlateImportLayout", "Import Layout...", [&window] { importLayout(window); }},
        {"mnuPlateSaveTemplate", "Save Layout as Template...", [&window] { saveTemplate(window); }},
        {"mnuPlateNewFromTemplate", "New Plate from Template...",
         [&window] {
             PlateTemplates templates(window.workbench());
             const QString name = chooseTemplate(window, templates, QStringLiteral("New Plate from Template"));
             if (!name.isEmpty())
                 templates.newPlateFromTemplate(name);
         }},
        {"mnuPlateApplyTemplate", "Apply Template...",
         [&window] {
             PlateTemplates templates(window.workbench());
             const QString name = chooseTemplate(window, templates, QStringLiteral("Apply Template"));
             if (!name.isEmpty())
                 templates.applyTemplate(name);
         }},
        {"mnuPlateManageTemplates", "Manage Templates...",
         [&window] {
             PlateTemplates templates(window.workbench());
             frmLayoutTemplates(templates, &window).exec();
         }},
        {"mnuPlatePrintPlateMap", "Print Plate Map...", [&window] { printPlateMap(window); }},
    };
    for (const auto &item : items) {
        if (QString::fromLatin1(item.name) == u"mnuPlatePrintPlateMap")
            plate->addSeparator();
        plate->addAction(QString::fromLatin1(item.caption))->setObjectName(QString::fromLatin1(item.name));
        window.setCommand(QString::fromLatin1(item.name), item.command);
    }
}
