#include "ChildProcess.h"

#include "store/SqliteWal.h"

#include <csignal>
#include <cstdio>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

ChildProcess::ChildProcess(const Work &work)
{
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return;
    std::fflush(nullptr);
    // SQLite's connections must not cross a fork: the child starts with none of ours.
    SqliteWal::settleAll();
    mPid = ::fork();
    if (mPid == 0) {
        ::close(ends[0]);
        int code = 99;
        try {
            code = work(ends[1]);
        } catch (...) {
        }
        SqliteWal::settleAll(); // as the program's end does
        std::fflush(nullptr);
        ::_exit(code);
    }
    ::close(ends[1]);
    mPipeIn = ends[0];
}

ChildProcess::~ChildProcess()
{
    kill();
    if (mPipeIn >= 0)
        ::close(mPipeIn);
}

bool ChildProcess::readByte(char &byte, int timeoutMs)
{
    pollfd waiting{mPipeIn, POLLIN, 0};
    if (mPipeIn < 0 || ::poll(&waiting, 1, timeoutMs) != 1)
        return false;
    return ::read(mPipeIn, &byte, 1) == 1;
}

QByteArray ChildProcess::readToEnd(int timeoutMs)
{
    QByteArray all;
    char byte = 0;
    while (readByte(byte, timeoutMs))
        all.append(byte);
    return all;
}

void ChildProcess::kill()
{
    if (mPid <= 0)
        return;
    ::kill(mPid, SIGKILL);
    wait();
}

int ChildProcess::wait()
{
    if (mPid <= 0)
        return mExitCode;
    int status = 0;
    ::waitpid(mPid, &status, 0);
    mPid = -1;
    mExitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return mExitCode;
}

void ChildProcess::tell(int pipeOut, char byte)
{
    (void)!::write(pipeOut, &byte, 1);
}

void ChildProcess::waitToBeKilled()
{
    for (;;)
        ::pause();
}
