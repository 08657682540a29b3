#include "snipwell/line_map.h"

#include <algorithm>
#include <utility>

namespace snipwell {

LineMap::LineMap(const std::string& name) { AddFile(name, false); }

LineMap::LineMap(const std::string& name, std::string_view text) : LineMap(name) {
  std::uint32_t line = 0;
  for (std::size_t begin = 0; begin < text.size();) {
    AddLine(begin, {0, ++line});
    begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
  }
}

LineMap::Place LineMap::At(std::size_t offset) const {
  if (begins.empty()) return {0, 1};
  const auto line = std::upper_bound(begins.begin() + 1, begins.end(), offset) - begins.begin() - 1;
  const auto isBehind = [](std::ptrdiff_t textLine, const Run& run) {
    return textLine < static_cast<std::ptrdiff_t>(run.textLine);
  };
  const Run& run = *(std::upper_bound(runs.begin(), runs.end(), line, isBehind) - 1);
  return {run.file, run.line + static_cast<std::uint32_t>(line) - run.textLine};
}

std::size_t LineMap::AddFile(const std::string& name, bool isSystem) {
  const auto [entry, isNew] = indexes.emplace(name, files.size());
  if (isNew) files.push_back({name, false});
  files[entry->second].isSystem |= isSystem;
  return entry->second;
}

void LineMap::AddLine(std::size_t begin, Place place) {
  const auto textLine = static_cast<std::uint32_t>(begins.size());
  const bool goesOn = !runs.empty() && runs.back().file == place.file &&
                      runs.back().line + textLine - runs.back().textLine == place.line;
  if (!goesOn) runs.push_back({textLine, static_cast<std::uint32_t>(place.file), place.line});
  begins.push_back(static_cast<std::uint32_t>(begin));
}

namespace {

/// True for the names that compilers give to text of their own.
bool IsMadeUp(const std::string& name) {
  return name == "<built-in>" || name == "<command-line>" || name == "<command line>";
}

/// The name as the user would type it in `currentFolder`.
std::string ShownName(const std::string& name, const std::filesystem::path& currentFolder) {
  const std::filesystem::path full = (currentFolder / name).lexically_normal();
  const std::filesystem::path inside = full.lexically_relative(currentFolder.lexically_normal());
  if (!inside.empty() && *inside.begin() != ".." && inside != ".") return inside.generic_string();
  return std::filesystem::path(name).lexically_normal().generic_string();
}

/// What is left of the files, by the names shown: a file can have several in the map.
class Collection {
 public:
  Collection(const LineMap& lineMap, const std::filesystem::path& folder)
      : map(lineMap), currentFolder(folder), indexes(lineMap.Files().size(), kUnknown) {}

  void Add(LineMap::Place place) {
    if (place.line == 0 || IsMadeUp(map.Files()[place.file].name)) return;
    if (indexes[place.file] == kUnknown) indexes[place.file] = IndexOf(map.Files()[place.file]);
    found[indexes[place.file]].lines.push_back(place.line);
  }

  std::vector<FileLines> Take() {
    for (FileLines& file : found) {
      std::sort(file.lines.begin(), file.lines.end());
      file.lines.erase(std::unique(file.lines.begin(), file.lines.end()), file.lines.end());
    }
    std::stable_partition(found.begin(), found.end(),
                          [](const FileLines& f) { return !f.isSystem; });
    return std::move(found);
  }

 private:
  static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

  std::size_t IndexOf(const LineMap::File& file) {
    const std::string name = ShownName(file.name, currentFolder);
    const auto [entry, isNew] = names.emplace(name, found.size());
    if (isNew) found.push_back({name, file.isSystem, {}});
    return entry->second;
  }

  const LineMap& map;
  const std::filesystem::path& currentFolder;
  std::vector<std::size_t> indexes;  // into `found`, for each file of the map
  std::map<std::string, std::size_t> names;
  std::vector<FileLines> found;
};

}  // namespace

std::vector<FileLines> LinesLeft(const LineMap& map, const std::vector<std::uint32_t>& origins,
                                 const std::filesystem::path& currentFolder) {
  Collection collection(map, currentFolder);
  for (const std::uint32_t origin : origins) collection.Add(map.At(origin));
  return collection.Take();
}

std::vector<LineRange> RangesOf(const std::vector<FileLines>& files) {
  std::vector<LineRange> ranges;
  for (const FileLines& file : files) {
    const std::size_t before = ranges.size();
    for (const std::uint32_t line : file.lines) {
      const bool goesOn = ranges.size() > before && line - ranges.back().last <= 2;
      if (!goesOn) ranges.push_back({file.name, line, line, file.isSystem});
      ranges.back().last = line;
    }
  }
  return ranges;
}

std::string NameOf(const LineRange& range) {
  const std::string name = range.file + ':' + std::to_string(range.first);
  return range.last == range.first ? name : name + '-' + std::to_string(range.last);
}

}  // namespace snipwell
