#pragma once

#include <QString>

// The system clipboard, text only.
class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual QString text() const = 0;
    virtual void setText(const QString &text) = 0;
    virtual void clear() = 0;
};
