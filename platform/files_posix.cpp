#include "platform/files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace snipwell::platform {

const bool kTextHasCarriageReturns = false;

namespace {

/// Gives `descriptor` a number above the standard ones.
Descriptor AboveStandard(Descriptor descriptor) {
  if (!descriptor.IsOpen() || descriptor.Number() > kStandardError) return descriptor;
  return Descriptor(::fcntl(descriptor.Number(), F_DUPFD_CLOEXEC, kStandardError + 1));
}

Descriptor Open(const std::string& fileName, int flags) {
  constexpr mode_t kEverybody = 0666;  // less the umask
  int number = -1;
  do {
    number = ::open(fileName.c_str(), flags | O_CLOEXEC, kEverybody);
  } while (number < 0 && errno == EINTR);
  return AboveStandard(Descriptor(number));
}

/// Waits until a descriptor that somebody has made non-blocking takes more.
bool AwaitWritable(int descriptor) {
  struct pollfd awaited {
    descriptor, POLLOUT, 0
  };
  return ::poll(&awaited, 1, -1) > 0 || errno == EINTR;
}

}  // namespace

Descriptor OpenForReading(const std::string& fileName) {
  Descriptor file = Open(fileName, O_RDONLY);
  struct stat status {};
  if (file.IsOpen() && ::fstat(file.Number(), &status) == 0 && S_ISDIR(status.st_mode)) {
    file.Close();
    errno = EISDIR;
  }
  return file;
}

Descriptor OpenForWriting(const std::string& fileName) {
  // Compilers can leave programs behind that go on writing into the old file. Where it cannot be
  // removed it is made empty, but none that it leads to.
  if (!RemoveFile(fileName) && LeadsElsewhere(fileName)) return Descriptor();
  return Open(fileName, O_WRONLY | O_CREAT | O_TRUNC);
}

Descriptor OpenForRewriting(const std::string& fileName) {
  // A compiler can have put a link to the source in the place of what it has compiled.
  if (LeadsElsewhere(fileName) && !RemoveFile(fileName)) return Descriptor();
  return Open(fileName, O_WRONLY | O_CREAT);
}

Descriptor OpenForAppending(const std::string& fileName) {
  // A pipe that nobody reads must not be waited for.
  return Open(fileName, O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK);
}

bool CutOff(int descriptor) {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return false;
  if (!S_ISREG(status.st_mode)) return true;
  const off_t end = ::lseek(descriptor, 0, SEEK_CUR);
  if (end < 0) return false;
  return end == status.st_size || ::ftruncate(descriptor, end) == 0;
}

std::ptrdiff_t ReadSome(int descriptor, char* buffer, std::size_t size) {
  ssize_t count = -1;
  do {
    count = ::read(descriptor, buffer, size);
  } while (count < 0 && errno == EINTR);
  return count;
}

bool WriteAll(int descriptor, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t count = ::write(descriptor, data, size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN && AwaitWritable(descriptor)) continue;
    if (count <= 0) return false;
    data += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

bool RemoveFile(const std::string& fileName) { return ::unlink(fileName.c_str()) == 0; }

void RemoveFolder(const std::string& name) {
  std::error_code ignored;
  std::filesystem::remove_all(name, ignored);
}

bool RenameOver(const std::string& from, const std::string& to) {
  return std::rename(from.c_str(), to.c_str()) == 0;
}

std::string FileIdentity(const std::string& fileName) {
  struct stat status {};
  if (::stat(fileName.c_str(), &status) != 0) return std::string();
  return std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino);
}

bool IsSameFile(const std::string& first, const std::string& second) {
  const std::string identity = FileIdentity(first);
  return !identity.empty() && identity == FileIdentity(second);
}

bool LeadsElsewhere(const std::string& fileName) {
  struct stat status {};
  if (::lstat(fileName.c_str(), &status) != 0) return false;
  if (S_ISREG(status.st_mode)) return status.st_nlink > 1;
  return S_ISLNK(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode);
}

}  // namespace snipwell::platform
