#include "PtySimulator.h"

#include "FakeClock.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <vector>

namespace {

using SteadyClock = std::chrono::steady_clock;

} // namespace

PtySimulator::PtySimulator(Device device, int timeScale) : mDevice(std::move(device)), mTimeScale(timeScale)
{
    mMaster = posix_openpt(O_RDWR | O_NOCTTY);
    if (mMaster < 0)
        return;
    if (grantpt(mMaster) != 0 || unlockpt(mMaster) != 0) {
        ::close(mMaster);
        mMaster = -1;
        return;
    }
    const char *name = ptsname(mMaster);
    mSlavePath = QString::fromLocal8Bit(name ? name : "");
    // Writes never block: a driver that stops reading must not hold up the thread.
    fcntl(mMaster, F_SETFL, fcntl(mMaster, F_GETFL) | O_NONBLOCK);
    mSlave = ::open(name, O_RDWR | O_NOCTTY);
    if (mSlave >= 0) {
        // Raw from the start, so nothing is echoed or held back before the port opens.
        termios t{};
        if (tcgetattr(mSlave, &t) == 0) {
            cfmakeraw(&t);
            tcsetattr(mSlave, TCSANOW, &t);
        }
    }
    mValid = true;
    mThread = std::thread([this] { run(); });
}

PtySimulator::~PtySimulator()
{
    mStop = true;
    if (mThread.joinable())
        mThread.join();
    if (mSlave >= 0)
        ::close(mSlave);
    if (mMaster >= 0)
        ::close(mMaster);
}

QString PtySimulator::received() const
{
    std::lock_guard lock(mMutex);
    return mReceived;
}

void PtySimulator::flood(const QByteArray &pattern)
{
    std::lock_guard lock(mMutex);
    mFlood = pattern;
}

bool PtySimulator::writeSome(const QByteArray &bytes, qsizetype &written)
{
    while (written < bytes.size()) {
        const ssize_t n = ::write(mMaster, bytes.constData() + written, size_t(bytes.size() - written));
        if (n <= 0)
            return false; // the line is full for now
        written += n;
    }
    return true;
}

void PtySimulator::run()
{
    struct Due {
        SteadyClock::time_point when;
        QByteArray bytes;
    };
    std::vector<Due> pending;
    qsizetype written = 0; // of the first pending answer
    qsizetype floodWritten = 0;
    while (!mStop) {
        if (mHangUp && pending.empty()) {
            ::close(mMaster);
            mMaster = -2; // gone, not to be closed again
            return;
        }
        pollfd p{mMaster, POLLIN, 0};
        const int ready = ::poll(&p, 1, 1);
        if (ready > 0 && (p.revents & POLLIN)) {
            char buffer[512];
            const ssize_t n = ::read(mMaster, buffer, sizeof buffer);
            if (n > 0) {
                const QString text = QString::fromLatin1(buffer, int(n));
                {
                    std::lock_guard lock(mMutex);
                    mReceived += text;
                }
                const auto now = SteadyClock::now();
                for (const Reply &r : mDevice(text)) {
                    const auto delay = std::chrono::microseconds(qint64(r.afterMs) * 1000 / mTimeScale);
                    pending.push_back({now + delay, r.text.toLatin1()});
                }
            }
        }
        const auto now = SteadyClock::now();
        // In order of their time; equal times keep the order they were given in. The first
        // one may be partly written already: it stays first.
        if (written == 0)
            std::stable_sort(pending.begin(), pending.end(),
                             [](const Due &a, const Due &b) { return a.when < b.when; });
        while (!pending.empty() && pending.front().when <= now) {
            if (!writeSome(pending.front().bytes, written))
                break;
            pending.erase(pending.begin());
            written = 0;
        }
        QByteArray flood;
        {
            std::lock_guard lock(mMutex);
            flood = mFlood;
        }
        if (!flood.isEmpty() && pending.empty()) {
            // As much of the pattern as the line takes, over and over.
            for (int i = 0; i < 64 && writeSome(flood, floodWritten); ++i)
                floodWritten = 0;
        }
    }
}

void ScaledSleeper::sleep(int milliseconds)
{
    ++mCalls;
    mClock.advance(milliseconds);
    const int scale = milliseconds >= 1000 ? mLongTimeScale : mTimeScale;
    const qint64 micros = std::max<qint64>(200, qint64(milliseconds) * 1000 / scale);
    ::usleep(useconds_t(micros));
}
