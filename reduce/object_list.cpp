#include "reduce/object_list.h"

namespace snipwell {

int FreeList(ObjOrg* list) {
  int released = 0;
  while (list != nullptr) {
    released += FreeList(list->GetChild());
    ObjOrg* const next = list->GetNext();
    delete list;
    ++released;
    list = next;
  }
  return released;
}

}  // namespace snipwell
