#include "platform/terminal.h"

#include <io.h>
#include <windows.h>

namespace snipwell::platform {

namespace {

HANDLE HandleOf(int descriptor) { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); }

}  // namespace

/// A console rewrites lines once it was told to take the terminals' control sequences.
bool IsTerminal(int descriptor) {
  constexpr DWORD kControlSequences = 0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
  DWORD mode = 0;
  const HANDLE console = HandleOf(descriptor);
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | kControlSequences) != 0;
}

std::size_t TerminalWidth(int descriptor) {
  constexpr std::size_t kUsual = 80;
  CONSOLE_SCREEN_BUFFER_INFO info;
  if (GetConsoleScreenBufferInfo(HandleOf(descriptor), &info) == 0) return kUsual;
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

}  // namespace snipwell::platform
