#pragma once

#include "worksheet/PlateLayout.h"

#include <QString>
#include <QStringList>

#include <optional>

class Workbench;

// The commands on layout templates: Plate > Save Layout as Template..., New Plate from
// Template..., Apply Template... (one undoable change) and the template manager's Rename
// and Delete. The window asks for the names; every other question and every refusal is a
// box here, and a refused name changes nothing.
class PlateTemplates {
public:
    static inline const QString kTitle = QStringLiteral("Layout Templates");

    explicit PlateTemplates(Workbench &workbench) : mWb(workbench) {}

    QStringList names() const;
    // Keeps the groups, samples and controls of the plate on screen under the name; a name
    // that is taken is replaced only when the user says so.
    bool saveAsTemplate(const QString &name);
    // Lays the template out on the plate on screen (undoable).
    bool applyTemplate(const QString &name);
    // Adds a plate to the run, as Add Plates does, with the template laid out on it.
    bool newPlateFromTemplate(const QString &name);
    bool renameTemplate(const QString &from, const QString &to);
    // Asks first.
    bool deleteTemplate(const QString &name);

private:
    bool refusedName(const QString &name);
    void gone(const QString &name);
    // The template's layout; told and nothing when it is gone.
    std::optional<PlateLayout> storedLayout(const QString &name);

    Workbench &mWb;
};
