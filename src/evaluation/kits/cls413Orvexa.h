#pragma once

#include "evaluation/kits/OrvexaKit.h"

// Orvexa Antibody Test Kit, cELISA v2 (cat. 413).
class cls413Orvexa : public OrvexaKit {
protected:
    const KitSheet &sheet() const override;
};
