#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "refine/edit.h"
#include "refine/program.h"

namespace snipwell {

/// The words at which a name stands, in the order of the text.
using Places = std::vector<std::uint32_t>;

/// The places of every name of a program, keywords included, in the order of the alphabet. The
/// views are good as long as nothing is put into the program's pool.
std::map<std::string_view, Places> PlacesOfNames(const Program& program);

/// Cuts that put a text in the place of each of the words, but for those in `spared`.
std::vector<Cut> EachReplaced(const Places& places, std::uint32_t text, Range spared = {0, 0});

/// True for the words of C and C++ that cannot be names.
bool IsKeyword(std::string_view name);

}  // namespace snipwell
