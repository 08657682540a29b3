#include "failure/stack_dump.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <initializer_list>
#include <sstream>

#include "failure/deciding_line.h"

namespace snipwell {

namespace {

bool Holds(const std::string& line, const std::string& text) {
  return line.find(text) != std::string::npos;
}

/// A frame of a stack dump. The function's name without arguments, or none; and the module with the
/// place in it, if the dump tells it.
struct Frame {
  std::string name;
  std::string module;
};

std::string LastPart(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string Without(const std::string& part, const std::string& text) {
  std::string result;
  std::size_t from = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, from)) {
    result += text.substr(from, at - from);
    from = at + part.size();
  }
  return result + text.substr(from);
}

/// A function without its arguments, and without the place in a source that may follow the name.
std::string FunctionName(const std::string& text) {
  std::string function = Without("(anonymous namespace)::", text);
  const std::string call = "operator()";
  const std::size_t operatorCall = function.find(call);
  const std::size_t from = operatorCall == std::string::npos ? 0 : operatorCall + call.size();
  for (const char* end : {"(", " /", " ./", " ../"}) {
    function.resize(std::min(function.size(), function.find(end, from)));
  }
  while (!function.empty() && function.back() == ' ') function.pop_back();
  return function;
}

/// The name as the source has it; `symbol` itself when it is not an encoded one, or a very long
/// one.
std::string Demangled(const std::string& symbol) {
  constexpr std::size_t kLongest = 1000;
  if (symbol.compare(0, 2, "_Z") != 0 || symbol.size() > kLongest) return symbol;
  int status = 0;
  char* const name = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status);
  std::string result = status == 0 ? name : symbol;
  std::free(name);
  return result;
}

/// The end of a number in hexadecimal that stands at `at`, "0x" included; `at` when none does.
std::size_t EndOfAddress(const std::string& line, std::size_t at) {
  if (line.compare(at, 2, "0x") != 0) return at;
  return std::min(line.find_first_not_of("0123456789abcdef", at + 2), line.size());
}

/// "#5 0x00007f function(arguments) (/lib/module.so+0x12)" or, from gcc, "0x7f12 function(type)".
bool ParseNamedFrame(const std::string& line, Frame& frame) {
  std::size_t at = line.find_first_not_of(' ');
  if (at == std::string::npos) return false;
  if (line[at] == '#') at = line.find_first_not_of(' ', std::min(line.find(' ', at), line.size()));
  if (at == std::string::npos || line.compare(at, 2, "0x") != 0) return false;
  at = line.find(' ', at);
  if (at == std::string::npos) return false;
  const std::string rest = line.substr(at + 1);
  const std::size_t module = rest.rfind("(/");
  if (module != std::string::npos) {
    frame.module = LastPart(rest.substr(module + 1, rest.find(')', module) - module - 1));
  }
  frame.name = FunctionName(rest.substr(0, module));
  return true;
}

/// "/lib/module.so(symbol+0x12)[0x7f34]", "/lib/module.so(+0x12)[0x7f34]", "program[0x12]", as the
/// system's library writes it.
bool ParseSymbolFrame(const std::string& line, Frame& frame) {
  const std::size_t address = line.rfind("[0x");
  if (address == std::string::npos || address == 0 ||
      EndOfAddress(line, address + 1) + 1 != line.size() || line.back() != ']') {
    return false;
  }
  const std::size_t open = std::min(line.rfind('(', address), address);
  const std::size_t plus = std::min(line.rfind('+', address), address);
  frame.module = LastPart(line.substr(0, open));
  if (open == address) {
    frame.module += '+' + line.substr(address + 1, line.size() - address - 2);
  } else if (plus > open) {
    frame.name = FunctionName(Demangled(line.substr(open + 1, plus - open - 1)));
    frame.module += line.substr(plus, std::min(line.find(')', plus), address) - plus);
  }
  return true;
}

