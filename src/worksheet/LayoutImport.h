#pragma once

#include "worksheet/PlateLayout.h"

#include <QString>

#include <optional>

class Workbench;

// Lays a layout (an imported sample list, a template) out on the plate on screen as one
// undoable change: each group not in the group list goes through the new-group question
// once (a cancel abandons the whole layout), then undo snapshot, the change, the panel
// and the evaluation.
class LayoutImport {
public:
    static inline const QString kTitle = QStringLiteral("Import Layout");

    explicit LayoutImport(Workbench &workbench) : mWb(workbench) {}

    // False when the user cancelled a group question; the plate is then as it was.
    bool apply(const PlateLayout &layout);
    // The two halves of apply: the group questions (nothing when the user cancelled one;
    // the layout with the names the user chose otherwise), then the change itself.
    std::optional<PlateLayout> resolveGroups(const PlateLayout &layout);
    void lay(const PlateLayout &resolved);
    // Plate > Import Layout... with the file chosen: a file that can't be read as a layout
    // is told in a box naming the line or cell, and the plate stays as it was.
    bool importFile(const QString &path);

private:
    Workbench &mWb;
};
