#include "reduce/err_detect.h"

namespace snipwell {

int FreeErrorDetectList(ErrDetect* list) {
  int released = 0;
  while (list != nullptr) {
    released += FreeErrorDetectList(list->child);
    ErrDetect* const next = list->next;
    delete list;
    ++released;
    list = next;
  }
  return released;
}

}  // namespace snipwell
