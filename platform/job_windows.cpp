#include "platform/job_windows.h"

#include "platform/status_windows.h"

namespace snipwell::platform {

Job::Job(std::uint64_t memoryBytes) : job(::CreateJobObjectW(nullptr, nullptr)) {
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  DWORD& flags = limits.BasicLimitInformation.LimitFlags;
  flags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
  if (memoryBytes > 0) flags |= JOB_OBJECT_LIMIT_PROCESS_MEMORY;
  limits.ProcessMemoryLimit = static_cast<SIZE_T>(memoryBytes);
  ::SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
}

bool Job::Run(const Handle& process, const Handle& thread) const {
  if (::AssignProcessToJobObject(job.Get(), process.Get()) != 0 &&
      ::ResumeThread(thread.Get()) != static_cast<DWORD>(-1)) {
    return true;
  }
  ::TerminateProcess(process.Get(), kKilledStatus);
  return false;
}

void Job::Kill() const { ::TerminateJobObject(job.Get(), kKilledStatus); }

void Job::Await() const {
  constexpr int kTries = 2000;
  JOBOBJECT_BASIC_ACCOUNTING_INFORMATION accounts{};
  for (int i = 0; i < kTries; ++i) {
    const bool known = ::QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation,
                                                   &accounts, sizeof accounts, nullptr) != 0;
    if (!known || accounts.ActiveProcesses == 0) return;
    ::Sleep(1);
  }
}

}  // namespace snipwell::platform
