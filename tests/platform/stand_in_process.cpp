#include "stand_in_process.h"

#include <atomic>
#include <chrono>
#include <ctime>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "platform/process.h"
#include "stand_in.h"

namespace quillmere::platform {
namespace {

constexpr std::size_t kPathLimit = 260;  // units with the terminator
constexpr auto kThreadPatience = std::chrono::seconds(10);
constexpr auto kPause = std::chrono::milliseconds(1);

std::atomic<std::uint64_t> sleptMilliseconds{0};

struct StartedThread {
  std::thread thread;
  std::shared_ptr<std::atomic<bool>> finished;  // a thread may outlive a test that gave up on it
};

// Never destroyed, because some may still run when the program ends. Threads are joined and not
// detached: the Windows build's library can lose a thread that is detached while it ends, and the
// next one with it.
std::vector<StartedThread>& startedThreads() {
  static auto* const threads = new std::vector<StartedThread>;
  return *threads;
}

void joinFinishedThreads() {
  std::erase_if(startedThreads(), [](StartedThread& started) {
    if (!*started.finished) return false;
    started.thread.join();
    return true;
  });
}

std::mutex sleepMutex;

// Polls, because threads waiting on condition variables have been seen to hang in the Windows
// build.
template <typename Condition>
bool waitUntil(std::chrono::milliseconds limit, Condition holds) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!holds()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

}  // namespace

struct Event {
  std::atomic<bool> signalled{false};
};

void resetClock() {
  sleptMilliseconds = 0;
}

bool waitForDetachedThreads() {
  return waitUntil(kThreadPatience, [] {
    joinFinishedThreads();
    return startedThreads().empty();
  });
}

void forgetDetachedThreads() {
  for (StartedThread& started : startedThreads()) started.thread.detach();
  startedThreads().clear();
}

std::u16string executablePath() {
  const std::u16string& path = standIn().executable;
  return path.size() < kPathLimit ? path : std::u16string();
}

bool startProcess(const std::u16string& program, const std::u16string& commandLine) {
  standIn().processes.push_back({program, commandLine});
  return standIn().startProcessResult.value_or(fileExists(program));
}

bool openWithSystem(const std::u16string& target) {
  standIn().openedWithSystem.push_back(target);
  if (standIn().onOpenWithSystem) standIn().onOpenWithSystem();
  return standIn().openWithSystemResult;
}

std::uint64_t monotonicMilliseconds() {
  sleptMilliseconds += standIn().clockStep;
  if (standIn().clockStopped) return sleptMilliseconds;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  const auto real = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  return static_cast<std::uint64_t>(real) + sleptMilliseconds;
}

void sleepMilliseconds(std::uint32_t milliseconds) {
  sleptMilliseconds += milliseconds;
  {
    const std::lock_guard lock(sleepMutex);
    standIn().sleeps.push_back(milliseconds);
  }
  std::this_thread::yield();
  if (standIn().onSleep) standIn().onSleep();
}

std::uint32_t localDate() {
  if (standIn().date) return *standIn().date;
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  return static_cast<std::uint32_t>((local->tm_year + 1900) * 10000 + (local->tm_mon + 1) * 100 +
                                    local->tm_mday);
}

Event* createEvent() {
  return standIn().failEvents ? nullptr : new Event;
}

void signalEvent(Event* event) {
  event->signalled = true;
}

bool waitForEvent(Event* event, std::uint32_t timeoutMilliseconds) {
  standIn().timeoutsGiven += timeoutMilliseconds;
  return waitUntil(std::chrono::milliseconds(timeoutMilliseconds),
                   [event] { return event->signalled.load(); });
}

void closeEvent(Event* event) {
  delete event;
}

bool startDetachedThread(void (*work)(void* context), void* context) {
  if (standIn().failThreads) return false;
  ++standIn().threadsStarted;
  joinFinishedThreads();
  auto finished = std::make_shared<std::atomic<bool>>(false);
  std::thread thread([work, context, finished] {
    work(context);
    *finished = true;
  });
  startedThreads().push_back({std::move(thread), std::move(finished)});
  return true;
}

}  // namespace quillmere::platform
