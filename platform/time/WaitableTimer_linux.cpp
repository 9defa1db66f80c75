#include <platform/time/WaitableTimer.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <vector>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

// A file descriptor that is closed at its end.
class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (m_fd >= 0) close(m_fd);
    }
    int Get() const { return m_fd; }
    bool IsOpen() const { return m_fd >= 0; }

    // Takes the number that the descriptor has counted; 0 if nothing has happened since.
    std::uint64_t Take() const {
        std::uint64_t count = 0;
        return read(m_fd, &count, sizeof count) == sizeof count ? count : 0;
    }

private:
    int m_fd;
};

// A thread as others see it: the event by which they end its sleep.
struct Sleeper {
    const Descriptor wake{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};

    void Wake() const {
        const std::uint64_t one = 1;
        // It fails only when the event is set already.
        [[maybe_unused]] const ssize_t written = write(wake.Get(), &one, sizeof one);
    }
};

// Tenths of microseconds.
using Ticks = std::chrono::duration<LONGLONG, std::ratio<1, 10'000'000>>;

// All but the descriptor is guarded by the lock of the registry.
struct Timer {
    const Descriptor clock{timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)};
    // The thread that is called; null while the timer is not armed, or calls nobody.
    std::shared_ptr<Sleeper> sleeper;
    PTIMERAPCROUTINE completion = nullptr;
    LPVOID argument = nullptr;
    ULONGLONG nextDue = 0;  // in ticks since 1601; it may wrap
    ULONGLONG period = 0;   // in ticks

    // Takes what has run out since the last time: the time at which the last of it was due.
    std::optional<ULONGLONG> TakeDue() {
        const std::uint64_t count = clock.Take();
        if (count == 0) return std::nullopt;
        const ULONGLONG lastDue = nextDue + (count - 1) * period;
        nextDue = lastDue + period;
        return lastDue;
    }
};
using TimerPtr = std::shared_ptr<Timer>;

// The open timers by their handles, which are never given out twice.
struct Registry {
    std::mutex lock;
    std::map<UINT_PTR, TimerPtr> timers;
    UINT_PTR last = 0;

    TimerPtr Find(HANDLE handle) const {
        const auto found = timers.find(reinterpret_cast<UINT_PTR>(handle));
        if (found != timers.end()) return found->second;
        errno = EBADF;
        return nullptr;
    }
};

Registry& TheRegistry() {
    // Never ended: a thread may outlive the static objects.
    static Registry& registry = *new Registry;
    return registry;
}

std::shared_ptr<Sleeper>& ThisThread() {
    thread_local std::shared_ptr<Sleeper> sleeper;
    return sleeper;
}

// The calling thread's event; null, and a code in the last error, if there is no room for it.
std::shared_ptr<Sleeper> SleeperOfThisThread() {
    std::shared_ptr<Sleeper>& mine = ThisThread();
    if (mine) return mine;
    auto made = std::make_shared<Sleeper>();
    if (!made->wake.IsOpen()) return nullptr;
    mine = std::move(made);
    return mine;
}

// Runs `work` and gives its answer; `failure`, and ENOMEM in the last error, without memory.
template <class Work, class Result>
Result WithinMemory(Work work, Result failure) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return failure;
    }
}

constexpr std::chrono::seconds kFrom1601To1970{11'644'473'600};

LONGLONG Now() {
    const auto since1970 = std::chrono::system_clock::now().time_since_epoch();
    return (std::chrono::floor<Ticks>(since1970) + kFrom1601To1970).count();
}

template <class Rep, class Period>
timespec ToTimespec(std::chrono::duration<Rep, Period> time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const std::chrono::nanoseconds rest = time - seconds;
    return {static_cast<time_t>(seconds.count()), static_cast<long>(rest.count())};
}

// The ticks from `now` to `due`, which is a distance from now if it is negative.
LONGLONG TicksUntil(LONGLONG due, LONGLONG now) {
    if (due > 0) return due - now;
    return due == INT64_MIN ? INT64_MAX : -due;
}

// When the system's timer first runs out. Never 0, which would disarm it.
timespec FirstExpiry(LONGLONG ticks) {
    return ticks > 0 ? ToTimespec(Ticks(ticks)) : timespec{0, 1};
}

// The armed timers of a thread.
std::vector<TimerPtr> TimersOf(const std::shared_ptr<Sleeper>& sleeper) {
    Registry& registry = TheRegistry();
    const std::scoped_lock guard(registry.lock);
    std::vector<TimerPtr> mine;
    for (const auto& [handle, timer] : registry.timers)
        if (timer->sleeper == sleeper) mine.push_back(timer);
    return mine;
}

// Makes the call that is due, unless the timer was closed, cancelled or moved to another
// thread meanwhile. Whether it was made.
bool CallIfDue(Timer& timer, const std::shared_ptr<Sleeper>& sleeper) {
    std::unique_lock guard(TheRegistry().lock);
    if (timer.sleeper != sleeper) return false;
    const std::optional<ULONGLONG> due = timer.TakeDue();
    if (!due) return false;
    const PTIMERAPCROUTINE completion = timer.completion;
    const LPVOID argument = timer.argument;
    guard.unlock();
    completion(argument, static_cast<DWORD>(*due), static_cast<DWORD>(*due >> 32));
    return true;
}

// The end of a sleep, or none.
class Deadline {
public:
    explicit Deadline(DWORD milliseconds) {
        if (milliseconds != INFINITE)
            m_end = Clock::now() + std::chrono::milliseconds(milliseconds);
    }
    bool IsOver() const { return m_end && *m_end <= Clock::now(); }
    // Waits for one of `events` until then.
    void Wait(std::vector<pollfd>& events) const {
        if (!m_end) {
            ppoll(events.data(), events.size(), nullptr, nullptr);
            return;
        }
        const auto left = *m_end - Clock::now();
        const timespec time = ToTimespec(left > Clock::duration::zero() ? left : Clock::duration());
        ppoll(events.data(), events.size(), &time, nullptr);
    }

private:
    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> m_end;
};

// What a sleep waits for: the event of the thread, then its armed timers.
struct Watch {
    std::vector<TimerPtr> timers;
    std::vector<pollfd> events;
};

// None without memory.
std::optional<Watch> WatchOf(const std::shared_ptr<Sleeper>& sleeper) {
    return WithinMemory(
        [&] {
            Watch watch{TimersOf(sleeper), {{sleeper->wake.Get(), POLLIN, 0}}};
            for (const TimerPtr& timer : watch.timers)
                watch.events.push_back({timer->clock.Get(), POLLIN, 0});
            return std::optional(std::move(watch));
        },
        std::optional<Watch>());
}

// Waits once, until something happens to the thread or the time is over. Whether something
// happened.
bool WaitAndCall(const std::shared_ptr<Sleeper>& sleeper, const Deadline& deadline) {
    std::optional<Watch> watch = WatchOf(sleeper);
    if (!watch) {
        // The calls wait until there is memory to look for them.
        Sleep(1);
        return false;
    }
    deadline.Wait(watch->events);
    bool happened = sleeper->wake.Take() != 0;
    for (const TimerPtr& timer : watch->timers) happened |= CallIfDue(*timer, sleeper);
    return happened;
}

}  // namespace

