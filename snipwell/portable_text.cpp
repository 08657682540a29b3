#include "snipwell/portable_text.h"

#include <cstddef>
#include <utility>

namespace snipwell {

namespace {

/// Where libstdc++ asks the compiler for all numbers below another one, and how C++14 says it.
struct NumberPack {
  std::string_view written;
  std::string_view portable;
  std::string_view helper;  // stands before the template that it is written in
};

constexpr std::string_view kSequence =
    "template <unsigned long N, unsigned long... All> struct __numbers_below : "
    "__numbers_below<N - 1, N - 1, All...> {}; "
    "template <unsigned long... All> struct __numbers_below<0, All...> { "
    "template <typename T> using sequence = integer_sequence<T, T(All)...>; }; ";
constexpr std::string_view kTuple =
    "template <unsigned long N, unsigned long... All> struct __indices_below : "
    "__indices_below<N - 1, N - 1, All...> {}; "
    "template <unsigned long... All> struct __indices_below<0, All...> { "
    "using tuple = _Index_tuple<All...>; }; ";

constexpr NumberPack kNumberPacks[] = {
    {"integer_sequence<_Tp, __integer_pack(_Num)...>",
     "typename __numbers_below<_Num>::template sequence<_Tp>", kSequence},
    {"__make_integer_seq<integer_sequence, _Tp, _Num>",
     "typename __numbers_below<_Num>::template sequence<_Tp>", kSequence},
    {"_Index_tuple<__integer_pack(_Num)...>", "typename __indices_below<_Num>::tuple", kTuple},
    {"__make_integer_seq<_IdxTuple, size_t, _Num>", "typename __indices_below<_Num>::tuple",
     kTuple},
};

/// What only one of them has built in, or only newer ones. The traits are but alike; who uses them
/// is told by the compilers.
constexpr std::pair<std::string_view, std::string_view> kBuiltins[] = {
    {"__builtin_operator_new", "::operator new"},
    {"__builtin_operator_delete", "::operator delete"},
    {"__is_layout_compatible(_Tp, _Up)", "__is_same(_Tp, _Up)"},
    {"__is_pointer_interconvertible_base_of(_Base, _Derived)", "__is_base_of(_Base, _Derived)"},
    {"_Tp, __float80", "_Tp, long double"},
};

void ReplacePack(std::string& text, const NumberPack& pack) {
  const std::size_t place = text.find(pack.written);
  const std::size_t head = place == std::string::npos ? place : text.rfind("template", place);
  if (head == std::string::npos) return;
  text.replace(place, pack.written.size(), pack.portable);
  text.insert(head, pack.helper);
}

/// The text with each `written`, and what follows it to `end`, as `portable`.
std::string Replaced(const std::string& text, std::string_view written, std::string_view end,
                     std::string_view portable) {
  std::string made;
  std::size_t from = 0;
  for (std::size_t at = text.find(written); at != std::string::npos;
       at = text.find(written, from)) {
    const std::size_t stop = text.find(end, at + written.size());
    if (stop == std::string::npos) break;
    made.append(text, from, at - from).append(portable);
    from = stop + end.size();
  }
  return made.append(text, from);
}

}  // namespace

std::optional<std::string> PortableText(std::string_view preprocessed) {
  std::string text = Replaced(std::string(preprocessed), "__malloc__ (", ")", "__malloc__");
  for (const auto& [written, portable] : kBuiltins) text = Replaced(text, written, "", portable);
  for (const NumberPack& pack : kNumberPacks) ReplacePack(text, pack);
  if (text == preprocessed) return std::nullopt;
  return text;
}

}  // namespace snipwell
