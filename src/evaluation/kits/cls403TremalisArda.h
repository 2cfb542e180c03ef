#pragma once

#include "evaluation/kits/TremalisKit.h"

// Tremalis Arda (cat. 403).
class cls403TremalisArda : public TremalisKit {
protected:
    const KitSheet &sheet() const override;
};
