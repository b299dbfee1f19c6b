#include "Durability/TracedProcess.h"

#include "Foundation/UUID.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <elf.h>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quorvel {

namespace {

constexpr std::uint64_t longestWrite = 16384;

/// The few facts about registers that differ between machines.
#if defined(__x86_64__)
using Registers = user_regs_struct;
void setAnswer(Registers& registers, long answer) {
    registers.rax = static_cast<unsigned long long>(answer);
}
std::uint64_t thirdArgument(const Registers& registers) {
    return registers.rdx;
}
void setThirdArgument(Registers& registers, std::uint64_t value) {
    registers.rdx = value;
}
#elif defined(__aarch64__)
using Registers = user_regs_struct;
void setAnswer(Registers& registers, long answer) {
    registers.regs[0] = static_cast<unsigned long long>(answer);
}
std::uint64_t thirdArgument(const Registers& registers) {
    return registers.regs[2];
}
void setThirdArgument(Registers& registers, std::uint64_t value) {
    registers.regs[2] = value;
}
#else
#error "Tell how this machine's registers hold a system call's third argument and its answer."
#endif

void require(bool works, const char* what) {
    if (!works) throw std::runtime_error(std::string("a traced process: ") + what + " isn’t possible");
}

class Tracee {
public:
    explicit Tracee(pid_t child) : child_(child) {}
    Tracee(const Tracee&) = delete;
    Tracee& operator=(const Tracee&) = delete;
    ~Tracee() {
        if (!isAlive_) return;
        ::kill(child_, SIGKILL);
        while (isAlive_) wait();
    }

    /// Waits for the next stop or the end.
    void wait() {
        while (::waitpid(child_, &status_, __WALL) < 0)
            if (errno != EINTR) {
                isAlive_ = false;
                throw std::runtime_error("a traced process can’t be awaited");
            }
        isAlive_ = WIFSTOPPED(status_);
    }

    bool isAlive() const { return isAlive_; }
    int exitStatus() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_); }
    bool isAtSystemCall() const { return WSTOPSIG(status_) == (SIGTRAP | 0x80); }

    void attach() {
        wait();
        require(isAlive_ && WSTOPSIG(status_) == SIGSTOP, "the first stop");
        require(::ptrace(PTRACE_SETOPTIONS, child_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) == 0,
                "setting options");
    }

    /// To the next system call, its begin or its end. A signal that stopped the child is handed on to it.
    void proceed(bool toSystemCall) {
        const int signal =
            WIFSTOPPED(status_) && !isAtSystemCall() && WSTOPSIG(status_) != SIGSTOP ? WSTOPSIG(status_) : 0;
        // Fails only when somebody has killed the child, and then the next wait tells.
        ::ptrace(toSystemCall ? PTRACE_SYSCALL : PTRACE_CONT, child_, nullptr, static_cast<long>(signal));
        wait();
    }

    void kill() {
        ::kill(child_, SIGKILL);
        while (isAlive_) wait();
    }

    /// The number of the call that is about to begin; -1 at the end of one.
    long beginningCall() const {
        __ptrace_syscall_info info{};
        require(::ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info) > 0, "asking for a system call");
        return info.op == PTRACE_SYSCALL_INFO_ENTRY ? static_cast<long>(info.entry.nr) : -1;
    }

    void shortenWrite() {
        Registers registers = readRegisters();
        if (thirdArgument(registers) <= longestWrite) return;
        setThirdArgument(registers, longestWrite);
        writeRegisters(registers);
    }

    /// Lets the call that is about to begin do nothing and answer -`code`.
    void failCall(int code) {
        skipCall();
        proceed(true);
        require(isAlive_ && isAtSystemCall(), "skipping a system call");
        Registers registers = readRegisters();
        setAnswer(registers, -code);
        writeRegisters(registers);
    }

private:
    Registers readRegisters() const {
        Registers registers{};
        iovec place{&registers, sizeof registers};
        require(::ptrace(PTRACE_GETREGSET, child_, NT_PRSTATUS, &place) == 0, "reading registers");
        return registers;
    }

    void writeRegisters(Registers& registers) const {
        iovec place{&registers, sizeof registers};
        require(::ptrace(PTRACE_SETREGSET, child_, NT_PRSTATUS, &place) == 0, "writing registers");
    }

    void skipCall() const {
#if defined(__x86_64__)
        Registers registers = readRegisters();
        registers.orig_rax = static_cast<unsigned long long>(-1);
        writeRegisters(registers);
#else
        int none = -1;
        iovec place{&none, sizeof none};
        require(::ptrace(PTRACE_SETREGSET, child_, NT_ARM_SYSTEM_CALL, &place) == 0, "skipping a system call");
#endif
    }

    pid_t child_;
    int status_ = 0;
    bool isAlive_ = true;
};

