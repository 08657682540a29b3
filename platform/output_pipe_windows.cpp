#include "platform/output_pipe_windows.h"

#include <string>

namespace snipwell::platform {

namespace {

constexpr DWORD kPipeSize = 64 * 1024;

}  // namespace

OutputPipe::OutputPipe(std::string& text, std::size_t most)
    : output(text), room(most), done(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

/// The system must not write into what is gone.
OutputPipe::~OutputPipe() {
  DWORD bytes = 0;
  if (!readEnd.IsOpen()) return;
  ::CancelIoEx(readEnd.Get(), &operation);
  ::GetOverlappedResult(readEnd.Get(), &operation, &bytes, TRUE);
}

/// Only a pipe with a name can be read without waiting.
Handle OutputPipe::Open(HANDLE port, long key) {
  const std::wstring name = L"\\\\.\\pipe\\snipwell-" + std::to_wstring(::GetCurrentProcessId()) +
                            L'-' + std::to_wstring(key);
  readEnd = Handle(::CreateNamedPipeW(
      name.c_str(), PIPE_ACCESS_INBOUND | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
      PIPE_TYPE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1, 0, kPipeSize, 0, nullptr));
  if (!readEnd.IsOpen() ||
      ::CreateIoCompletionPort(readEnd.Get(), port, static_cast<ULONG_PTR>(key), 0) == nullptr) {
    return Handle();
  }
  Handle writeEnd(::CreateFileW(name.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, 0, nullptr,
                                OPEN_EXISTING, 0, nullptr));
  buffer.resize(kPipeSize);
  if (writeEnd.IsOpen()) Read();
  return writeEnd;
}

bool OutputPipe::Take() {
  if (!readEnd.IsOpen() || !TakeBytes()) return false;
  Read();
  return true;
}

void OutputPipe::TakeRest() {
  constexpr DWORD kLongest = 1000;  // milliseconds
  while (readEnd.IsOpen()) {
    if (::WaitForSingleObject(done.Get(), kLongest) != WAIT_OBJECT_0) {
      ::CancelIoEx(readEnd.Get(), &operation);
    }
    Take();
  }
  if (heldReturn) Put('\r');
  heldReturn = false;
}

void OutputPipe::Read() {
  operation = OVERLAPPED{};
  operation.hEvent = done.Get();
  const bool begun = ::ReadFile(readEnd.Get(), buffer.data(), kPipeSize, nullptr, &operation) != 0;
  if (!begun && ::GetLastError() != ERROR_IO_PENDING) readEnd.Close();
}

bool OutputPipe::TakeBytes() {
  DWORD bytes = 0;
  if (::GetOverlappedResult(readEnd.Get(), &operation, &bytes, TRUE)) {
    Append(bytes);
    return true;
  }
  readEnd.Close();
  return false;
}

void OutputPipe::Append(std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (heldReturn && buffer[i] != '\n') Put('\r');
    heldReturn = buffer[i] == '\r';
    if (!heldReturn) Put(buffer[i]);
  }
}

void OutputPipe::Put(char c) {
  if (room == 0) return;
  --room;
  output += c;
}

}  // namespace snipwell::platform
