#pragma once

#include "evaluation/kits/TremalisKit.h"

// Tremalis Bosk (cat. 404).
class cls404TremalisBosk : public TremalisKit {
protected:
    const KitSheet &sheet() const override;
};
