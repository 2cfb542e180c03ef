#pragma once

#include "evaluation/kits/JmvKit.h"

// Jessamine Marsh Virus v2 (cat. 6615.01-1).
class cls6615011JMV : public JmvKit {
protected:
    const KitSheet &sheet() const override;
};
