#pragma once

#include <QString>

// Databases of the first generation, as programs before the technicians made them: the
// tables Groups, Folders, MiscSettings, Plates, Runs, UserFilters and UserReaders, with
// no Technicians table and no Plates.TechName. They hold one run with two plates,
// "Plate #1" (test "Generic") and "Plate #2" (test "RTUV 419").
enum class Generation1Kind {
    Complete,
    WithTechniciansTable, // half-upgraded: Technicians there, Plates.TechName not
    WithoutUserFilters,   // one of the seven tables missing
};

void createGeneration1Database(const QString &path, Generation1Kind kind = Generation1Kind::Complete);
