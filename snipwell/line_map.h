#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace snipwell {

/// Where the lines of a text stood in the user's files. It takes four bytes a line, and a few more
/// wherever the next line is not the next line of the same file.
class LineMap {
 public:
  struct File {
    std::string name;       ///< as the preprocessor gives it, without escapes
    bool isSystem = false;  ///< the preprocessor calls it a system header
  };

  struct Place {
    std::size_t file;    ///< index into `Files`
    std::uint32_t line;  ///< from 1; 0 is what compilers give some lines that nobody has written
  };

  /// The map of an empty text, which is to come from the file `name`, the first of `Files`.
  explicit LineMap(const std::string& name);
  /// The map of a text that is the file `name` as it stands.
  LineMap(const std::string& name, std::string_view text);

  const std::vector<File>& Files() const { return files; }
  /// Where the byte at `offset` stood. Behind the end of the text that is in its last line.
  Place At(std::size_t offset) const;

  /// The index of a file, which is added when it is new.
  std::size_t AddFile(const std::string& name, bool isSystem);
  /// Adds the line of the text that begins at `begin`. Lines are added from first to last.
  void AddLine(std::size_t begin, Place place);

 private:
  /// Lines of the text that follow each other in one file.
  struct Run {
    std::uint32_t textLine;  // the first of them, from 0
    std::uint32_t file;
    std::uint32_t line;
  };

  std::vector<File> files;
  std::map<std::string, std::size_t> indexes;
  std::vector<std::uint32_t> begins;
  std::vector<Run> runs;
};

/// A text to be reduced, and where its lines stood.
struct MappedText {
  std::string text;
  LineMap map;
};

/// Takes the line markers out of what a preprocessor wrote: `# 12 "name" 1 3`, and `#line 12
/// "name"`. Of several empty lines that follow each other one is kept. What only looks like a
/// marker or an empty line, within a raw string or a comment, stays. `name` is the file of the
/// lines before the first marker. The text must be shorter than 4 GB.
MappedText WithoutMarkers(std::string_view preprocessed, const std::string& name);

/// What is left of one file.
struct FileLines {
  std::string name;
  bool isSystem;
  std::vector<std::uint32_t> lines;  ///< from 1, sorted, each once
};

/// The lines on which the bytes of the mapped text at `origins` stood: the user's files in the
/// order in which they appear, then system headers. Names below `currentFolder`, which is absolute,
/// are given relative to it. What the compiler made up itself is left out.
std::vector<FileLines> LinesLeft(const LineMap& map, const std::vector<std::uint32_t>& origins,
                                 const std::filesystem::path& currentFolder);

/// Lines of one file that follow each other.
struct LineRange {
  std::string file;
  std::uint32_t first;
  std::uint32_t last;
  bool isSystem;
};

/// The ranges of these lines, file by file. A gap of one line does not end a range.
std::vector<LineRange> RangesOf(const std::vector<FileLines>& files);

/// "src/pool.cpp:40-43", or "src/pool.cpp:40" for one line.
std::string NameOf(const LineRange& range);

}  // namespace snipwell
