#pragma once

#include "evaluation/kits/BoundedInhibitionKit.h"

// Orvexa Antibody Test Kit, cELISA (cat. 412).
class cls412Orvexa : public BoundedInhibitionKit {
protected:
    const KitSheet &sheet() const override;
    const InhibitionBounds &bounds() const override { return kOrvexa; }
};
