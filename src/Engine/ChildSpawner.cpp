// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ChildSpawner.h"

#include <QByteArray>

#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <deque>
#include <fcntl.h>
#include <functional>
#include <future>
#include <mutex>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

// All that the child needs, laid out beforehand: between vfork() and exec it may allocate nothing.
struct PreparedChild {
    const char *executable = nullptr;
    char *const *arguments = nullptr;
    char *const *environment = nullptr;
    int standardInput = -1;
    int standardOutput = -1;
    int standardError = -1;
    int execErrors = -1;
    pid_t parent = -1;
};

[[noreturn]] void failLaunch(const QString &executable, int error)
{
    throw LaunchError(executable + QStringLiteral(": ") + qt_error_string(error));
}

// A descriptor above the standard three, so that redirecting one never closes another.
FileDescriptor moveAboveStandardStreams(int descriptor)
{
    const FileDescriptor original(descriptor);
    return FileDescriptor(::fcntl(original.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

Pipe makePipe(const QString &executable)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        failLaunch(executable, errno);
    }
    Pipe pipe{moveAboveStandardStreams(ends[0]), moveAboveStandardStreams(ends[1])};
    if (!pipe.readEnd.isOpen() || !pipe.writeEnd.isOpen()) {
        failLaunch(executable, errno);
    }
    return pipe;
}

FileDescriptor openNullDevice(const QString &executable)
{
    const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        failLaunch(executable, errno);
    }
    return moveAboveStandardStreams(descriptor);
}

// Handlers of the parent mean nothing in the child; what the parent was started with as ignored
// (nohup) stays ignored, but for SIGPIPE, which only we ignore.
void resetSignals()
{
    for (int signal = 1; signal < NSIG; ++signal) {
        struct sigaction action {
        };
        if (::sigaction(signal, nullptr, &action) != 0) {
            continue;
        }
        if (action.sa_handler != SIG_IGN || signal == SIGPIPE) {
            action = {};
            action.sa_handler = SIG_DFL;
            ::sigaction(signal, &action, nullptr);
        }
    }
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void redirect(int descriptor, int standardStream)
{
    if (descriptor >= 0) {
        ::dup2(descriptor, standardStream);
    }
}

// Runs in the child, which shares the parent's memory until exec.
[[noreturn]] void becomeChild(const PreparedChild &child)
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The parent may have died before the line above.
    if (::getppid() != child.parent) {
        ::_exit(EXIT_FAILURE);
    }
    redirect(child.standardInput, STDIN_FILENO);
    redirect(child.standardOutput, STDOUT_FILENO);
    redirect(child.standardError, STDERR_FILENO);
    resetSignals();
    ::execve(child.executable, child.arguments, child.environment);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = ::write(child.execErrors, &error, sizeof error);
    ::_exit(EXIT_FAILURE);
}

// vfork() and not fork(): copying the page tables of a large parent takes 27 ms.
pid_t forkInto(const PreparedChild &child)
{
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &previous);
    const pid_t pid = ::vfork(); // NOLINT(clang-analyzer-security.insecureAPI.vfork)
    if (pid == 0) {
        // Nothing but system calls on the child's own stack.
        becomeChild(child); // NOLINT(clang-analyzer-unix.Vfork)
    }
    const int error = errno;
    ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
    errno = error;
    return pid;
}

// 0 when exec succeeded: the pipe was closed by it without a word.
int readExecError(const FileDescriptor &readEnd)
{
    int error = 0;
    ssize_t count = 0;
    do {
        count = ::read(readEnd.get(), &error, sizeof error);
    } while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof error) ? error : 0;
}

void reap(pid_t pid)
{
    while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

std::vector<QByteArray> encodedArguments(const ChildCommand &command)
{
    std::vector<QByteArray> encoded{command.executable.toUtf8()};
    for (const QString &argument : command.args) {
        encoded.push_back(argument.toUtf8());
    }
    return encoded;
}

// The AV1 encoder of SVT writes a log of its own past ffmpeg's level, and takes orders from the
// environment alone: errors only, unless the user has said otherwise.
std::vector<char *> childEnvironment()
{
    static QByteArray svtErrorsOnly = "SVT_LOG=1";
    const std::scoped_lock guard(ChildSpawner::environmentLock());
    std::vector<char *> variables;
    for (char **variable = environ; *variable != nullptr; ++variable) {
        variables.push_back(*variable);
    }
    if (!qEnvironmentVariableIsSet("SVT_LOG")) {
        variables.push_back(svtErrorsOnly.data());
    }
    variables.push_back(nullptr);
    return variables;
}

std::unique_ptr<ChildProcess> launch(const ChildCommand &command)
{
    Pipe output = makePipe(command.executable);
    Pipe errors = makePipe(command.executable);
    Pipe execErrors = makePipe(command.executable);
    const FileDescriptor null = command.standardInput == StandardInput::null
                                    ? openNullDevice(command.executable)
                                    : FileDescriptor();

    std::vector<QByteArray> encoded = encodedArguments(command);
    std::vector<char *> arguments;
    arguments.reserve(encoded.size() + 1);
    for (QByteArray &argument : encoded) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    const std::vector<char *> environment = childEnvironment();

    const pid_t pid = forkInto({.executable = encoded.front().constData(),
                                .arguments = arguments.data(),
                                .environment = environment.data(),
                                .standardInput = null.get(),
                                .standardOutput = output.writeEnd.get(),
                                .standardError = errors.writeEnd.get(),
                                .execErrors = execErrors.writeEnd.get(),
                                .parent = ::getpid()});
    if (pid < 0) {
        failLaunch(command.executable, errno);
    }
    FileDescriptor pidFd(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (!pidFd.isOpen()) {
        const int error = errno;
        ::kill(pid, SIGKILL);
        reap(pid);
        failLaunch(command.executable, error);
    }
    execErrors.writeEnd.close();
    if (const int error = readExecError(execErrors.readEnd)) {
        reap(pid);
        failLaunch(command.executable, error);
    }
    return std::make_unique<ChildProcess>(pid, std::move(pidFd), std::move(output.readEnd),
                                          std::move(errors.readEnd));
}

// Some launchers hand down an ignored SIGCHLD, and the system then throws away how children ended.
void keepStatuses()
{
    struct sigaction action {
    };
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

// The permanent thread and its queue. Never destroyed: a child may be started until the very end.
class SpawnerThread
{
public:
    using Task = std::packaged_task<std::unique_ptr<ChildProcess>()>;

    SpawnerThread()
    {
        keepStatuses();
        std::thread([this] { serve(); }).detach();
    }

    std::unique_ptr<ChildProcess> run(Task task)
    {
        auto child = task.get_future();
        {
            const std::scoped_lock guard(m_lock);
            m_tasks.push_back(std::move(task));
        }
        m_wakeUp.notify_one();
        return child.get();
    }

private:
    [[noreturn]] void serve()
    {
        while (true) {
            std::unique_lock guard(m_lock);
            m_wakeUp.wait(guard, [this] { return !m_tasks.empty(); });
            Task task = std::move(m_tasks.front());
            m_tasks.pop_front();
            guard.unlock();
            task();
        }
    }

    std::mutex m_lock;
    std::condition_variable m_wakeUp;
    std::deque<Task> m_tasks;
};

} // namespace

std::unique_ptr<ChildProcess> ChildSpawner::spawn(const ChildCommand &command)
{
    static auto *const thread = new SpawnerThread;
    return thread->run(SpawnerThread::Task([&command] { return launch(command); }));
}

std::mutex &ChildSpawner::environmentLock()
{
    static std::mutex lock;
    return lock;
}
