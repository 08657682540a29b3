#pragma once

#include <windows.h>

namespace snipwell::platform {

/// Has a packet with key 0 put to this completion port whenever a signal comes while
/// `SignalsHeldBack` lives; to none any more with null.
void TellSignalsTo(HANDLE port);

}  // namespace snipwell::platform
