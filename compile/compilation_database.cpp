#include "compile/compilation_database.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <numeric>
#include <optional>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "compile/whole_file.h"
#include "compile/windows_path.h"
#include "compile/word_splitting.h"

namespace snipwell {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

struct Entry {
  std::string source;  // from the root
  std::string key;     // the same for all spellings of the source
  std::string folder;
  bool isWindows;
  const json* fields;
};

/// A text among the fields of an entry; empty when there is none.
std::string Text(const json& fields, const char* name) {
  const auto found = fields.find(name);
  return found != fields.end() && found->is_string() ? found->get<std::string>() : "";
}

std::string Normal(const fs::path& path) { return path.lexically_normal().generic_string(); }

Entry EntryOf(const json& fields, const std::string& file, const fs::path& databaseFolder) {
  std::string folder = Text(fields, "directory");
  if (!IsWindowsPath(folder)) folder = (databaseFolder / folder).string();
  if (IsWindowsPath(folder) || IsWindowsPath(file)) {
    const std::string source = WindowsPathIn(folder, file);
    return {source, WindowsKey(source), folder, true, &fields};
  }
  const std::string source = Normal(fs::path(folder) / file);
  return {source, source, folder, false, &fields};
}

std::vector<Entry> EntriesOf(const json& list, const fs::path& databaseFolder) {
  std::vector<Entry> entries;
  for (const json& fields : list) {
    const std::string file = fields.is_object() ? Text(fields, "file") : "";
    if (!file.empty()) entries.push_back(EntryOf(fields, file, databaseFolder));
  }
  return entries;
}

bool EndsWithPath(const std::string& path, const std::string& ending) {
  return path.size() > ending.size() && path[path.size() - ending.size() - 1] == '/' &&
         path.compare(path.size() - ending.size(), ending.size(), ending) == 0;
}

std::string FileName(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

/// The fewest letters to put in, take out or change to make one text the other.
int Distance(const std::string& one, const std::string& other) {
  std::vector<int> row(other.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 0; i < one.size(); ++i) {
    int diagonal = row[0]++;
    for (std::size_t j = 0; j < other.size(); ++j) {
      const int changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

/// The sources whose names are most like that of the wanted one, the closest first.
std::string NearNames(const std::vector<Entry>& entries, const std::string& wanted) {
  constexpr int kFarthest = 3;
  constexpr std::size_t kMost = 3;
  std::set<std::pair<int, std::string>> near;
  for (const Entry& entry : entries) {
    const int distance = Distance(FileName(entry.source), FileName(wanted));
    if (distance <= kFarthest) near.insert({distance, entry.source});
    if (near.size() > kMost) near.erase(std::prev(near.end()));
  }
  std::string names;
  for (const auto& [distance, name] : near) names += (names.empty() ? "" : ", ") + name;
  return names;
}

/// Programs of Windows take their command line apart by rules of their own.
std::vector<std::string> WordsOf(const json& fields, bool isWindows) {
  const auto arguments = fields.find("arguments");
  if (arguments == fields.end() || !arguments->is_array()) {
    return SplitWords(Text(fields, "command"), isWindows ? Quoting::Windows : Quoting::Shell);
  }
  std::vector<std::string> words;
  for (const json& word : *arguments) {
    if (word.is_string()) words.push_back(word.get<std::string>());
  }
  return words;
}

/// Looks the source up: its path first, then the end of its path.
class Lookup {
 public:
  Lookup(std::vector<Entry> all, const std::string& wanted)
      : entries(std::move(all)), source(wanted) {}

  CommandWords Run(const std::string& database) {
    CommandWords found;
    const Entry* const entry = Find(found.complaint);
    if (entry != nullptr) {
      found.words = WordsOf(*entry->fields, entry->isWindows);
      found.folder = entry->folder;
    } else if (found.complaint.empty()) {
      const std::string names = NearNames(entries, Normal(source));
      found.complaint = source + " is not among the " + std::to_string(entries.size()) +
                        " sources of " + database + ": name one that is" +
                        (names.empty() ? "." : ", such as " + names + ".");
    }
    return found;
  }

 private:
  const Entry* Find(std::string& complaint) const {
    std::error_code error;
    const std::string path = IsWindowsPath(source) ? source : fs::absolute(source, error).string();
    const std::string keys[] = {Normal(path), WindowsKey(path)};
    const auto same = [&](const Entry& entry) { return entry.key == keys[entry.isWindows]; };
    const auto exact = std::find_if(entries.begin(), entries.end(), same);
    return exact != entries.end() ? &*exact : FindEnding(complaint);
  }

  const Entry* FindEnding(std::string& complaint) const {
    const Entry* found = nullptr;
    const std::string endings[] = {Normal(source), WindowsKey(source)};
    for (const Entry& entry : entries) {
      if (!EndsWithPath(entry.key, endings[entry.isWindows])) continue;
      if (found == nullptr) found = &entry;
      if (found->key == entry.key) continue;
      complaint = "Several sources end in " + source + " (" + found->source + ", " + entry.source +
                  "): name one with more of its path.";
      return nullptr;
    }
    return found;
  }

  std::vector<Entry> entries;
  std::string source;
};

CommandWords Complaint(const std::string& sentence) { return {{}, "", sentence}; }

}  // namespace

CommandWords FindInDatabase(const std::string& database, const std::string& source) {
  std::error_code error;
  fs::path file = fs::absolute(database, error).lexically_normal();
  if (fs::is_directory(file, error)) file /= "compile_commands.json";
  const std::optional<std::string> text = ReadWholeFile(file.string());
  if (!text.has_value()) {
    return Complaint(file.string() + " cannot be read: let the build write it (CMake:" +
                     " -DCMAKE_EXPORT_COMPILE_COMMANDS=ON; others: bear -- make).");
  }
  const json list = json::parse(*text, nullptr, false);
  if (!list.is_array()) {
    return Complaint(file.string() + " is no compilation database: let the build write it again.");
  }
  return Lookup(EntriesOf(list, file.parent_path()), source).Run(file.string());
}

}  // namespace snipwell
