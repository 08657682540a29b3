#pragma once

#include <string_view>

namespace snipwell {

/// Where an option has its value.
enum class OptionValue {
  None,    ///< it has none
  Next,    ///< in the next word
  Joined,  ///< in the same word, maybe empty
  Either,  ///< in the same word, or in the next one when nothing follows the name
  Name,    ///< as `Either`, but nothing with a slash: "/Users/me/x.c" is a file
  Number,  ///< digits in the same word, or nothing
  Both,    ///< a part in the same word and the rest in the next one
};

/// What an option means for compiling one source again and again.
enum class OptionRole {
  Compile,            ///< decides how it compiles
  Preprocess,         ///< matters only as long as the source is not preprocessed
  Drop,               ///< writes another file, is for the linker, or decides how messages look
  Action,             ///< says how far to compile: "-c", "-S"
  Language,           ///< names the language of sources
  Source,             ///< its value is a source ("/Tp")
  Wrapper,            ///< its value is an option for the compiler behind the driver ("-Xclang")
  LinkerRest,         ///< all words behind it are for the linker ("/link")
  PrecompiledHeader,  ///< cannot be taken along: reads or makes a precompiled header
  Module,             ///< cannot be taken along: needs or makes modules
};

/// Who knows an option; to be added up.
enum OptionDialect : unsigned {
  kDriver = 1,    ///< gcc, g++, clang, clang++
  kFrontEnd = 2,  ///< clang -cc1
  kCl = 4,        ///< cl, clang-cl: the rows that begin with "/", whose options may begin with "-"
};

/// What is known of an option, or of all that begin alike.
struct OptionRow {
  std::string_view name;
  OptionValue value;
  OptionRole role;
  unsigned dialects;
};

/// The row of the longest name that is the word, or its beginning where the value may be joined.
/// Null when there is none: then the word is an option of its own that decides how it compiles, or
/// no option.
const OptionRow* FindOption(std::string_view word, unsigned dialects);

/// True when the value of the option `word` of the row, or a part of it, is in the next word.
bool TakesNextWord(const OptionRow& row, std::string_view word);

}  // namespace snipwell
