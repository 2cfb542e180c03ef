#pragma once

#include "platform/Autoreader.h"

// The Bio-Tek control on a computer that doesn't have it (every build but the vendor's
// Windows one): each call throws AutoreaderUnavailable with a plain explanation, so a read
// ends in the read's error box at once instead of waiting for an event that never comes.
class AbsentAutoreader : public Autoreader {
public:
    static const char *const kNotInstalled;

    int call(int dispatchNumber, QVariantList &arguments) override;
    void setReadReadyHandler(ReadReadyHandler) override {}
};

class AbsentAutoreaderFactory : public AutoreaderFactory {
public:
    std::unique_ptr<Autoreader> create() override { return std::make_unique<AbsentAutoreader>(); }
};
