#include "failure/stack_frame.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <sstream>

namespace snipwell {

namespace {

std::string LastPart(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

/// True for a path from the root, of any system, that starts at `at`.
bool IsPath(const std::string& text, std::size_t at) {
  if (at >= text.size()) return false;
  return text[at] == '/' || text.compare(at + 1, 2, ":\\") == 0;
}

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

/// Where the parenthesis opens that holds the module, or nowhere.
std::size_t PlaceOfModule(const std::string& text) {
  std::size_t place = text.rfind('(');
  while (place != std::string::npos && place > 0 && !IsPath(text, place + 1)) {
    place = text.rfind('(', place - 1);
  }
  return place != std::string::npos && IsPath(text, place + 1) ? place : std::string::npos;
}

/// "#5 0x00007f function(arguments) (/lib/module.so+0x12)" or, from gcc, "0x7f12 function(type)".
bool ParseNamedFrame(const std::string& line, StackFrame& frame) {
  std::size_t at = line.find_first_not_of(' ');
  if (at == std::string::npos) return false;
  if (line[at] == '#') at = line.find_first_not_of(' ', std::min(line.find(' ', at), line.size()));
  if (at == std::string::npos || line.compare(at, 2, "0x") != 0) return false;
  at = line.find(' ', at);
  if (at == std::string::npos) return false;
  const std::string rest = line.substr(at + 1);
  const std::size_t module = PlaceOfModule(rest);
  if (module != std::string::npos) {
    frame.module = LastPart(rest.substr(module + 1, rest.rfind(')') - module - 1));
  }
  frame.name = FunctionName(rest.substr(0, module));
  return true;
}

/// "/lib/module.so(symbol+0x12)[0x7f34]", "/lib/module.so(+0x12)[0x7f34]", "program[0x12]", as the
/// system's library writes it.
bool ParseSymbolFrame(const std::string& line, StackFrame& frame) {
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
bool ParseListedFrame(const std::string& line, StackFrame& frame) {
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

/// "0x00007FF7, C:\bin\clang.exe(0x00007FF6) + 0x12 byte(s)", and maybe
/// ", function() + 0x3 byte(s)", as clang writes it on Windows. Where the module lies is chance.
bool ParseWindowsFrame(const std::string& line, StackFrame& frame) {
  const std::size_t comma = line.find(", ");
  const std::size_t base = line.rfind("(0x");
  const std::string plus = ") + ";
  const std::size_t place = line.find(plus, std::min(base, line.size()));
  if (line.compare(0, 2, "0x") != 0 || comma > base || place == std::string::npos) return false;
  const std::size_t digits = place + plus.size();
  frame.module = LastPart(line.substr(comma + 2, base - comma - 2)) + '+' +
                 line.substr(digits, line.find(' ', digits) - digits);
  const std::size_t name = line.find(", ", digits);
  if (name != std::string::npos) frame.name = FunctionName(line.substr(name + 2));
  return true;
}

/// "  cl!Function()+0x12", as cl writes it behind an internal error. Of what raises it nothing can
/// be learnt.
bool ParseClFrame(const std::string& line, StackFrame& frame) {
  const std::size_t mark = line.find('!');
  const std::size_t call = line.find("()+0x", std::min(mark, line.size()));
  if (line.compare(0, 2, "  ") != 0 || call == std::string::npos) return false;
  const std::string function = line.substr(mark + 1, call - mark - 1);
  frame.name = function + line.substr(call + 2);
  return function != "RaiseException";
}

}  // namespace

bool ParseFrame(const std::string& line, StackFrame& frame) {
  return ParseWindowsFrame(line, frame) || ParseNamedFrame(line, frame = StackFrame()) ||
         ParseSymbolFrame(line, frame = StackFrame()) ||
         ParseListedFrame(line, frame = StackFrame()) || ParseClFrame(line, frame = StackFrame());
}

bool ParsePlaceInCl(const std::string& line, StackFrame& frame) {
  const std::size_t open = line.find_first_not_of(' ');
  const std::size_t quote = line.find_first_of("'\"");
  const std::size_t end = quote == std::string::npos ? quote : line.find(line[quote], quote + 1);
  const std::size_t digit = line.find_first_of("0123456789", std::min(end, line.size()));
  if (digit == std::string::npos || line[open] != '(') return false;
  frame.name = LastPart(line.substr(quote + 1, end - quote - 1)) + ", line " +
               line.substr(digit, line.find_first_not_of("0123456789", digit) - digit);
  return true;
}

}  // namespace snipwell
