// The search for what can go, one level at a time.
//
//   Reduce    Try without all candidates at once. If the error is lost, go on with them in halves
//             (Split) down to sets of at most six, and with those one by one (OneByOne).
//   Split     The higher half first, and the lower one only when the higher is settled: so a cut
//             renumbers only objects above the IDs that still wait.
//   OneByOne  From the highest ID down. An object that the error needs is flagged, and its body, if
//             it has one, is reduced as the next level (Descend).
//
// Every try is one compilation; one that keeps the error is accepted at once. A level's candidates
// are fixed when it starts. A level with a single candidate ends after its one failed try: that
// object is neither flagged nor descended into.

#include <iostream>
#include <utility>

#include "reduce/file_org.h"

namespace snipwell {

namespace {

constexpr int kOneByOneThreshold = 6;
constexpr int kDeepestLevel = 200;

IntArray Single(int id) {
  IntArray ids(1);
  ids.Set(0, id);
  return ids;
}

void TraceNewLevel(int level) {
  const std::string hashes(26, '#');
  std::cerr << hashes << std::endl
            << "## New level: " << level << "         ##" << std::endl
            << hashes << std::endl;
}

}  // namespace

void FileOrg::Reduce() {
  Working = NonErrAll;
  if (Working.GetSize() == 0) return;
  if (TryWithout(Working)) {
    Update();
    return;
  }
  Restore();
  while (Working.GetSize() > 1) {
    if (Working.GetSize() <= kOneByOneThreshold) {
      OneByOne();
    } else {
      Split();
    }
  }
}

/// Compiles the program without these objects. True when the error is the same.
bool FileOrg::TryWithout(const IntArray& ids) {
  MarkRemove(ids);
  return CompileCandidate();
}

void FileOrg::Split() {
  int lowerSize = 0;
  int higherSize = 0;
  Working.GetHalves(lowerSize, higherSize);
  IntArray lower(lowerSize);
  IntArray higher(higherSize);
  Working.SplitInto(lower, higher);

  if (TryWithout(higher)) {
    Working = lower;  // the caller goes on with it
    Update();
    return;
  }
  Restore();
  Settle(higher);
  if (TryWithout(lower)) {
    Update();
    return;
  }
  Restore();
  Settle(lower);
}

/// Goes on with a half that cannot go as a whole, until none of its IDs waits.
void FileOrg::Settle(const IntArray& half) {
  Working = half;
  while (Working.GetSize() > kOneByOneThreshold) Split();
  OneByOne();
}

void FileOrg::OneByOne() {
  while (Working.GetSize() > 0) {
    const int id = Working.RemoveLast();
    if (TryWithout(Single(id))) {
      Update();
    } else {
      MarkError(id);
      RestoreWithErrorIndicator(id);
    }
  }
}

void FileOrg::RestoreWithErrorIndicator(int id) {
  if (verbose) {
    std::cerr << "*NOT the Same Error: RESTORING WITH ERROR INDICATOR*" << std::endl
              << "ERROR POSITION INFO: " << std::endl;
  }
  const ObjOrg* const object = FindObject(id);
  if (verbose) {
    if (object != nullptr) object->Dump(std::cerr);
    std::cerr << std::string(16, '*') << std::endl;
  }
  if (object != nullptr && object->GetBlock() && level < kDeepestLevel) {
    if (verbose) TraceNewLevel(level + 1);
    Descend(*object);
  }
  ResetStatus();
  // The mirror was taken before the compilation, so the flag just set is not in it.
  ApplyErrorDetectList(objectList.get(), errorDetectList.get());
}

void FileOrg::Descend(const ObjOrg& object) {
  const IntArray savedWorking = Working;
  const IntArray savedErrAll = ErrAll;
  const IntArray savedNonErrAll = NonErrAll;
  // Held here meanwhile, so that they are released when the time limit ends the search.
  ObjectList savedObjectList = std::move(objectList);
  ErrDetectList savedErrorDetectList = std::move(errorDetectList);
  std::unique_ptr<ObjOrg> savedParentObject = std::move(parentObject);

  ++level;
  parentObject = std::make_unique<ObjOrg>(object);
  BuildList();
  Reduce();

  Working = savedWorking;
  ErrAll = savedErrAll;
  NonErrAll = savedNonErrAll;
  objectList = std::move(savedObjectList);
  errorDetectList = std::move(savedErrorDetectList);
  parentObject = std::move(savedParentObject);
  --level;
  BuildList();
}

}  // namespace snipwell
