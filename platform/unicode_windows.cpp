#include "platform/unicode_windows.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <locale>

namespace snipwell::platform {

namespace {

std::wstring Converted(std::string_view text, UINT codePage, DWORD flags) {
  const int size = static_cast<int>(text.size());
  const int length = ::MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(std::max(0, length)), L'\0');
  ::MultiByteToWideChar(codePage, flags, text.data(), size, wide.data(), length);
  return wide;
}

std::wstring FullName(const std::wstring& name) {
  std::wstring full(::GetFullPathNameW(name.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      ::GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

}  // namespace

std::wstring ToWide(std::string_view text) {
  std::wstring wide = Converted(text, CP_UTF8, MB_ERR_INVALID_CHARS);
  return wide.empty() ? Converted(text, CP_ACP, 0) : wide;
}

std::string ToUtf8(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const auto convert = [&](char* to, int room) {
    return ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, to, room, nullptr, nullptr);
  };
  std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(narrow.data(), static_cast<int>(narrow.size()));
  return narrow;
}

std::wstring SystemName(std::string_view name) {
  constexpr std::size_t kLongest = 240;  // folders need room for a short name behind them
  const std::wstring wide = ToWide(name);
  const std::wstring full = FullName(wide);
  if (full.size() < kLongest || full.compare(0, 4, L"\\\\?\\") == 0) return wide;
  if (full.compare(0, 2, L"\\\\") == 0) return L"\\\\?\\UNC" + full.substr(1);
  return L"\\\\?\\" + full;
}

std::string Variable(const wchar_t* name) {
  std::wstring value(::GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
  return ToUtf8(value);
}

}  // namespace snipwell::platform

/// Stands in the place of std::codecvt<wchar_t, char, std::mbstate_t>::do_in (see CMakeLists.txt),
/// with which std::filesystem makes wide names: the C++ library's own takes each byte for a
/// character, but gives names back as UTF-8. There is room: no text has more wide characters than
/// bytes.
extern "C" std::codecvt_base::result WidenName(
    const void*, std::mbstate_t&, const char*, const char*, const char*&, wchar_t*, wchar_t*,
    wchar_t*&) asm("__wrap__ZNKSt7codecvtIwciE5do_inERiPKcS3_RS3_PwS5_RS5_");
extern "C" std::codecvt_base::result WidenName(const void* /*codecvt*/, std::mbstate_t& /*state*/,
                                               const char* from, const char* fromEnd,
                                               const char*& fromNext, wchar_t* to,
                                               wchar_t* /*toEnd*/, wchar_t*& toNext) {
  const std::wstring wide =
      snipwell::platform::ToWide({from, static_cast<std::size_t>(fromEnd - from)});
  toNext = std::copy(wide.begin(), wide.end(), to);
  fromNext = fromEnd;
  return std::codecvt_base::ok;
}
