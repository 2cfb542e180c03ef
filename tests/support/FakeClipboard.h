#pragma once

#include "platform/Clipboard.h"

// A clipboard of the test's own.
class FakeClipboard : public Clipboard {
public:
    QString contents;
    int clears = 0;
    QString text() const override { return contents; }
    void setText(const QString &text) override { contents = text; }
    void clear() override
    {
        ++clears;
        contents.clear();
    }
};
