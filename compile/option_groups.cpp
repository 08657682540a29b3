#include "compile/option_groups.h"

#include <utility>

namespace snipwell {

namespace {

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

/// What cl calls "/D" and "-D", by its name in the table.
std::string ClName(const std::string& word) { return "/" + word.substr(1); }

class Grouping {
 public:
  Grouping(const std::vector<std::string>& all, CompilerStyle whose, bool ofFrontEnd)
      : words(all), style(whose), dialects(ofFrontEnd ? kFrontEnd : kDriver) {}

  std::vector<OptionGroup> Run() {
    while (at < words.size()) {
      if (words[at] == "--" && !onlyFiles) {
        onlyFiles = true;
        ++at;
      } else {
        groups.push_back(Next());
      }
    }
    return std::move(groups);
  }

 private:
  OptionGroup Next() {
    OptionGroup group;
    const std::string& word = words[at];
    const OptionRow* const row = onlyFiles ? nullptr : Find(word);
    group.isFile = onlyFiles || IsFile(word, row);
    TakeWord(group);
    if (row == nullptr) return group;
    group.role = row->role;
    group.value = word.substr(row->name.size());
    if (TakesNextWord(*row, word)) TakeValue(group);
    if (row->role == OptionRole::Wrapper) TakeWrapped(group, *row);
    return group;
  }

  const OptionRow* Find(const std::string& word) const {
    if (word.empty()) return nullptr;
    if (!IsClStyle(style)) return FindOption(word, dialects);
    if (word[0] != '/' && word[0] != '-') return nullptr;
    const OptionRow* const row = FindOption(ClName(word), kCl);
    if (row != nullptr || style == CompilerStyle::Cl) return row;
    // clang-cl takes over these kinds of clang's own options.
    const bool known = word[0] == '-' && word.find_first_of("-Xfm", 1) == 1;
    return known ? FindOption(word, kDriver) : nullptr;
  }

  /// Of cl's options that are not in the table none has two slashes, but for one behind a colon.
  bool IsFile(const std::string& word, const OptionRow* row) const {
    if (row != nullptr) return false;
    if (word.empty() || word[0] == '-') return word.size() < 2;
    if (!IsClStyle(style) || word[0] != '/') return true;
    const std::size_t end = word.find_first_of("/:", 1);
    return end != std::string::npos && word[end] == '/';
  }

  void TakeWord(OptionGroup& group) { group.words.push_back(words[at++]); }

  void TakeValue(OptionGroup& group) {
    group.lacksValue = at == words.size();
    if (group.lacksValue) return;
    group.value = words[at];
    TakeWord(group);
  }

  /// "-Xclang -include-pch -Xclang file" is one option, and "/clang:-MF /clang:file" is another.
  void TakeWrapped(OptionGroup& group, const OptionRow& wrapper) {
    const bool joined = wrapper.value == OptionValue::Joined;
    const OptionRow* const row = FindOption(group.value, joined ? kDriver : kFrontEnd);
    group.role = OptionRole::Compile;
    if (row == nullptr) return;
    if (row->role != OptionRole::Action && row->role != OptionRole::Language)
      group.role = row->role;
    if (!TakesNextWord(*row, group.value)) return;
    if (at < words.size() && StartsWith(words[at], std::string(wrapper.name))) {
      TakeWord(group);
      if (!joined) TakeValue(group);
    }
  }

  const std::vector<std::string>& words;
  CompilerStyle style;
  unsigned dialects;
  std::size_t at = 0;
  bool onlyFiles = false;
  std::vector<OptionGroup> groups;
};

}  // namespace

std::vector<OptionGroup> GroupOptions(const std::vector<std::string>& arguments,
                                      CompilerStyle style, bool frontEnd) {
  return Grouping(arguments, style, frontEnd).Run();
}

}  // namespace snipwell
