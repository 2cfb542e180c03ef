#include "core/LegacyFormat.h"
