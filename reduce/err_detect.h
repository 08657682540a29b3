#pragma once

#include <memory>

namespace snipwell {

/// One node of the mirror of a level's Error flags, which carries them from one object list to the
/// next. A node does not own the nodes it points to.
struct ErrDetect {
  bool error;                  ///< the object's Error flag
  int id;                      ///< the object's ID
  ErrDetect* next = nullptr;   ///< node of the next object
  ErrDetect* child = nullptr;  ///< first node of a nested list
};

/// Releases every node of a list and of the lists nested in it. Returns their number. The stack it
/// uses does not grow with the length of the list.
int FreeErrorDetectList(ErrDetect* list);

/// Owner of a whole list.
struct ErrDetectListDeleter {
  void operator()(ErrDetect* list) const { FreeErrorDetectList(list); }
};
using ErrDetectList = std::unique_ptr<ErrDetect, ErrDetectListDeleter>;

}  // namespace snipwell
