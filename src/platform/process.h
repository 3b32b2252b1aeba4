#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Processes, waits and the threads behind them.
namespace quillmere::platform {

// Full path of this executable; empty when it has 260 units or more, or on failure.
std::u16string executablePath();

// Starts a program that runs independently of this process. `commandLine` begins with the program's
// name in quotes. False when it could not be started.
bool startProcess(const std::u16string& program, const std::u16string& commandLine);

// Opens an address or file with its default program. False on failure.
bool openWithSystem(const std::u16string& target);

// Milliseconds of a monotonic clock.
std::uint64_t monotonicMilliseconds();

void sleepMilliseconds(std::uint32_t milliseconds);

// The local date as year * 10000 + month * 100 + day.
std::uint32_t localDate();

// A manual-reset event, not signalled at first; null when it cannot be made. The caller closes it.
struct Event;
Event* createEvent();
void signalEvent(Event* event);
// True when the event was signalled within the time.
bool waitForEvent(Event* event, std::uint32_t timeoutMilliseconds);
void closeEvent(Event* event);

// Runs `work(context)` on a detached thread. False when none can be made; `work` then never runs.
bool startDetachedThread(void (*work)(void* context), void* context);

}  // namespace quillmere::platform
