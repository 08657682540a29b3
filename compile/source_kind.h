#pragma once

#include <string>

namespace snipwell {

/// What a compiler takes a file for.
enum class SourceKind {
  None,  ///< an object, a library, or a source of another language
  C,
  Cpp,
  Header,  ///< which compilers make a precompiled one of
  PrecompiledHeader,
  Module,  ///< an interface of a C++ module, or one that is compiled already
};

/// A kind, and whether files of that kind are preprocessed already.
struct SourceType {
  SourceKind kind = SourceKind::None;
  bool isPreprocessed = false;
};

/// By the suffix of a file's name. `anyCase`: capital letters do not count, as for cl.
SourceType TypeBySuffix(const std::string& fileName, bool anyCase);

/// By a language as "-x" names it.
SourceType TypeByLanguage(const std::string& language);

}  // namespace snipwell
