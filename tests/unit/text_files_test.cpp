// Files as the tool reads and writes them: the reader, the writer and `StringArray::ReadFile`.

#include <gtest/gtest.h>

#include <iostream>

#include "platform/files.h"
#include "printed.h"
#include "temp_folder.h"
#include "texts.h"

namespace snipwell {

namespace {

using namespace std::string_literals;

/// Every byte once; no carriage return stands before a line feed.
std::string EveryByte() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

void PutAll(TextWriter& out, const std::string& text) {
  for (const char c : text) out.Put(c);
}

}  // namespace

TEST(ReadFile, SplitsAnArgumentFileAtSingleSpaces) {
  const auto trace = [](const std::string& before, const std::string& after) {
    return "temp before: " + before + "\ntemp after: " + after + "\n";
  };
  const struct {
    int flushes;
    std::string file, pieces, trace;
  } rows[] = {
      {4, "a b\nc", "[a][bc]", trace("a", "a") + trace("b\nc", "bc")},
      {2, "a\r\nb\rc", "[ab\rc]", trace("a\nb\rc", "ab\rc")},
      {6, "a  b", "[a][b]", trace("a", "a") + trace("", "") + trace("b", "b")},
      {4, "a ", "[a]", trace("a", "a") + trace("", "")},
      {2, "\n\n", "", trace("\n\n", "")},
      {2, "", "", trace("", "")},
      {2, "a\t\"\\b", "[a\t\"\\b]", trace("a\t\"\\b", "a\t\"\\b")},
      {2, "\xff\0\x80"s, "[\xff\0\x80]"s, trace("\xff\0\x80"s, "\xff\0\x80"s)},
  };
  const TempFolder folder;
  for (const auto& row : rows) {
    StringArray array({"old"});
    const Capture output(std::cout);
    EXPECT_TRUE(array.ReadFile(folder.Write("file", row.file), ' ', '\0', false));
    EXPECT_EQ(Pieces(array), row.pieces) << row.file;
    EXPECT_EQ(output.Text(), row.trace);
    EXPECT_EQ(output.Flushes(), row.flushes);
  }
}

TEST(ReadFile, TakesCriteriaFromBetweenDoubleQuotes) {
  const struct {
    const char* name;
    std::string file, pieces;
  } rows[] = {
      {"escaped quote, text between", R"("a\"b"  junk  "c")", "[a\"b][c]"},
      {"other escapes", R"("a\\" "b\n")", "[a\\][bn]"},
      {"escape outside quotes", R"(\"a" \\"b")", "[a][b]"},
      {"spaces stay", "\" a  b \"", "[ a  b ]"},
      {"line feeds stay", "\"a\nb\n\"\n\"c\"\n", "[a\nb\n][c]"},
      {"carriage returns", "\"a\r\nb\rc\\\r\nd\"\r\n", "[a\nb\rc\nd]"},
      {"empty quotes", R"("" "a""a" "")", "[a][a]"},
      {"never closed", R"("a" "b)", "[a][b]"},
      {"opened at the end", R"("a" ")", "[a]"},
      {"escape at the end", R"("a\)", "[a]"},
      {"no quotes", "remark\n", ""},
      {"any byte", "\"\xff\0\x80\""s, "[\xff\0\x80]"s},
  };
  const TempFolder folder;
  for (const auto& row : rows) {
    StringArray array({"old"});
    const Capture output(std::cout);
    EXPECT_TRUE(array.ReadFile(folder.Write("file", row.file), '"', '\\', true)) << row.name;
    EXPECT_EQ(Pieces(array), row.pieces) << row.name;
    EXPECT_EQ(output.Text(), "") << row.name;
  }
}

TEST(ReadFile, KeepsTheOldContentsWhenTheFileCannotBeOpened) {
  const TempFolder folder;
  StringArray array({"old"});
  const Capture output(std::cout);
  const Capture error(std::cerr);
  EXPECT_FALSE(array.ReadFile(folder.NameOf("missing"), ' ', '\0', false));
  EXPECT_FALSE(array.ReadFile(folder.NameOf(""), '"', '\\', true)) << "a folder";
  EXPECT_EQ(Pieces(array), "[old]");
  EXPECT_EQ(output.Text() + error.Text(), "");
}

TEST(TextReader, JoinsCarriageReturnAndLineFeedInForeignText) {
  constexpr std::size_t block = 64 * 1024;
  std::vector<std::pair<std::string, std::string>> rows = {
      {"a\r\nb\r\n", "a\nb\n"}, {"\r\n\r\n", "\n\n"}, {"\r\r\n", "\r\n"},        {"\n\r", "\n\r"},
      {"a\rb", "a\rb"},         {"\r", "\r"},         {EveryByte(), EveryByte()}};
  // Pairs and lone carriage returns at the seam of two blocks of the reader.
  for (const std::size_t length : {block - 2, block - 1, block, block + 1, 2 * block - 1}) {
    const std::string text(length, 'a');
    rows.insert(
        rows.end(),
        {{text + "\r\nb", text + "\nb"}, {text + "\rb", text + "\rb"}, {text + "\r", text + "\r"}});
  }
  const TempFolder folder;
  for (const auto& [bytes, joined] : rows) {
    const std::string file = folder.Write("file", bytes);
    const std::string& native = platform::kTextHasCarriageReturns ? joined : bytes;
    EXPECT_TRUE(ReadAll(TextReader(file, LineEnds::Foreign)) == joined) << bytes.size();
    EXPECT_TRUE(ReadAll(TextReader(file, LineEnds::Native)) == native) << bytes.size();
    EXPECT_TRUE(ReadAll(TextReader::OverMemory(bytes, LineEnds::Foreign)) == joined)
        << bytes.size();
    EXPECT_TRUE(ReadAll(TextReader::OverMemory(bytes)) == native) << bytes.size();
  }
}

TEST(TextReader, IsAtItsEndOnlyAfterAReadThatFoundNothing) {
  TextReader in = TextReader::OverMemory("a");
  char c = '\0';
  EXPECT_FALSE(in.IsExhausted());
  EXPECT_TRUE(in.Read(c));
  EXPECT_TRUE(in.IsExhausted());
  EXPECT_FALSE(in.AtEnd());
  EXPECT_FALSE(in.Read(c));
  EXPECT_TRUE(in.AtEnd());
  EXPECT_FALSE(in.Failed());
  EXPECT_EQ(c, 'a');
  const TempFolder folder;
  TextReader missing(folder.NameOf("missing"), LineEnds::Native);
  EXPECT_TRUE(!missing.IsOpen() && missing.AtEnd() && missing.Failed() && !missing.Read(c));
}

TEST(TextWriter, WritesLineEndsOfTheSystemOrFails) {
  const std::string native = platform::kTextHasCarriageReturns ? "a\r\n" : "a\n";
  const TempFolder folder;
  const std::string name = folder.Write("file", "old and longer");
  {
    TextWriter out(name);
    PutAll(out, "a\n");
  }
  EXPECT_EQ(folder.Read("file"), native);
  TextWriter more = TextWriter::Appending(name);
  PutAll(more, "a\n");
  EXPECT_TRUE(more.Close());
  EXPECT_EQ(folder.Read("file"), native + native);
  TextWriter nowhere(folder.NameOf("missing/file"));
  PutAll(nowhere, "a");
  EXPECT_TRUE(!nowhere.IsOpen() && nowhere.Failed() && !nowhere.Close());
}

TEST(TextWriter, WritesWhatTheReaderReads) {
  std::string text;
  while (text.size() < 150'000) text += EveryByte() + "\n";
  const TempFolder folder;
  TextWriter out(folder.NameOf("file"));
  PutAll(out, text);
  EXPECT_TRUE(out.Close());
  EXPECT_TRUE(ReadAll(TextReader(folder.NameOf("file"), LineEnds::Native)) == text);
}

}  // namespace snipwell
