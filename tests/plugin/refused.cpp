// SPDX-License-Identifier: MIT
// Does not compile: nothing says that the engine's object of this type withdraws.
#include "filters/Filter1D.h"
#include "plugin/TypeRegistration.h"

class Forgetful : public Filter1D
{};

template void registerType<Forgetful>(const char *uri, const char *name);
