#include "snipwell/portable_text.h"

#include <cstddef>

namespace snipwell {

namespace {

/// Where libstdc++ asks gcc for a pack of the numbers below another one, and how C++14 says it.
struct NumberPack {
  std::string_view written;
  std::string_view portable;
  std::string_view helper;  // stands before the template that it is written in
};

constexpr NumberPack kNumberPacks[] = {
    {"integer_sequence<_Tp, __integer_pack(_Num)...>",
     "typename __numbers_below<_Num>::template sequence<_Tp>",
     "template <unsigned long N, unsigned long... All> struct __numbers_below : "
     "__numbers_below<N - 1, N - 1, All...> {}; "
     "template <unsigned long... All> struct __numbers_below<0, All...> { "
     "template <typename T> using sequence = integer_sequence<T, T(All)...>; }; "},
    {"_Index_tuple<__integer_pack(_Num)...>", "typename __indices_below<_Num>::tuple",
     "template <unsigned long N, unsigned long... All> struct __indices_below : "
     "__indices_below<N - 1, N - 1, All...> {}; "
     "template <unsigned long... All> struct __indices_below<0, All...> { "
     "using tuple = _Index_tuple<All...>; }; "},
};

bool ReplacePack(std::string& text, const NumberPack& pack) {
  const std::size_t place = text.find(pack.written);
  const std::size_t head = place == std::string::npos ? place : text.rfind("template", place);
  if (head == std::string::npos) return false;
  text.replace(place, pack.written.size(), pack.portable);
  text.insert(head, pack.helper);
  return true;
}

/// __malloc__ (free, 1)  ->  __malloc__
bool DropMallocArguments(std::string& text) {
  constexpr std::string_view kAttribute = "__malloc__ (";
  std::string kept;
  std::size_t from = 0;
  for (std::size_t at = text.find(kAttribute); at != std::string::npos;
       at = text.find(kAttribute, from)) {
    const std::size_t end = text.find(')', at);
    if (end == std::string::npos) break;
    kept.append(text, from, at + kAttribute.size() - 2 - from);
    from = end + 1;
  }
  if (from == 0) return false;
  text = kept.append(text, from);
  return true;
}

}  // namespace

std::optional<std::string> PortableText(std::string_view preprocessed) {
  std::string text(preprocessed);
  bool changed = DropMallocArguments(text);
  for (const NumberPack& pack : kNumberPacks) changed = ReplacePack(text, pack) || changed;
  if (!changed) return std::nullopt;
  return text;
}

}  // namespace snipwell
