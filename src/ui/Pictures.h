#pragma once

#include <QPixmap>
#include <QString>

// The program's small pictures, by name: the panel marks "greencheck", "bluecheck",
// "xmark", "nomark" and the compaction lights "greenlight", "yellowlight". They are
// drawn, not loaded, so they are sharp at any screen scale.
QPixmap picture(const QString &name, int size = 16);
