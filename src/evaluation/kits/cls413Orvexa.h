#pragma once

#include "evaluation/kits/BoundedInhibitionKit.h"

// Orvexa Antibody Test Kit, cELISA v2 (cat. 413).
class cls413Orvexa : public BoundedInhibitionKit {
protected:
    const KitSheet &sheet() const override;
    const InhibitionBounds &bounds() const override { return kOrvexa; }
};
