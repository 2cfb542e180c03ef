#pragma once

#include "evaluation/kits/JmvKit.h"

// Jessamine Marsh Virus (cat. 420), for plates first validated by program version x.3
// or later, or not yet validated.
class cls420JMV : public JmvKit {
protected:
    const KitSheet &sheet() const override;
};
