// The state of the level being reduced: its object list, scanned from the isolated file, and the
// Error flags.
//
// The list is never edited: after every accepted candidate the whole list of the level is scanned
// again. The flags travel from one list to the next through a mirror, taken before each
// compilation, and by place: the flag of place k lands on whatever object stands in place k of the
// new list. After a cut, that can be another object than before. A flag does not change which
// objects a level tries, so this costs nothing but an odd trace line.

#include <iostream>
#include <utility>

#include "reduce/file_org.h"
#include "source/position.h"
#include "text/text_reader.h"

namespace snipwell {

namespace {

/// Builds a list in order, numbering its objects from 0.
class ListBuilder {
 public:
  /// A new object that starts at `start`, linked behind the last one.
  ObjOrg& Append(const Position& start) {
    auto* const object = new ObjOrg(start, count++);
    if (last == nullptr) {
      list.reset(object);
    } else {
      last->SetNext(object);
    }
    last = object;
    return *object;
  }

  int Count() const { return count; }
  ObjectList Take() { return std::move(list); }

 private:
  ObjectList list;
  ObjOrg* last = nullptr;
  int count = 0;
};

/// Reads until `position` is no longer before `bound`, or to the end.
void ReadThrough(TextReader& in, Position& position, const Position& bound) {
  while (!position.GetRun(in, bound).empty()) {
  }
}

}  // namespace

void FileOrg::BuildList() {
  if (level == 0) {
    ScanFile();
  } else {
    RefreshParent();
    ScanParentBody();
  }
  ApplyErrorDetectList(objectList.get(), errorDetectList.get());
  FillErrorArrays(objectList.get());
  if (verbose) std::cerr << "Current ErrAll: " << ErrAll << std::endl;
}

void FileOrg::ScanFile() {
  TextReader in(isolatedFileName, LineEnds::Native);
  Position position;
  ReleaseObjectList();
  ListBuilder builder;
  // An empty file has no object. Otherwise the file is at its end only when a scan has met it: the
  // white space after the last declaration is one more object.
  for (bool more = !in.IsExhausted(); more; more = !in.AtEnd()) {
    builder.Append(position).ScanDeclarations(isCpp, in, position);
  }
  TakeObjectList(builder.Take(), builder.Count());
}

/// Scans `parentObject` again where it now stands. The scan starts one character before the first
/// scan of the object did, on a record that keeps its type and flags.
void FileOrg::RefreshParent() {
  TextReader in(isolatedFileName, LineEnds::Native);
  Position position;
  ReadThrough(in, position, parentObject->GetStart().Previous());
  // So a class or function in a namespace, which the declaration scanner has found, is scanned by
  // the body scanner here. Of the result only the place of its braces is used.
  if (level == 1 || parentObject->GetType() == ObjType::Scope) {
    parentObject->ScanDeclarations(isCpp, in, position);
  } else {
    parentObject->ScanBody(isCpp, in, position);
  }
}

void FileOrg::ScanParentBody() {
  TextReader in(isolatedFileName, LineEnds::Native);
  Position position;
  ReadThrough(in, position, parentObject->GetStartBody());
  ReleaseObjectList();
  ListBuilder builder;
  while (position < parentObject->GetEndBody() && !in.AtEnd()) {
    ObjOrg& object = builder.Append(position);
    if (parentObject->GetType() == ObjType::Scope) {
      object.ScanDeclarations(isCpp, in, position);
    } else {
      object.ScanBody(isCpp, in, position);
    }
  }
  TakeObjectList(builder.Take(), builder.Count());
}

void FileOrg::ReleaseObjectList() {
  const int removed = FreeList(objectList.release());
  if (verbose) std::cerr << "Num List Nodes Removed: " << removed << std::endl;
}

void FileOrg::TakeObjectList(ObjectList newList, int created) {
  objectList = std::move(newList);
  if (verbose) std::cerr << "Num List Nodes Created: " << created << std::endl;
}

void FileOrg::BuildErrorDetectList() {
  const int removed = FreeErrorDetectList(errorDetectList.release());
  if (verbose) std::cerr << "Num ErrDetect Nodes Removed: " << removed << std::endl;
  int created = 0;
  ErrDetect* last = nullptr;
  for (const ObjOrg* object = objectList.get(); object != nullptr; object = object->GetNext()) {
    auto* const node = new ErrDetect{object->GetError(), object->GetID()};
    if (last == nullptr) {
      errorDetectList.reset(node);
    } else {
      last->next = node;
    }
    last = node;
    ++created;
  }
  if (verbose) std::cerr << "Num ErrDetect Nodes Created: " << created << std::endl;
}

/// Sets flags, never clears one.
void FileOrg::ApplyErrorDetectList(ObjOrg* list, const ErrDetect* nodes) const {
  for (; list != nullptr && nodes != nullptr; list = list->GetNext(), nodes = nodes->next) {
    if (!nodes->error) continue;
    if (verbose && nodes->id != list->GetID()) {
      std::cerr << "ERROR: errorDetectList and ObjOrg list unsynchronized" << std::endl;
    }
    list->SetError(true);
  }
}

void FileOrg::FillErrorArrays(const ObjOrg* list) {
  int flagged = 0;
  int others = 0;
  for (const ObjOrg* object = list; object != nullptr; object = object->GetNext()) {
    ++(object->GetError() ? flagged : others);
  }
  // Counted first, so that no array grows one element at a time.
  ErrAll = IntArray(flagged);
  NonErrAll = IntArray(others);
  flagged = 0;
  others = 0;
  for (const ObjOrg* object = list; object != nullptr; object = object->GetNext()) {
    if (object->GetError()) {
      ErrAll.Set(flagged++, object->GetID());
    } else {
      NonErrAll.Set(others++, object->GetID());
    }
  }
}

void FileOrg::ResetStatus() {
  for (ObjOrg* object = objectList.get(); object != nullptr; object = object->GetNext()) {
    object->SetStatus(ObjStatus::Keep);
  }
}

/// One walk along the list, since the IDs are ascending. An accepted cut can take the parent's
/// closing brace along and leave the list shorter than the IDs that still wait: an ID that no
/// object carries marks nothing.
void FileOrg::MarkRemove(const IntArray& ids) {
  ObjOrg* object = objectList.get();
  for (int i = 0; i < ids.GetSize(); ++i) {
    while (object != nullptr && object->GetID() < ids.Get(i)) object = object->GetNext();
    if (object == nullptr) break;
    if (object->GetID() == ids.Get(i)) object->SetStatus(ObjStatus::Remove);
  }
  if (verbose) std::cerr << "Removing: " << ids << std::endl;
}

void FileOrg::MarkError(int id) {
  ObjOrg* const object = FindObject(id);
  if (object != nullptr && object->GetID() == id) object->SetError(true);
}

ObjOrg* FileOrg::FindObject(int id) const {
  ObjOrg* object = objectList.get();
  while (object != nullptr && object->GetID() < id) object = object->GetNext();
  return object;
}

}  // namespace snipwell
