#pragma once

class ProgramFolder;
class Prompt;

// The program's start before the main window: a first start seeds the program folder,
// settings.txt "NEW INSTALL" is turned into the database's path, the database is checked
// (and a 1st generation one upgraded when the user agrees), and the renamed kit is put
// right in old plates. False, after a box that says why, when the program can't start.
bool startProgram(const ProgramFolder &folder, Prompt &prompt);
