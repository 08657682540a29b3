#include "platform/environment_windows.h"

#include <windows.h>

#include <cwchar>
#include <map>

#include "platform/unicode_windows.h"

namespace snipwell::platform {

namespace {

/// Names of variables differ in more than capitals.
struct NameOrder {
  bool operator()(const std::wstring& one, const std::wstring& other) const {
    return ::CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_LESS_THAN;
  }
};

using Variables = std::map<std::wstring, std::wstring, NameOrder>;

/// A name may begin with "=": the system keeps the current folder of each drive under such names.
void Set(Variables& variables, const std::wstring& variable) {
  variables[variable.substr(0, variable.find(L'=', 1))] = variable;
}

Variables OwnVariables() {
  Variables variables;
  wchar_t* const block = ::GetEnvironmentStringsW();
  for (const wchar_t* next = block; *next != L'\0'; next += std::wcslen(next) + 1) {
    Set(variables, next);
  }
  ::FreeEnvironmentStringsW(block);
  return variables;
}

}  // namespace

std::wstring EnvironmentBlock(const ChildCommand& command) {
  Variables variables = OwnVariables();
  // The tools know errors by their English names.
  for (const wchar_t* english : {L"LANGUAGE=en", L"VSLANG=1033"}) Set(variables, english);
  for (const wchar_t* name : {L"TMPDIR=", L"TMP=", L"TEMP="}) {
    if (command.temporaryFolder.empty()) break;
    Set(variables, name + ToWide(command.temporaryFolder));
  }
  for (const std::string& variable : command.environment) Set(variables, ToWide(variable));
  std::wstring block;
  for (const auto& [name, variable] : variables) block += variable + L'\0';
  return block + L'\0';
}

}  // namespace snipwell::platform
