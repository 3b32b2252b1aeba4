#include "store/probe_path.h"

#include <atomic>

#include "platform/files.h"
#include "platform/process.h"

namespace quillmere {

namespace {

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

bool isNetworkPath(const std::u16string& path) {
  return path.size() >= 2 && path[0] == u'\\' && path[1] == u'\\';
}

ProbeResult judgeNetworkQuery(const platform::AttributeQuery& query) {
  if (query.attributes != platform::kInvalidAttributes) return ProbeResult::Available;
  const bool missing =
      query.error == platform::kErrorFileNotFound || query.error == platform::kErrorPathNotFound;
  return missing ? ProbeResult::Missing : ProbeResult::Unavailable;
}

ProbeResult probeNetworkPath(const std::u16string& path, std::uint32_t timeoutMilliseconds) {
  platform::Event* event = platform::createEvent();
  if (event == nullptr) return judgeNetworkQuery(platform::queryAttributes(path));

  auto* job = new ProbeJob;
  job->path = path;
  job->doneEvent = event;
  if (!platform::startDetachedThread(probeOnThread, job)) {
    job->references = 1;  // no thread took the other one
    release(job);
    return judgeNetworkQuery(platform::queryAttributes(path));
  }
  const bool answered = platform::waitForEvent(event, timeoutMilliseconds);
  const ProbeResult result =
      answered ? judgeNetworkQuery({job->attributes, job->lastError}) : ProbeResult::Unavailable;
  release(job);
  return result;
}

}  // namespace

ProbeResult probePath(const std::u16string& path, std::uint32_t timeoutMilliseconds) {
  if (isNetworkPath(path)) return probeNetworkPath(path, timeoutMilliseconds);
  return platform::fileExists(path) ? ProbeResult::Available : ProbeResult::Missing;
}

}  // namespace quillmere
