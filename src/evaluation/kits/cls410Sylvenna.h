#pragma once

#include "evaluation/kits/BoundedInhibitionKit.h"

// Sylvenna mirabilis Antibody Test Kit, cELISA (cat. 410).
class cls410Sylvenna : public BoundedInhibitionKit {
protected:
    const KitSheet &sheet() const override;
    const InhibitionBounds &bounds() const override { return kSylvenna; }
};
