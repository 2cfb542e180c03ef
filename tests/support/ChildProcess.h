#pragma once

#include <QByteArray>

#include <functional>
#include <sys/types.h>

// A forked copy of the test program that does one piece of work, for what needs a process
// of its own: a second program on the same database, a program killed in the middle of
// something, a fresh start. The work gets the write end of a pipe to tell the test how
// far it got (tell()); its return value is the child's exit code. The child is killed
// (SIGKILL) and reaped at the latest when the object goes.
class ChildProcess {
public:
    using Work = std::function<int(int pipeOut)>;

    explicit ChildProcess(const Work &work);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    bool started() const { return mPid > 0; }
    // The next byte the child told; false when none came in time (or the child ended).
    bool readByte(char &byte, int timeoutMs = 30000);
    // Everything the child tells until it ends.
    QByteArray readToEnd(int timeoutMs = 30000);
    void kill();
    // Waits for the child to end: its exit code, or -1 when a signal ended it.
    int wait();

    // For the work: one byte to the test.
    static void tell(int pipeOut, char byte);
    // For the work: waits until killed.
    [[noreturn]] static void waitToBeKilled();

private:
    pid_t mPid = -1;
    int mPipeIn = -1;
    int mExitCode = -1;
};
