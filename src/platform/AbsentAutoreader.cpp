#include "platform/AbsentAutoreader.h"

const char *const AbsentAutoreader::kNotInstalled =
    "The Bio-Tek reader control (BTIAutoreader) is not installed on this computer, so Bio-Tek readers can't be "
    "used here.";

int AbsentAutoreader::call(int, QVariantList &)
{
    throw AutoreaderUnavailable(kNotInstalled);
}
