#pragma once

class Prompt;
class ProgramFolder;

// The check of the database at start: true when the program can go on. A database of
// the current generation passes at once. A 1st generation database is upgraded when the
// user agrees, with a copy taken first and put back if the upgrade fails. A database
// that is missing or unreadable, a refused or failed upgrade give false after a box that
// says so. A database on a server passes when it can be connected to and its schema is
// one this program knows (an empty one is made ready); otherwise a box tells why.
bool checkDatabase(const ProgramFolder &folder, Prompt &prompt);
