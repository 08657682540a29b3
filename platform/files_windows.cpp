#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <utility>

namespace snipwell::platform {

const bool kTextHasCarriageReturns = true;

namespace {

/// Gives `descriptor` a number above the standard ones.
Descriptor AboveStandard(Descriptor descriptor) {
  if (!descriptor.IsOpen() || descriptor.Number() > kStandardError) return descriptor;
  return DuplicateStandard(descriptor.Number());
}

Descriptor Open(const std::string& fileName, int flags) {
  int number = -1;
  ::_sopen_s(&number, fileName.c_str(), flags | _O_NOINHERIT, _SH_DENYNO, _S_IREAD | _S_IWRITE);
  return AboveStandard(Descriptor(number));
}

HANDLE HandleOf(int descriptor) { return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)); }

/// A file left from somewhere must not keep its name because it is read-only.
void ClearReadOnly(const std::string& fileName) {
  const DWORD attributes = ::GetFileAttributesA(fileName.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0) return;
  ::SetFileAttributesA(fileName.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

/// What the system knows of the file or folder that a name leads to. False when there is none.
bool GetInformation(const std::string& fileName, DWORD flags, BY_HANDLE_FILE_INFORMATION& found) {
  const HANDLE file =
      ::CreateFileA(fileName.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool came = ::GetFileInformationByHandle(file, &found) != 0;
  ::CloseHandle(file);
  return came;
}

}  // namespace

// Text is opened as it is: `TextReader` and `TextWriter` do what the text mode does to line ends.
// Only the compiler's output file is in text mode, since the status lines reach it through the
// standard streams.

Descriptor OpenForReading(const std::string& fileName) {
  return Open(fileName, _O_RDONLY | _O_BINARY);
}

Descriptor OpenForWriting(const std::string& fileName) {
  return Open(fileName, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_TEXT);
}

Descriptor OpenForRewriting(const std::string& fileName) {
  return Open(fileName, _O_WRONLY | _O_CREAT | _O_BINARY);
}

Descriptor OpenForAppending(const std::string& fileName) {
  return Open(fileName, _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY);
}

bool CutOff(int descriptor) {
  if (::GetFileType(HandleOf(descriptor)) != FILE_TYPE_DISK) return true;
  const __int64 end = ::_telli64(descriptor);
  return end >= 0 && ::_chsize_s(descriptor, end) == 0;
}

std::ptrdiff_t ReadSome(int descriptor, char* buffer, std::size_t size) {
  constexpr std::size_t kMost = std::size_t{1} << 30;
  return ::_read(descriptor, buffer, static_cast<unsigned>(std::min(size, kMost)));
}

bool WriteAll(int descriptor, const char* data, std::size_t size) {
  // A console takes only so much at once.
  constexpr std::size_t kMost = 16 * 1024;
  while (size > 0) {
    const int count = ::_write(descriptor, data, static_cast<unsigned>(std::min(size, kMost)));
    if (count <= 0) return false;
    data += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

bool RemoveFile(const std::string& fileName) { return ::DeleteFileA(fileName.c_str()) != 0; }

// Virus scanners, indexers and editors hold a new file for a moment, so that is waited for.
bool RenameOver(const std::string& from, const std::string& to) {
  constexpr DWORD kPause = 20;  // milliseconds
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    if (::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    const DWORD reason = ::GetLastError();
    if (reason != ERROR_SHARING_VIOLATION && reason != ERROR_ACCESS_DENIED) return false;
    ClearReadOnly(to);
    ::Sleep(kPause);
  }
  return false;
}

std::string FileIdentity(const std::string& fileName) {
  BY_HANDLE_FILE_INFORMATION found{};
  if (!GetInformation(fileName, 0, found)) return std::string();
  return std::to_string(found.dwVolumeSerialNumber) + ':' + std::to_string(found.nFileIndexHigh) +
         ':' + std::to_string(found.nFileIndexLow);
}

bool IsSameFile(const std::string& first, const std::string& second) {
  const std::string identity = FileIdentity(first);
  return !identity.empty() && identity == FileIdentity(second);
}

bool LeadsElsewhere(const std::string& fileName) {
  BY_HANDLE_FILE_INFORMATION found{};
  if (!GetInformation(fileName, FILE_FLAG_OPEN_REPARSE_POINT, found)) return false;
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return true;
  return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && found.nNumberOfLinks > 1;
}

}  // namespace snipwell::platform
