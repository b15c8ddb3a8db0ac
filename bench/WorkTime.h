#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>

/// Seconds of processor time of this thread.
inline double threadSeconds() {
  timespec time;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

inline double wallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Seconds that some work takes this thread: the lesser of what two clocks say. The wall's says too much
/// where something else ran in between; the thread's own says too much since reading it costs much, and on a
/// virtual machine, once in some thousand times, too little.
template <class Work>
double secondsOf(const Work& work) {
  const double before = threadSeconds();
  const double wallBefore = wallSeconds();
  work();
  const double wall = wallSeconds() - wallBefore;
  return std::min(wall, threadSeconds() - before);
}

/// A piece of work that times itself, in seconds: what prepares it does not count.
using TimedWork = std::function<double()>;

/// Lets a figure and its floor take turns as often as the engine asks, so that both see the same noise of the
/// machine. Counters `figure` and `floor`: the lower quartile of each, in seconds.
void takeTurns(benchmark::State& state, const TimedWork& figure, const TimedWork& floor);
