#pragma once

#include "platform/Clipboard.h"

// The system clipboard through Qt.
class QtClipboard : public Clipboard {
public:
    QString text() const override;
    void setText(const QString &text) override;
    void clear() override;
};
