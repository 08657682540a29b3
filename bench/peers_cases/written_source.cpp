// A settings file as people write it: includes, remarks, macros and raw strings are all there.
#include <cstdio>
#include <map>
#include <string>
#include <vector>

// paste: /usr/include/zconf.h
// paste: /usr/include/zlib.h

#define HOLDS(test) /* the test is a body; it is run while compiling */ \
  static_assert(requires { known<([]() consteval { test }())>{}; }, #test " does not hold")
#ifdef NDEBUG
#  define CHECK(condition) ((void)0)
#else
#  define CHECK(condition) ((condition) ? (void)0 : Complain(__LINE__, #condition))
#endif

namespace {

[[maybe_unused]] void Complain(int line, const char* text) {
  std::fprintf(stderr, "%d: \"%s\" does not hold // {\n", line, text);
}

const char* const help = R"help(
  settings [--port=N] "name"   # a ")" and a { in a raw string
)help";

/* What can be set. Every setting has
   its default beside it. */
template <typename Number>
struct Settings {
  Number port = 8'080;
  Number workers = 4;  // as many as there are processors
  std::map<std::string, std::vector<Number>> lists;
};

template <bool>
struct known {};

HOLDS(return sizeof(Settings<int>) > 'a' - 'A';);

}  // namespace

// paste: /usr/include/sqlite3.h

int main(int count, char**) {
  Settings<int> settings;
  settings.lists["levels"] = {Z_BEST_SPEED, Z_BEST_COMPRESSION, SQLITE_OK};
  CHECK(count > 0);
  if (count > 2) std::puts(help);
  return settings.port + settings.workers;
}