HANDLE CreateWaitableTimerA(void*, BOOL, LPCSTR) {
    return WithinMemory(
        []() -> HANDLE {
            auto timer = std::make_shared<Timer>();
            if (!timer->clock.IsOpen()) return nullptr;
            Registry& registry = TheRegistry();
            const std::scoped_lock guard(registry.lock);
            const UINT_PTR handle = registry.last + 1;
            registry.timers.emplace(handle, std::move(timer));
            registry.last = handle;
            return reinterpret_cast<HANDLE>(handle);
        },
        HANDLE());
}

BOOL SetWaitableTimer(HANDLE handle, const LARGE_INTEGER* due, LONG period,
                      PTIMERAPCROUTINE completion, LPVOID argument, BOOL) {
    if (due == nullptr || period < 0) {
        errno = EINVAL;
        return FALSE;
    }
    const auto sleeper = WithinMemory(SleeperOfThisThread, std::shared_ptr<Sleeper>());
    if (!sleeper) return FALSE;
    const std::chrono::milliseconds between(period);
    const LONGLONG now = Now();
    const LONGLONG first = TicksUntil(due->QuadPart, now);
    const itimerspec times = {ToTimespec(between), FirstExpiry(first)};
    Registry& registry = TheRegistry();
    const std::scoped_lock guard(registry.lock);
    const TimerPtr timer = registry.Find(handle);
    if (!timer || timerfd_settime(timer->clock.Get(), 0, &times, nullptr) != 0) return FALSE;
    timer->sleeper = completion ? sleeper : nullptr;
    timer->completion = completion;
    timer->argument = argument;
    timer->nextDue = static_cast<ULONGLONG>(now) + static_cast<ULONGLONG>(first);
    timer->period = static_cast<ULONGLONG>(Ticks(between).count());
    return TRUE;
}

BOOL CancelWaitableTimer(HANDLE handle) {
    Registry& registry = TheRegistry();
    const std::scoped_lock guard(registry.lock);
    const TimerPtr timer = registry.Find(handle);
    if (!timer) return FALSE;
    const itimerspec never{};
    timerfd_settime(timer->clock.Get(), 0, &never, nullptr);
    timer->sleeper = nullptr;
    return TRUE;
}

BOOL CloseHandle(HANDLE handle) {
    Registry& registry = TheRegistry();
    const std::scoped_lock guard(registry.lock);
    const TimerPtr timer = registry.Find(handle);
    if (!timer) return FALSE;
    registry.timers.erase(reinterpret_cast<UINT_PTR>(handle));
    // A sleep that waits for the timer keeps it; it must not call any more.
    const std::shared_ptr<Sleeper> sleeper = std::move(timer->sleeper);
    if (sleeper && sleeper != ThisThread()) sleeper->Wake();
    return TRUE;
}

DWORD SleepEx(DWORD milliseconds, BOOL alertable) {
    const std::shared_ptr<Sleeper> none;
    const auto sleeper = alertable ? WithinMemory(SleeperOfThisThread, none) : none;
    if (!sleeper) {
        // Without an event of its own the thread has armed no timer either.
        Sleep(milliseconds);
        return 0;
    }
    const Deadline deadline(milliseconds);
    do {
        if (WaitAndCall(sleeper, deadline)) return WAIT_IO_COMPLETION;
    } while (!deadline.IsOver());
    return 0;
}
