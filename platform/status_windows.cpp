#include "platform/status_windows.h"

#include <windows.h>

#include <cerrno>

#include "platform/child_set.h"

namespace snipwell::platform {

namespace {

struct Row {
  unsigned long from;
  int to;
};

// The last three are of programs that could not even begin, for want of a library.
constexpr Row kSignals[] = {
    {kKilledStatus, ChildEnd::kKilled},
    {0xC000013A, 2},   // Ctrl-C
    {0xC000001D, 4},   // illegal instruction
    {0x80000003, 5},   // breakpoint
    {0xC0000094, 8},   // division by zero
    {0xC0000095, 8},   // integer overflow
    {0xC0000005, 11},  // access violation
    {0xC00000FD, 11},  // stack overflow
    {0xC0000135, 0},
    {0xC0000139, 0},
    {0xC0000142, 0},
};

constexpr Row kReasons[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_DIRECTORY, ENOENT},         {ERROR_INVALID_NAME, ENOENT},
    {ERROR_ACCESS_DENIED, EACCES},     {ERROR_SHARING_VIOLATION, EACCES},
    {ERROR_BAD_EXE_FORMAT, ENOEXEC},   {ERROR_EXE_MACHINE_TYPE_MISMATCH, ENOEXEC},
    {ERROR_BAD_ARGUMENTS, E2BIG},      {ERROR_FILENAME_EXCED_RANGE, E2BIG},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM}, {ERROR_OUTOFMEMORY, ENOMEM},
    {ERROR_COMMITMENT_LIMIT, ENOMEM},
};

template <typename Rows>
int Find(const Rows& rows, unsigned long from, int otherwise) {
  for (const Row& row : rows) {
    if (row.from == from) return row.to;
  }
  return otherwise;
}

}  // namespace

/// A status with both of its highest bits set is that of an exception.
int SignalOf(unsigned long status) {
  constexpr unsigned long kExceptions = 0xC0000000;
  constexpr int kAborted = 6;
  return Find(kSignals, status, status >= kExceptions && status < 0xF0000000 ? kAborted : 0);
}

int ErrnoOf(unsigned long reason) { return Find(kReasons, reason, EAGAIN); }

}  // namespace snipwell::platform
