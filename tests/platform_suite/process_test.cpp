#include "platform/process.h"

#include <atomic>
#include <ctime>
#include <memory>

#include "platform/files.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using ProcessSuite = PlatformSuite;

constexpr std::uint32_t kPatience = 20'000;  // milliseconds

struct EventCloser {
  void operator()(Event* event) const { closeEvent(event); }
};
using EventHandle = std::unique_ptr<Event, EventCloser>;

TEST_F(ProcessSuite, TheExecutableIsAFileWithAFullPath) {
  const std::u16string path = executablePath();
  ASSERT_GT(path.size(), 3u);
  EXPECT_EQ(path.substr(1, 2), u":\\");
  EXPECT_TRUE(fileExists(path));
}

TEST_F(ProcessSuite, AProgramThatIsNotThereDoesNotStart) {
  EXPECT_FALSE(startProcess(in(u"none.exe"), u"\"none.exe\" x"));
}

TEST_F(ProcessSuite, TheClockNeverGoesBackAndASleepPasses) {
  const std::uint64_t before = monotonicMilliseconds();
  sleepMilliseconds(30);
  // Sleep and clock may use different sources, so allow a small difference.
  EXPECT_GE(monotonicMilliseconds() + 16, before + 30);
  std::uint64_t last = monotonicMilliseconds();
  for (int n = 0; n < 1000; ++n) {
    const std::uint64_t now = monotonicMilliseconds();
    ASSERT_GE(now, last);
    last = now;
  }
}

TEST_F(ProcessSuite, TheDateIsThatOfTheLocalCalendar) {
  const auto date = [](std::time_t time) {
    const std::tm* local = std::localtime(&time);
    return static_cast<std::uint32_t>((local->tm_year + 1900) * 10000 + (local->tm_mon + 1) * 100 +
                                      local->tm_mday);
  };
  const std::uint32_t before = date(std::time(nullptr));
  const std::uint32_t told = localDate();
  EXPECT_GE(told, before);
  EXPECT_LE(told, date(std::time(nullptr)));
}

TEST_F(ProcessSuite, AnEventStaysSignalled) {
  const EventHandle event(createEvent());
  ASSERT_TRUE(event);
  EXPECT_FALSE(waitForEvent(event.get(), 0));
  EXPECT_FALSE(waitForEvent(event.get(), 10));
  signalEvent(event.get());
  EXPECT_TRUE(waitForEvent(event.get(), 0));
  EXPECT_TRUE(waitForEvent(event.get(), kPatience));
  signalEvent(event.get());
  EXPECT_TRUE(waitForEvent(event.get(), 0));
}

struct Handshake {
  EventHandle go{createEvent()};
  EventHandle done{createEvent()};
  std::atomic<int> steps{0};
};

void followHandshake(void* context) {
  auto* handshake = static_cast<Handshake*>(context);
  if (waitForEvent(handshake->go.get(), kPatience)) ++handshake->steps;
  signalEvent(handshake->done.get());
}

TEST_F(ProcessSuite, AThreadRunsBesideItsStarter) {
  static Handshake handshake;  // outlives a thread that is late to end
  ASSERT_TRUE(handshake.go && handshake.done);
  ASSERT_TRUE(startDetachedThread(followHandshake, &handshake));
  EXPECT_FALSE(waitForEvent(handshake.done.get(), 0));
  signalEvent(handshake.go.get());
  ASSERT_TRUE(waitForEvent(handshake.done.get(), kPatience));
  EXPECT_EQ(handshake.steps, 1);
}

struct Counter {
  static constexpr int kThreads = 16;
  std::atomic<int> left{kThreads};
  EventHandle done{createEvent()};
};

void countDown(void* context) {
  auto* counter = static_cast<Counter*>(context);
  if (--counter->left == 0) signalEvent(counter->done.get());
}

TEST_F(ProcessSuite, ManyThreadsEachRunOnce) {
  static Counter counter;
  ASSERT_TRUE(counter.done);
  for (int n = 0; n < Counter::kThreads; ++n) {
    ASSERT_TRUE(startDetachedThread(countDown, &counter));
  }
  ASSERT_TRUE(waitForEvent(counter.done.get(), kPatience));
  EXPECT_EQ(counter.left, 0);
}

}  // namespace
}  // namespace quillmere::platform
