#pragma once

#include <cstddef>

namespace snipwell::platform {

/// True when a standard descriptor leads to a terminal on which a line can be rewritten.
bool IsTerminal(int descriptor);

/// Columns of the terminal to which a descriptor leads, as they are now; 80 when it does not say.
std::size_t TerminalWidth(int descriptor);

}  // namespace snipwell::platform
