#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <cstdlib>

#include "platform/handle_windows.h"
#include "platform/unicode_windows.h"

namespace snipwell::platform {

const bool kTextHasCarriageReturns = true;

namespace {

HANDLE HandleOf(int descriptor) { return reinterpret_cast<HANDLE>(::_get_osfhandle(descriptor)); }

/// Virus scanners, indexers and editors hold a new file for a moment, and one that is deleted keeps
/// its name until it is let go.
bool IsHeld(const std::wstring& name, DWORD reason) {
  return reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION ||
         (reason == ERROR_ACCESS_DENIED &&
          ::GetFileAttributesW(name.c_str()) == INVALID_FILE_ATTRIBUTES);
}

/// Does something until it says true, for some seconds. False when it never does.
template <typename Action>
bool TryForSomeSeconds(Action action) {
  constexpr DWORD kPause = 20;  // milliseconds
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    if (action()) return true;
    ::Sleep(kPause);
  }
  return false;
}

/// Gives `descriptor` a number above the standard ones.
Descriptor AboveStandard(Descriptor descriptor) {
  if (!descriptor.IsOpen() || descriptor.Number() > kStandardError) return descriptor;
  return DuplicateStandard(descriptor.Number());
}

/// Waits while another program holds the file.
Descriptor Open(const std::string& fileName, int flags) {
  int number = -1;
  const std::wstring name = SystemName(fileName);
  TryForSomeSeconds([&] {
    return ::_wsopen_s(&number, name.c_str(), flags | _O_NOINHERIT, _SH_DENYNO,
                       _S_IREAD | _S_IWRITE) == 0 ||
           !IsHeld(name, _doserrno);
  });
  return AboveStandard(Descriptor(number));
}

/// What is known of a file or folder, or of a link itself. Empty when there is none.
Handle OpenToLook(const std::wstring& name, DWORD access, DWORD flags) {
  return Handle(::CreateFileW(name.c_str(), access,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

bool GetInformation(const std::string& fileName, DWORD flags, BY_HANDLE_FILE_INFORMATION& found) {
  const Handle file = OpenToLook(SystemName(fileName), 0, flags);
  return file.IsOpen() && ::GetFileInformationByHandle(file.Get(), &found) != 0;
}

/// A file left from somewhere must not keep its name because it is read-only.
void MakeWritable(const std::wstring& name) {
  const DWORD attributes = ::GetFileAttributesW(name.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) == 0) return;
  ::SetFileAttributesW(name.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

/// As long as it lives, a file that was read-only is not: one left from somewhere must not keep its
/// name because of that. Other names of it are read-only again then.
class Writable {
 public:
  explicit Writable(const std::wstring& name) : before(::GetFileAttributesW(name.c_str())) {
    if (before == INVALID_FILE_ATTRIBUTES || (before & FILE_ATTRIBUTE_READONLY) == 0) return;
    MakeWritable(name);
    file = OpenToLook(name, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES,
                      FILE_FLAG_OPEN_REPARSE_POINT);
  }
  ~Writable() {
    BY_HANDLE_FILE_INFORMATION now{};
    FILE_BASIC_INFO info{};  // times of 0 stay as they are
    info.FileAttributes = before;
    if (::GetFileInformationByHandle(file.Get(), &now) != 0 && now.nNumberOfLinks > 0) {
      ::SetFileInformationByHandle(file.Get(), FileBasicInfo, &info, sizeof info);
    }
  }
  Writable(const Writable&) = delete;
  Writable& operator=(const Writable&) = delete;

 private:
  DWORD before;
  Handle file;  // open when it was read-only
};

bool Remove(const std::wstring& name) {
  if (::DeleteFileW(name.c_str()) != 0) return true;
  if (::GetLastError() != ERROR_ACCESS_DENIED) return false;
  const Writable writable(name);
  return ::DeleteFileW(name.c_str()) != 0;
}

/// A link to a folder is removed as a folder, without what it leads to.
bool RemoveEntry(const std::wstring& name, DWORD attributes) {
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return Remove(name);
  if (::RemoveDirectoryW(name.c_str()) != 0) return true;
  const Writable writable(name);
  return ::RemoveDirectoryW(name.c_str()) != 0;
}

/// Deletes what can be deleted of a folder. False when something is left.
bool RemoveAll(const std::wstring& folder, DWORD attributes) {
  WIN32_FIND_DATAW entry;
  const bool isPlain = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0;
  const HANDLE search =
      isPlain ? ::FindFirstFileW((folder + L"\\*").c_str(), &entry) : INVALID_HANDLE_VALUE;
  if (search != INVALID_HANDLE_VALUE) {
    do {
      const std::wstring name = entry.cFileName;
      if (name == L"." || name == L"..") continue;
      const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      const std::wstring path = folder + L'\\' + name;
      isFolder ? RemoveAll(path, entry.dwFileAttributes) : Remove(path);
    } while (::FindNextFileW(search, &entry) != 0);
    ::FindClose(search);
  }
  return RemoveEntry(folder, attributes);
}

/// A console gets characters, since what it takes bytes for is up to its code page.
bool WriteToConsole(HANDLE console, const char* data, std::size_t size) {
  constexpr std::size_t kMost = 4096;  // it takes only so much at once
  const std::wstring text = ToWide({data, size});
  for (std::size_t at = 0; at < text.size();) {
    DWORD written = 0;
    const auto count = static_cast<DWORD>(std::min(text.size() - at, kMost));
    if (!::WriteConsoleW(console, text.data() + at, count, &written, nullptr)) return false;
    at += written;
  }
  return true;
}

}  // namespace

// Text is opened as it is: `TextReader` and `TextWriter` do what the text mode does to line ends.
// Only the compiler's output file is in text mode, since the status lines reach it through the
// standard streams.

Descriptor OpenForReading(const std::string& fileName) {
  return Open(fileName, _O_RDONLY | _O_BINARY);
}

Descriptor OpenForWriting(const std::string& fileName) {
  // Where it cannot be removed it is made empty, but none that it leads to.
  if (!RemoveFile(fileName) && LeadsElsewhere(fileName)) return Descriptor();
  return Open(fileName, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_TEXT);
}

Descriptor OpenForRewriting(const std::string& fileName) {
  // A compiler can have put a link to the source in the place of what it has compiled.
  if (LeadsElsewhere(fileName) && !RemoveFile(fileName)) return Descriptor();
  MakeWritable(SystemName(fileName));
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
  constexpr std::size_t kMost = std::size_t{1} << 30;
  DWORD mode = 0;
  const HANDLE console = HandleOf(descriptor);
  if (::GetConsoleMode(console, &mode) != 0) return WriteToConsole(console, data, size);
  while (size > 0) {
    const int count = ::_write(descriptor, data, static_cast<unsigned>(std::min(size, kMost)));
    if (count <= 0) return false;
    data += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

bool RemoveFile(const std::string& fileName) { return Remove(SystemName(fileName)); }

void RemoveFolder(const std::string& folderName) {
  const std::wstring name = SystemName(folderName);
  TryForSomeSeconds([&] {
    const DWORD attributes = ::GetFileAttributesW(name.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES || RemoveAll(name, attributes);
  });
}

bool RenameOver(const std::string& from, const std::string& to) {
  const std::wstring oldName = SystemName(from);
  const std::wstring newName = SystemName(to);
  bool renamed = false;
  TryForSomeSeconds([&] {
    renamed = ::MoveFileExW(oldName.c_str(), newName.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
    const DWORD reason = renamed ? 0 : ::GetLastError();
    if (reason != ERROR_SHARING_VIOLATION && reason != ERROR_ACCESS_DENIED) return true;
    MakeWritable(newName);
    return false;
  });
  return renamed;
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
