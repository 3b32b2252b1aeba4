#include "stand_in_process.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <thread>

#include "platform/process.h"
#include "stand_in.h"

namespace quillmere::platform {
namespace {

constexpr std::size_t kPathLimit = 260;  // units with the terminator
constexpr auto kThreadPatience = std::chrono::seconds(10);

std::atomic<std::uint64_t> sleptMilliseconds{0};

std::mutex threadMutex;
std::condition_variable threadEnded;
int threadsRunning = 0;
std::mutex sleepMutex;

void threadStarts() {
  const std::lock_guard lock(threadMutex);
  ++threadsRunning;
}

void threadEnds() {
  const std::lock_guard lock(threadMutex);
  --threadsRunning;
  threadEnded.notify_all();
}

}  // namespace

struct Event {
  std::mutex mutex;
  std::condition_variable changed;
  bool signalled = false;
};

void resetClock() {
  sleptMilliseconds = 0;
}

bool waitForDetachedThreads() {
  std::unique_lock lock(threadMutex);
  return threadEnded.wait_for(lock, kThreadPatience, [] { return threadsRunning == 0; });
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
  return standIn().openWithSystemResult;
}

std::uint64_t monotonicMilliseconds() {
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
  const std::lock_guard lock(event->mutex);
  event->signalled = true;
  event->changed.notify_all();
}

bool waitForEvent(Event* event, std::uint32_t timeoutMilliseconds) {
  std::unique_lock lock(event->mutex);
  return event->changed.wait_for(lock, std::chrono::milliseconds(timeoutMilliseconds),
                                 [event] { return event->signalled; });
}

void closeEvent(Event* event) {
  delete event;
}

bool startDetachedThread(void (*work)(void* context), void* context) {
  if (standIn().failThreads) return false;
  threadStarts();
  std::thread([work, context] {
    work(context);
    threadEnds();
  }).detach();
  return true;
}

}  // namespace quillmere::platform
