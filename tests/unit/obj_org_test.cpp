#include "source/obj_org.h"

#include <gtest/gtest.h>

#include "printed.h"
#include "texts.h"

namespace snipwell {

TEST(ObjOrg, DumpsWhatTheScanAndTheReductionFoundAndCopiesIt) {
  ObjOrg object = Scan(Level::File, ";\nvoid f(int a)\n{\n  g();\n}\n").at(1);
  ObjOrg next(Position(), 7);
  ObjOrg child(Position(), 9);
  object.SetStatus(ObjStatus::Remove);
  object.SetIsUsed(true);
  object.SetNext(&next);
  object.SetChild(&child);
  ObjOrg copy(object);
  object.ClearNext();
  object.ClearChild();
  std::ostream out(nullptr);
  Capture dump(out);
  copy.Dump(out);
  const std::string record =
      "*******\nID: 1\nStart: Line: 0   Col: 2\nStartParen: Line: 1   Col: 6\n"
      "EndParen: Line: 1   Col: 12\nEndHeader: Line: 1   Col: 13\nStartBody: Line: 2   Col: 1\n"
      "EndBody: Line: 3   Col: 6\nEnd: Line: 4   Col: 0\n"
      "Type: 6  Status: 1  Block: 1  Error: 0  Is Used: 1\n";
  EXPECT_EQ(dump.Text(), record + "Child: 9\nNext: 7\n");
  EXPECT_EQ(dump.Flushes(), 12);
  dump.Clear();
  copy = object;
  copy.Dump(out);
  EXPECT_EQ(dump.Text(), record);
}

}  // namespace snipwell
