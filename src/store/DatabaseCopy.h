#pragma once

#include <QString>

// Moves a lab onto a server: copies every folder, run, plate, group, technician, reader
// and filter of a database file into a server database that holds nothing of its own yet
// (at most the delivery rows of its first connection, which the copy replaces), in one
// transaction. The ids stay as they are. Each workstation's last reader and filter start
// afresh (the file's one choice belongs to no workstation in particular). Throws
// DatabaseError, with nothing written, when the file can't be read, is of the 1st
// generation, or the target holds data.
class DatabaseCopy {
public:
    struct Counts {
        int folders = 0;
        int runs = 0;
        int plates = 0;
        int groups = 0;
        int technicians = 0;
        int readers = 0;
    };

    static Counts copy(const QString &fromFile, const QString &toLocation);
};
