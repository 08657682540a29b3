#pragma once

#include <memory>

#include "source/obj_org.h"

namespace snipwell {

/// Releases every object of a list and of the lists nested in it. Returns their number. The stack
/// it uses does not grow with the length of the list.
int FreeList(ObjOrg* list);

/// Owner of a whole list of objects.
struct ObjectListDeleter {
  void operator()(ObjOrg* list) const { FreeList(list); }
};
using ObjectList = std::unique_ptr<ObjOrg, ObjectListDeleter>;

}  // namespace snipwell
