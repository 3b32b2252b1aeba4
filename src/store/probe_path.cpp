#include "store/probe_path.h"

#include <algorithm>
#include <atomic>

#include "platform/files.h"
#include "platform/process.h"
#include "platform/text.h"
#include "session/session.h"

namespace quillmere {

namespace {

// Milliseconds. Work on several files of a share that does not answer is to wait once, not once for
// each file; what the user does next is to ask again.
constexpr std::uint64_t kNoticeableWait = 250;
constexpr std::uint64_t kShareRest = 5000;

// Shared by the caller and the probing thread; the last to release it frees it.
struct ProbeJob {
  std::u16string path;
  std::uint32_t attributes = platform::kInvalidAttributes;
  std::uint32_t lastError = platform::kErrorNone;
  platform::Event* doneEvent = nullptr;
  std::atomic<std::int32_t> references{2};
};

void release(ProbeJob* job) {
  if (job->references.fetch_sub(1) > 1) return;
  platform::closeEvent(job->doneEvent);
  delete job;
}

void probeOnThread(void* context) {
  auto* job = static_cast<ProbeJob*>(context);
  const platform::AttributeQuery query = platform::queryAttributes(job->path);
  job->attributes = query.attributes;
  job->lastError = query.error;
  platform::signalEvent(job->doneEvent);
  release(job);
}

ProbeResult judgeNetworkQuery(const platform::AttributeQuery& query) {
  if (query.attributes != platform::kInvalidAttributes) return ProbeResult::Available;
  const bool missing =
      query.error == platform::kErrorFileNotFound || query.error == platform::kErrorPathNotFound;
  return missing ? ProbeResult::Missing : ProbeResult::Unavailable;
}

// A probe under way; if no thread could be started, it already has its result.
struct Probe {
  ProbeJob* job = nullptr;
  ProbeResult result = ProbeResult::Unavailable;
};

Probe startNetworkProbe(const std::u16string& path) {
  platform::Event* event = platform::createEvent();
  if (event == nullptr) return {nullptr, judgeNetworkQuery(platform::queryAttributes(path))};

  auto* job = new ProbeJob;
  job->path = path;
  job->doneEvent = event;
  if (platform::startDetachedThread(probeOnThread, job)) return {job};
  job->references = 1;  // no thread holds the other one
  release(job);
  return {nullptr, judgeNetworkQuery(platform::queryAttributes(path))};
}

Probe startProbe(const std::u16string& path) {
  if (onNetwork(path)) return startNetworkProbe(path);
  return {nullptr, platform::fileExists(path) ? ProbeResult::Available : ProbeResult::Missing};
}

ProbeResult finishProbe(const Probe& probe, std::uint32_t timeoutMilliseconds) {
  ProbeJob* job = probe.job;
  if (job == nullptr) return probe.result;
  const bool answered = platform::waitForEvent(job->doneEvent, timeoutMilliseconds);
  const ProbeResult result =
      answered ? judgeNetworkQuery({job->attributes, job->lastError}) : ProbeResult::Unavailable;
  release(job);
  return result;
}

// The share or drive of a network path, as a key.
std::u16string shareOf(const std::u16string& path) {
  std::u16string key = platform::toLower(path);
  std::replace(key.begin(), key.end(), u'/', u'\\');
  if (!key.starts_with(u"\\\\")) return key.substr(0, 2);
  const std::size_t server = key.find(u'\\', 2);
  const std::size_t share = server == std::u16string::npos ? server : key.find(u'\\', server + 1);
  return key.substr(0, share);
}

void noteAnswer(const std::u16string& path, ProbeResult result, std::uint64_t start) {
  const std::uint64_t now = platform::monotonicMilliseconds();
  if (result != ProbeResult::Unavailable) {
    session.deafShares.erase(shareOf(path));
  } else if (now - start >= kNoticeableWait) {
    session.deafShares[shareOf(path)] = now;
  }
}

bool keptUsWaiting(const std::u16string& path) {
  const auto deaf = session.deafShares.find(shareOf(path));
  return deaf != session.deafShares.end() &&
         platform::monotonicMilliseconds() - deaf->second < kShareRest;
}

// A bit for each drive letter; 0 for a path without one.
std::uint32_t bitOfDrive(const std::u16string& path) {
  if (path.size() < 2 || path[1] != u':') return 0;
  const char16_t letter = platform::toLower(path.substr(0, 1)).front();
  return letter >= u'a' && letter <= u'z' ? 1U << (letter - u'a') : 0;
}

}  // namespace

bool onNetwork(const std::u16string& path) {
  const std::uint32_t drive = bitOfDrive(path);
  if ((session.localDrives & drive) != 0) return false;
  if (platform::isNetworkPath(path)) return true;
  // The drive may be one of a share that is not connected.
  if (!platform::driveIsAbsent(path)) session.localDrives |= drive;
  return false;
}

void forgetDrives() {
  session.localDrives = 0;
}

ProbeResult probePath(const std::u16string& path, std::uint32_t timeoutMilliseconds) {
  if (!onNetwork(path)) return startProbe(path).result;
  const std::uint64_t start = platform::monotonicMilliseconds();
  const ProbeResult result = finishProbe(startNetworkProbe(path), timeoutMilliseconds);
  noteAnswer(path, result, start);
  return result;
}

std::vector<ProbeResult> probePaths(const std::vector<std::u16string>& paths,
                                    std::uint32_t timeoutMilliseconds) {
  std::vector<Probe> probes;
  probes.reserve(paths.size());
  for (const std::u16string& path : paths) probes.push_back(startProbe(path));

  const std::uint64_t start = platform::monotonicMilliseconds();
  std::vector<ProbeResult> results;
  results.reserve(probes.size());
  for (const Probe& probe : probes) {
    const std::uint64_t waited = platform::monotonicMilliseconds() - start;
    const std::uint64_t left = timeoutMilliseconds > waited ? timeoutMilliseconds - waited : 0;
    results.push_back(finishProbe(probe, static_cast<std::uint32_t>(left)));
  }
  return results;
}

ProbeResult probeWithinOpenTimeout(const std::u16string& path) {
  return probePath(path, openTimeoutMilliseconds());
}

bool onGoneShare(const std::u16string& path) {
  if (!onNetwork(path)) return false;
  return keptUsWaiting(path) || probeWithinOpenTimeout(path) == ProbeResult::Unavailable;
}

std::uint32_t openTimeoutMilliseconds() {
  return static_cast<std::uint32_t>(session.settings.openTimeoutSeconds) * 1000;
}

}  // namespace quillmere
