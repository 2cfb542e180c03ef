#pragma once

#include "evaluation/kits/OrvexaKit.h"

// Orvexa Antibody Test Kit, cELISA (cat. 412).
class cls412Orvexa : public OrvexaKit {
protected:
    const KitSheet &sheet() const override;
};
