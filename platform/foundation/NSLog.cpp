#include "NSLog.h"

#include <cstdio>
#include <mutex>
#include <set>
#include <string>
#include <utility>

namespace {

struct Log {
  std::mutex mutex;
  NSLogSink sink;
  std::set<std::string, std::less<>> seen;
};

Log& theLog() {
  static Log log;
  return log;
}

void append(Log& log, std::string_view line) {
  if (log.sink)
    log.sink(line);
  else
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

}  // namespace

void NSLog(std::string_view line) noexcept try {
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  append(log, line);
} catch (...) {
  // A log that fails has nowhere to say so.
}

void NSLogOnce(std::string_view line) noexcept try {
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  if (log.seen.emplace(line).second) append(log, line);
} catch (...) {
}

NSLogSink NSSetLogSink(NSLogSink sink) {
  Log& log = theLog();
  const std::lock_guard lock(log.mutex);
  log.seen.clear();
  return std::exchange(log.sink, std::move(sink));
}
