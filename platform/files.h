#pragma once

#include <cstddef>
#include <string>

#include "platform/descriptor.h"

namespace snipwell::platform {

/// True on a system whose text files end a line with a carriage return and a line feed, and whose
/// text mode turns that pair into a line feed when reading and back when writing.
extern const bool kTextHasCarriageReturns;

/// Opens a file. The result is empty when the file cannot be opened, with the system's reason in
/// errno; a directory cannot be opened. The last three create a missing file. `OpenForWriting`
/// starts with an empty one, on POSIX systems a new one, so that a program which still has the old
/// one open does not write into this. `OpenForRewriting` writes over it from its start, and
/// `CutOff` must then remove what is left of it; on POSIX systems it first deletes a file that
/// leads elsewhere. `OpenForAppending` writes at its end.
Descriptor OpenForReading(const std::string& fileName);
Descriptor OpenForWriting(const std::string& fileName);
Descriptor OpenForRewriting(const std::string& fileName);
Descriptor OpenForAppending(const std::string& fileName);

/// Ends a file where the last write has ended. False when the system refuses; what is no plain file
/// has no end to move and succeeds.
bool CutOff(int descriptor);

/// Reads at most `size` bytes into `buffer`. Returns the number of bytes read, 0 at the end of the
/// file and -1 on an error.
std::ptrdiff_t ReadSome(int descriptor, char* buffer, std::size_t size);

/// Writes all `size` bytes. False when the system refuses a part of them.
bool WriteAll(int descriptor, const char* data, std::size_t size);

/// Deletes a file (a link itself, not what it points to). False when nothing was deleted.
bool RemoveFile(const std::string& fileName);

/// Deletes a folder with all that is in it, links but not what they lead to. What another program
/// still holds is waited for where the system does not delete it, for some seconds; then it stays.
void RemoveFolder(const std::string& name);

/// Deletes the file `to`, if there is one, and gives the file `from` its name, in one step where
/// the system can: then no moment is without a file of that name. False on failure; `from` is then
/// as before.
bool RenameOver(const std::string& from, const std::string& to);

/// A text that stands for the file that a name leads to, through any link: two names have the same
/// text exactly when they lead to one file. Empty when there is no such file.
std::string FileIdentity(const std::string& fileName);

/// True when both names lead to one existing file, by spelling or by any kind of link.
bool IsSameFile(const std::string& first, const std::string& second);

/// True when what is written into the file `fileName` would reach something else: it is a link, one
/// of several names of its file, or a named pipe.
bool LeadsElsewhere(const std::string& fileName);

}  // namespace snipwell::platform
