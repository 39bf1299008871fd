#include "SystemCalls.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#if defined(__x86_64__)

namespace {

struct Call {
  long number;
  char const* name;
  bool transfersBytes = false;  // up to its third argument
};

constexpr Call kCalls[] = {
    {SYS_read, "read", true},
    {SYS_pread64, "pread", true},
    {SYS_write, "write", true},
    {SYS_pwrite64, "pwrite", true},
    {SYS_open, "open"},
    {SYS_openat, "openat"},
    {SYS_close, "close"},
    {SYS_lseek, "lseek"},
    {SYS_fstat, "fstat"},
    {SYS_stat, "stat"},
    {SYS_lstat, "lstat"},
    {SYS_newfstatat, "fstatat"},
    {SYS_access, "access"},
    {SYS_faccessat, "faccessat"},
    {SYS_rename, "rename"},
    {SYS_unlink, "unlink"},
    {SYS_linkat, "linkat"},
    {SYS_readlink, "readlink"},
    {SYS_dup, "dup"},
    {SYS_poll, "poll"},
    {SYS_ftruncate, "ftruncate"},
    {SYS_fsync, "fsync"},
    {SYS_fchown, "fchown"},
    {SYS_fchmod, "fchmod"},
    {SYS_getrandom, "getrandom"},
};

Call const* Find(unsigned long long number) {
  for (Call const& call : kCalls) {
    if (static_cast<unsigned long long>(call.number) == number) return &call;
  }
  return nullptr;
}

bool RequestsUnnamedFile(user_regs_struct const& registers) {
  return registers.orig_rax == SYS_openat && (registers.rdx & O_TMPFILE) == O_TMPFILE;
}

// Handles the two stops of each system call: before and after it.
class CallTracer {
 public:
  CallTracer(pid_t watched, SystemCallFault const& wantedFault, bool refusesUnnamed)
      : process(watched), fault(wantedFault), withoutUnnamedFiles(refusesUnnamed) {}

  void Stop() {
    isInside = !isInside;
    if (isInside) {
      Enter();
    } else if (answer != 0) {
      user_regs_struct registers;
      ptrace(PTRACE_GETREGS, process, nullptr, &registers);
      registers.rax = static_cast<unsigned long long>(-static_cast<long long>(answer));
      ptrace(PTRACE_SETREGS, process, nullptr, &registers);
      answer = 0;
    }
  }

  SystemCallRun run;

 private:
  void Enter() {
    user_regs_struct registers;
    ptrace(PTRACE_GETREGS, process, nullptr, &registers);
    if (withoutUnnamedFiles && RequestsUnnamedFile(registers)) return Refuse(registers, EOPNOTSUPP);
    Call const* const call = Find(registers.orig_rax);
    if (call == nullptr) return;
    ++run.count;
    run.names.emplace_back(call->name);
    bool const canBeShort = call->transfersBytes && registers.rdx > 1;
    if (canBeShort) run.transfers.push_back(run.count);
    if (canBeShort && (call->number == SYS_read || call->number == SYS_pread64)) run.reads.push_back(run.count);
    bool const isSelected =
        run.count == fault.number || (fault.isPermanent && run.hasOccurred && run.failedCall == call->name);
    if (!isSelected) return;
    if (fault.signal != 0) {
      kill(process, fault.signal);
    } else if (fault.error != 0) {
      Refuse(registers, fault.error);
    } else if (!canBeShort) {
      return;
    } else {
      registers.rdx /= 2;
      ptrace(PTRACE_SETREGS, process, nullptr, &registers);
    }
    run.hasOccurred = true;
    run.failedCall = call->name;
  }

  void Refuse(user_regs_struct& registers, int error) {
    registers.orig_rax = static_cast<unsigned long long>(-1);
    ptrace(PTRACE_SETREGS, process, nullptr, &registers);
    answer = error;
  }

  pid_t process;
  SystemCallFault fault;
  bool withoutUnnamedFiles;
  bool isInside = false;
  int answer = 0;
};

}  // namespace

bool CanTrace() {
  return true;
}

SystemCallRun Trace(pid_t process, SystemCallFault const& fault, bool withoutUnnamedFiles) {
  CallTracer tracer(process, fault, withoutUnnamedFiles);
  int status = 0;
  waitpid(process, &status, 0);
  ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  while (!WIFEXITED(status) && !WIFSIGNALED(status)) {
    int const signal = WSTOPSIG(status);
    bool const isCall = signal == (SIGTRAP | 0x80);
    if (isCall) tracer.Stop();
    // The stop after exec is not a signal for the program.
    ptrace(PTRACE_SYSCALL, process, nullptr, isCall || signal == SIGTRAP ? 0 : signal);
    waitpid(process, &status, 0);
  }
  tracer.run.status = status;
  return tracer.run;
}

#else

bool CanTrace() {
  return false;
}

SystemCallRun Trace(pid_t, SystemCallFault const&, bool) {
  return {};
}

#endif

bool AllowTracing() {
  return ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0;
}
