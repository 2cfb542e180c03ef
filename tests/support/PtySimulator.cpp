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
    mSlave = ::open(name, O_RDWR | O_NOCTTY);
    if (mSlave >= 0) {
        // Raw from the start, so nothing is echoed or held back before the port opens.
        termios t{};
        if (tcgetattr(mSlave, &t) == 0) {
            cfmakeraw(&t);
            tcsetattr(mSlave, TCSANOW, &t);
        }
    }
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

void PtySimulator::run()
{
    struct Due {
        SteadyClock::time_point when;
        QByteArray bytes;
    };
    std::vector<Due> pending;
    while (!mStop) {
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
        // In order of their time; equal times keep the order they were given in.
        std::stable_sort(pending.begin(), pending.end(), [](const Due &a, const Due &b) { return a.when < b.when; });
        while (!pending.empty() && pending.front().when <= now) {
            const QByteArray &bytes = pending.front().bytes;
            qsizetype written = 0;
            while (written < bytes.size()) {
                const ssize_t n = ::write(mMaster, bytes.constData() + written, size_t(bytes.size() - written));
                if (n <= 0)
                    break;
                written += n;
            }
            pending.erase(pending.begin());
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
