#include "worksheet/PlateTemplates.h"

#include "platform/Prompt.h"
#include "store/DbConnection.h"
#include "store/LayoutTemplates.h"
#include "worksheet/LayoutImport.h"
#include "worksheet/PlatesEditLogic.h"
#include "worksheet/Workbench.h"

QStringList PlateTemplates::names() const
{
    const DbConnection db = mWb.openDatabase();
    return LayoutTemplates(db).names();
}

bool PlateTemplates::refusedName(const QString &name)
{
    const QString problem = LayoutTemplates::nameProblem(name);
    if (problem.isEmpty())
        return false;
    mWb.prompt().message(problem, kTitle, MsgIcon::Exclamation);
    return true;
}

void PlateTemplates::gone(const QString &name)
{
    mWb.prompt().message(QStringLiteral("There is no template named \"%1\" any more.").arg(name), kTitle,
                         MsgIcon::Exclamation);
}

bool PlateTemplates::saveAsTemplate(const QString &name)
{
    if (refusedName(name))
        return false;
    const DbConnection db = mWb.openDatabase();
    const LayoutTemplates templates(db);
    if (const std::optional<QString> taken = templates.existing(name)) {
        if (mWb.prompt().ask(QStringLiteral("A template named \"%1\" exists already.  Replace it with the layout of "
                                            "this plate?")
                                 .arg(*taken),
                             kTitle, MsgButtons::YesNo) != MsgAnswer::Yes)
            return false;
    }
    const PlateSheet &s = mWb.sheet();
    templates.save({name.trimmed(), s.sheetTexts(PlateSheet::Groups), s.sheetTexts(PlateSheet::Samples)});
    return true;
}

std::optional<PlateLayout> PlateTemplates::storedLayout(const QString &name)
{
    std::optional<LayoutTemplate> stored;
    {
        const DbConnection db = mWb.openDatabase();
        stored = LayoutTemplates(db).load(name);
    }
    if (!stored) {
        gone(name);
        return std::nullopt;
    }
    PlateLayout layout;
    for (int k = 0; k < wells::kCount; ++k)
        layout.set(k, stored->groups.value(k), stored->samples.value(k));
    return layout;
}

bool PlateTemplates::applyTemplate(const QString &name)
{
    const std::optional<PlateLayout> layout = storedLayout(name);
    return layout && LayoutImport(mWb).apply(*layout);
}

bool PlateTemplates::newPlateFromTemplate(const QString &name)
{
    const std::optional<PlateLayout> layout = storedLayout(name);
    if (!layout)
        return false;
    // The group questions come before the plate is added: a cancel leaves the run as it was.
    LayoutImport import(mWb);
    const std::optional<PlateLayout> resolved = import.resolveGroups(*layout);
    if (!resolved)
        return false;
    mWb.storePlateRecord();
    // The plate list's own rules give the new plate its id, name and technician.
    PlatesEditLogic list(mWb.prompt());
    list.setPlatesRecord(mWb.plates());
    list.setSelectedPlate(mWb.combo(Workbench::Plates).text());
    list.setAddFlag();
    list.load();
    if (!list.cmdOK())
        return false;
    mWb.setDirty(true);
    mWb.plates() = list.getPlatesRecord();
    mWb.fillPlates();
    const QString selected = list.getSelectedPlate();
    mWb.plates().findFirst(u"PlateName", selected);
    mWb.loadPlateRecord();
    mWb.selectComboIndex(Workbench::Plates, mWb.combo(Workbench::Plates).findText(selected));
    import.lay(*resolved);
    return true;
}

bool PlateTemplates::renameTemplate(const QString &from, const QString &to)
{
    if (refusedName(to))
        return false;
    const DbConnection db = mWb.openDatabase();
    const LayoutTemplates templates(db);
    const std::optional<QString> taken = templates.existing(to);
    if (taken && taken->compare(from, Qt::CaseInsensitive) != 0) {
        mWb.prompt().message(
            QStringLiteral("A template named \"%1\" exists already.  Please choose another name.").arg(*taken), kTitle,
            MsgIcon::Exclamation);
        return false;
    }
    if (!templates.rename(from, to)) {
        gone(from);
        return false;
    }
    return true;
}

bool PlateTemplates::deleteTemplate(const QString &name)
{
    if (mWb.prompt().ask(QStringLiteral("Are you sure you want to delete the template \"%1\"?").arg(name),
                         QStringLiteral("Delete Template?"), MsgButtons::YesNo) != MsgAnswer::Yes)
        return false;
    const DbConnection db = mWb.openDatabase();
    if (!LayoutTemplates(db).remove(name)) {
        gone(name);
        return false;
    }
    return true;
}
