#include "platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace snipwell::platform {

bool IsTerminal(int descriptor) {
  const char* const kind = std::getenv("TERM");
  const bool rewrites = kind != nullptr && *kind != '\0' && std::string_view(kind) != "dumb";
  return rewrites && isatty(descriptor) != 0;
}

std::size_t TerminalWidth(int descriptor) {
  constexpr std::size_t kUsual = 80;
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsual;
  return size.ws_col;
}

}  // namespace snipwell::platform