constexpr std::array names{
    std::pair{static_cast<long>(SYS_openat), "openat"},
    std::pair{static_cast<long>(SYS_write), "write"},
    std::pair{static_cast<long>(SYS_fsync), "fsync"},
    std::pair{static_cast<long>(SYS_close), "close"},
    std::pair{static_cast<long>(SYS_fcntl), "fcntl"},
    std::pair{static_cast<long>(SYS_flock), "flock"},
    std::pair{static_cast<long>(SYS_fstat), "fstat"},
    std::pair{static_cast<long>(SYS_newfstatat), "newfstatat"},
    std::pair{static_cast<long>(SYS_statx), "statx"},
    std::pair{static_cast<long>(SYS_readlinkat), "readlinkat"},
    std::pair{static_cast<long>(SYS_faccessat), "faccessat"},
    std::pair{static_cast<long>(SYS_faccessat2), "faccessat2"},
    std::pair{static_cast<long>(SYS_fchown), "fchown"},
    std::pair{static_cast<long>(SYS_fchmod), "fchmod"},
    std::pair{static_cast<long>(SYS_renameat), "renameat"},
    std::pair{static_cast<long>(SYS_renameat2), "renameat2"},
    std::pair{static_cast<long>(SYS_unlinkat), "unlinkat"},
    std::pair{static_cast<long>(SYS_getdents64), "getdents64"},
    std::pair{static_cast<long>(SYS_lgetxattr), "lgetxattr"},
    std::pair{static_cast<long>(SYS_fsetxattr), "fsetxattr"},
    std::pair{static_cast<long>(SYS_fremovexattr), "fremovexattr"},
#ifdef SYS_open
    std::pair{static_cast<long>(SYS_open), "open"},
#endif
#ifdef SYS_readlink
    std::pair{static_cast<long>(SYS_readlink), "readlink"},
#endif
#ifdef SYS_stat
    std::pair{static_cast<long>(SYS_stat), "stat"},
    std::pair{static_cast<long>(SYS_lstat), "lstat"},
    std::pair{static_cast<long>(SYS_rename), "rename"},
    std::pair{static_cast<long>(SYS_unlink), "unlink"},
#endif
};

bool concernsNoFile(long call) {
    constexpr std::array calls{SYS_brk,          SYS_mmap,           SYS_munmap,        SYS_mprotect, SYS_mremap,
                               SYS_madvise,      SYS_futex,          SYS_getrandom,     SYS_exit,     SYS_exit_group,
                               SYS_rt_sigaction, SYS_rt_sigprocmask, SYS_rt_sigreturn,  SYS_gettid,   SYS_getpid,
                               SYS_sched_yield,  SYS_sigaltstack,    SYS_clock_gettime, SYS_prctl,    SYS_tgkill};
    return std::ranges::find(calls, call) != calls.end();
}

[[noreturn]] void runChild(const std::function<int()>& work) {
    UUID::random();  // opens its source, where that is a file
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(127);
    ::raise(SIGSTOP);
    ::_exit(work());
}

}  // namespace

TracedResult runTraced(const std::function<int()>& work, const Judge& judge) {
    const pid_t child = ::fork();
    require(child >= 0, "starting it");
    if (child == 0) runChild(work);

    Tracee tracee(child);
    tracee.attach();
    TracedResult result;
    for (tracee.proceed(true); tracee.isAlive(); tracee.proceed(true)) {
        if (!tracee.isAtSystemCall()) continue;
        const long call = tracee.beginningCall();
        if (call < 0 || concernsNoFile(call)) continue;
        if (call == SYS_write) tracee.shortenWrite();
        result.calls.push_back(call);
        const Verdict verdict = judge(call);
        if (verdict.kind == Verdict::Kind::kill) {
            tracee.kill();
            break;
        }
        if (verdict.kind == Verdict::Kind::fail) tracee.failCall(verdict.code);
    }
    result.status = tracee.exitStatus();
    return result;
}

std::string callName(long call) {
    const auto found = std::ranges::find(names, call, &std::pair<long, const char*>::first);
    return found == names.end() ? std::to_string(call) : found->second;
}

}  // namespace quorvel
