// The files that a reduction leaves: the result, the report, programs that crash otherwise.

#include "snipwell/result_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "snipwell/exit_status.h"
#include "snipwell/other_crashes.h"
#include "tests/unit/temp_folder.h"

namespace snipwell {
namespace {

namespace fs = std::filesystem;

const char kReport[] = "<!-- snipwell report -->\nof an earlier run\n";

struct Row {
  const char* source;
  const char* given;
  std::vector<std::vector<std::string>> files;  // names and texts
  bool mayWriteOver;
  const char* expected;  // names, or the status of a refusal
};

std::string NamesOf(const Row& row) {
  const TempFolder folder;
  const CurrentFolder current(folder);
  fs::create_directory("d.e");
  folder.Write("d.e/source", "");
  for (const auto& file : row.files) folder.Write(file[0], file[1]);
  try {
    const ResultFile result(row.source, row.given, row.mayWriteOver);
    const std::string names =
        result.Name() + ' ' + result.ReportName() + ' ' + result.NameBeside("other", 2);
    return fs::path(names).generic_string() + (result.HasEarlier() ? " earlier" : "");
  } catch (const RunEnd& end) {
    return "refused " + std::to_string(end.Status());
  }
}

TEST(ResultFile, HasANameThatIsFreeOrItsOwn) {
  const Row rows[] = {
      {"a.cpp", "", {}, false, "a.min.cpp a.report.md a.other-2.cpp"},
      {"d/a.b.c", "", {}, false, "d/a.b.min.c d/a.b.report.md d/a.b.other-2.c"},
      {"d.e/source", "", {}, false, "d.e/source.min d.e/source.report.md d.e/source.other-2"},
      {"a.cpp", "r/b.ii", {}, false, "r/b.ii r/b.report.md r/b.other-2.ii"},
      {"a.c", "", {{"a.min.c", "x"}}, false, "refused 4"},
      {"a.c", "", {{"a.report.md", "x"}}, false, "refused 4"},
      {"a.c",
       "",
       {{"a.min.c", "x"}, {"a.report.md", "x"}},
       true,
       "a.min.c a.report.md a.other-2.c"},
      {"a.c",
       "",
       {{"a.min.c", "x"}, {"a.report.md", kReport}},
       false,
       "a.min.c a.report.md a.other-2.c earlier"},
      {"a.c", "", {{"a.report.md", kReport}}, false, "a.min.c a.report.md a.other-2.c"},
      {"a.c", "./a.c", {{"a.c", "x"}}, true, "refused 2"},
      {"d.e/source", "d.e/../d.e/source", {}, true, "refused 2"},
  };
  for (const Row& row : rows) EXPECT_EQ(NamesOf(row), row.expected) << row.source << row.given;
}

TEST(ResultFile, StaysWhenItCannotBeWritten) {
  const TempFolder folder;
  ResultFile result(folder.NameOf("a.c"), "", false);
  result.Write("first");
  EXPECT_EQ(folder.Read("a.min.c"), "first");
  EXPECT_EQ(folder.Read("a.report.md").substr(0, 24), "<!-- snipwell report -->");
  fs::create_directories(folder.Path() / "a.min.c.new" / "in the way");
  EXPECT_THROW(result.Write("second"), RunEnd);
  EXPECT_EQ(folder.Read("a.min.c"), "first");
}

TEST(OtherCrashes, KeepTheSmallestOfEach) {
  const TempFolder folder;
  const ResultFile result(folder.NameOf("a.c"), "", false);
  folder.Write("a.other-1.c", "the user's");
  OtherCrashes crashes;
  const auto note = [&](const std::string& headline, const std::string& text) {
    const Place place = {folder.Path(), folder.Path(), folder.Write("program", text)};
    crashes.Note({FailureKind::Crash, headline, false}, place, result);
  };
  note("in f", "long text");
  note("in g", "other");
  note("in f", "short");
  note("in f", "longer again");
  EXPECT_EQ(folder.Read("a.other-1.c"), "the user's");
  EXPECT_EQ(folder.Read("a.other-2.c"), "short");
  EXPECT_EQ(folder.Read("a.other-3.c"), "other");
  for (int i = 0; i < 20; ++i) note("in h" + std::to_string(i), "text");
  EXPECT_EQ(crashes.All().size(), OtherCrashes::kMost);
  EXPECT_EQ(crashes.All().front().headline, "in f");
  EXPECT_EQ(crashes.All().front().file, folder.NameOf("a.other-2.c"));
}

}  // namespace
}  // namespace snipwell