/// "4  module.so  0x00007f34 function(arguments) + 12", or without a function. Where the module
/// lies is chance, but for the place within a page.
bool ParseListedFrame(const std::string& line, Frame& frame) {
  constexpr std::size_t kDigitsInPage = 3;
  std::istringstream in(line);
  int number = 0;
  std::string address;
  if (!(in >> number >> frame.module >> address)) return false;
  if (EndOfAddress(address, 0) != address.size() || address.size() <= kDigitsInPage) return false;
  frame.module += "+..." + address.substr(address.size() - kDigitsInPage);
  std::getline(in >> std::ws, frame.name);
  frame.name = FunctionName(frame.name.substr(0, frame.name.rfind(" + ")));
  return true;
}

/// True, and the frame is filled, when the line is one.
bool ParseFrame(const std::string& line, Frame& frame) {
  return ParseNamedFrame(line, frame) || ParseSymbolFrame(line, frame = Frame()) ||
         ParseListedFrame(line, frame = Frame());
}

bool StartsWithOneOf(const std::string& text, std::initializer_list<const char*> starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](const char* start) { return text.rfind(start, 0) == 0; });
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> names) {
  return std::any_of(names.begin(), names.end(), [&](const char* name) { return text == name; });
}

/// Frames of the system's library: what calls the handler, and what ends the process.
bool BelongsToSystem(const Frame& frame) {
  return StartsWithOneOf(frame.module, {"libc.so", "libc-2.", "libpthread"}) ||
         IsOneOf(frame.name,
                 {"__restore_rt", "raise", "gsignal", "pthread_kill", "abort",
                  "__pthread_kill_implementation", "__assert_fail", "__assert_fail_base"});
}

/// Frames with a name of the code that reports a crash.
bool IsNamedHandler(const Frame& frame) {
  return IsOneOf(frame.name,
                 {"crash_signal", "std::terminate", "__gnu_cxx::__verbose_terminate_handler",
                  "llvm::report_fatal_error", "llvm::llvm_unreachable_internal", "fancy_abort",
                  "internal_error", "???"}) ||
         StartsWithOneOf(frame.name, {"llvm::sys::", "llvm::CrashRecoveryContext"}) ||
         Holds(frame.name, "SignalHandler");
}

bool IsHandler(const Frame& frame) {
  return IsNamedHandler(frame) || BelongsToSystem(frame) ||
         (frame.name.empty() && Holds(frame.module, "libLLVM"));
}

/// The frames above the program's start. A compiler may write a second dump, which tells no more.
std::vector<Frame> Frames(const std::vector<std::string>& lines) {
  std::vector<Frame> frames;
  for (const std::string& line : lines) {
    if (MeaningOf(line) == LineMeaning::DumpEnd) break;
    Frame frame;
    if (!ParseFrame(line, frame)) continue;
    if (frame.name == "main" || StartsWithOneOf(frame.name, {"__libc_start"})) break;
    frames.push_back(frame);
  }
  return frames;
}

/// The frame behind those of the system that call the handler, or the first one when no such frames
/// follow the handler's. So it is known where the handler's frames end although they have no names,
/// and the compiler's in the same module may have none either.
std::vector<Frame>::const_iterator BehindSignal(const std::vector<Frame>& frames) {
  const auto inHandler = [](const Frame& frame) {
    return !BelongsToSystem(frame) && (frame.name.empty() || IsNamedHandler(frame));
  };
  const auto system = std::find_if_not(frames.begin(), frames.end(), inHandler);
  const auto behind = std::find_if_not(system, frames.end(), BelongsToSystem);
  return behind == system || behind == frames.end() ? frames.begin() : behind;
}

}  // namespace

std::vector<std::string> FramesBelowHandler(const std::vector<std::string>& lines) {
  const std::vector<Frame> frames = Frames(lines);
  auto frame = BehindSignal(frames);
  const bool known = frame != frames.begin();
  frame = std::find_if_not(frame, frames.end(), known ? IsNamedHandler : IsHandler);
  std::vector<std::string> names;
  for (; frame != frames.end(); ++frame) {
    names.push_back(frame->name.empty() ? frame->module : frame->name);
  }
  return names;
}

}  // namespace snipwell
