// Files as the tool reads and writes them: the reader, the writer and `StringArray::ReadFile`.

#include <gtest/gtest.h>

#include <iostream>

#include "platform/files.h"
#include "printed.h"
#include "temp_folder.h"
#include "text/file_helpers.h"
#include "texts.h"

namespace snipwell {

using namespace std::string_literals;

TEST(ReadFile, SplitsAnArgumentFileAtSingleSpaces) {
  const struct {
    std::string file, pieces;
  } rows[] = {{" a  b\nc ", "[a][bc]"},
              {"a\r\nb\rc", "[ab\rc]"},
              {"\n\n", ""},
              {"", ""},
              {"a\t\"\\b \xff\0\x80"s, "[a\t\"\\b][\xff\0\x80]"s}};
  const TempFolder folder;
  for (const auto& row : rows) {
    StringArray array({"old"});
    const Capture output(std::cout);
    EXPECT_TRUE(array.ReadFile(folder.Write("file", row.file), ' ', '\0', false));
    EXPECT_EQ(Pieces(array), row.pieces) << row.file;
  }
}

TEST(ReadFile, TakesCriteriaFromBetweenDoubleQuotes) {
  const struct {
    std::string file, pieces;
  } rows[] = {{R"("a\"b"  junk  "c\\" "\d" " e  f ")", "[a\"b][c\\][d][ e  f ]"},
              {R"(\"a" \\"b")", "[a][b]"},
              {"\"a\r\nb\rc\\\r\nd\"\r\n\"\xff\0\"\n"s, "[a\nb\rc\nd][\xff\0]"s},
              {R"("" "a""b" "")", "[a][b]"},
              {R"("a" "b)", "[a][b]"},
              {R"("a\)", "[a]"},
              {"remark\n", ""}};
  const TempFolder folder;
  for (const auto& row : rows) {
    StringArray array({"old"});
    const Capture output(std::cout);
    EXPECT_TRUE(array.ReadFile(folder.Write("file", row.file), '"', '\\', true)) << row.file;
    EXPECT_EQ(Pieces(array) + output.Text(), row.pieces) << row.file;
  }
}

TEST(ReadFile, KeepsTheOldContentsWhenTheFileCannotBeOpened) {
  const TempFolder folder;
  StringArray array({"old"});
  EXPECT_FALSE(array.ReadFile(folder.NameOf("missing"), ' ', '\0', false));
  EXPECT_FALSE(array.ReadFile(folder.NameOf(""), '"', '\\', true)) << "a folder";
  EXPECT_EQ(Pieces(array), "[old]");
}

TEST(CopyTextFile, LeavesTwoNamesOfOneFileAlone) {
  const TempFolder folder;
  const std::string name = folder.Write("file", "text");
  EXPECT_TRUE(CopyTextFile(name, folder.NameOf("./file")));
  EXPECT_EQ(folder.Read("file"), "text");
  const Capture error(std::cerr);
  EXPECT_FALSE(CopyTextFile("missing", folder.NameOf("missing/file"))) << "no file is no such two";
}

TEST(TextReader, JoinsCarriageReturnAndLineFeedInForeignText) {
  constexpr std::size_t block = 64 * 1024;
  const TempFolder folder;
  const std::pair<std::string, std::string> rows[] = {
      {"\r\nb\r\n", "\nb\n"}, {"\r\r\n", "\r\n"}, {"\n\r", "\n\r"}, {"\rb", "\rb"}, {"\r", "\r"}};
  // At the start of a text, and at the seam of two blocks of the reader.
  for (const std::size_t length : {std::size_t{0}, block - 2, block - 1, block, 2 * block - 1}) {
    for (const auto& [end, joinedEnd] : rows) {
      const std::string bytes = std::string(length, '\xff') + end;
      const std::string joined = std::string(length, '\xff') + joinedEnd;
      const std::string file = folder.Write("file", bytes);
      const std::string& native = platform::kTextHasCarriageReturns ? joined : bytes;
      EXPECT_TRUE(ReadAll(TextReader(file, LineEnds::Foreign)) == joined) << length << end;
      EXPECT_TRUE(ReadAll(TextReader(file, LineEnds::Native)) == native) << length << end;
      EXPECT_TRUE(ReadAll(TextReader::OverMemory(bytes, LineEnds::Foreign)) == joined) << length;
    }
  }
}

TEST(TextReader, IsAtItsEndOnlyAfterAReadThatFoundNothing) {
  TextReader in = TextReader::OverMemory("a");
  char c = '\0';
  EXPECT_TRUE(!in.IsExhausted() && in.Read(c) && in.IsExhausted() && !in.AtEnd());
  EXPECT_TRUE(!in.Read(c) && in.AtEnd() && !in.Failed() && c == 'a');
  TextReader missing(std::string("missing"), LineEnds::Native);
  EXPECT_TRUE(!missing.IsOpen() && missing.AtEnd() && missing.Failed() && !missing.Read(c));
}

TEST(TextWriter, WritesLineEndsOfTheSystemOrFails) {
  const std::string native = platform::kTextHasCarriageReturns ? "a\r\n" : "a\n";
  const std::string block(100'000, 'x');
  const TempFolder folder;
  const std::string name = folder.Write("file", block + block);
  TextWriter out(name);
  for (const char c : block + "a\n") out.Put(c);
  EXPECT_TRUE(out.Close());
  TextWriter more = TextWriter::Appending(name);
  more.Put("a\n");
  EXPECT_TRUE(more.Close());
  EXPECT_TRUE(folder.Read("file") == block + native + native);
  TextWriter nowhere(folder.NameOf("missing/file"));
  nowhere.Put('a');
  EXPECT_TRUE(!nowhere.IsOpen() && nowhere.Failed() && !nowhere.Close());
}

}  // namespace snipwell
