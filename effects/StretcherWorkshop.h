#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "PitchStretcher.h"

/// Builds stretchers for an audio thread on a thread of its own, fills them with what the effect was given
/// before, and takes back what is no longer needed. Its thread looks for work by itself, since to wake it
/// would take a system call.
class StretcherWorkshop {
 public:
  struct Order {
    PitchStretcher::Kind kind;
    double pitch = 1;
    PitchStretcher::Transients transients = PitchStretcher::Transients::mixed;
    uint32_t era = 0;  // of the input: a reset begins a new one
  };
  /// A stretcher that has been given the input up to a frame.
  struct Delivery {
    std::unique_ptr<PitchStretcher> stretcher;
    uint64_t taken = 0;
    uint32_t era = 0;
  };

  explicit StretcherWorkshop(const InputHistory& history) : history_(history) {}
  ~StretcherWorkshop() { stop(); }

  /// Main thread. Nothing is under way after stop().
  void start(double sampleRate, uint32_t delay);
  void stop();

  // Audio thread; none of these waits.
  /// False when another order is under way.
  bool place(const Order& order);
  /// True once for each order.
  bool collect(Delivery& delivery);
  /// False when the last one has not been taken away yet; then it is left as it is.
  bool discard(std::unique_ptr<PitchStretcher>& stretcher);

 private:
  enum State { idle, ordered, ready };

  void work();
  void build();

  const InputHistory& history_;
  double sampleRate_ = 44100;
  uint32_t delay_ = 0;

  std::thread thread_;
  std::mutex mutex_;  // never the audio thread's
  std::condition_variable stop_;
  std::atomic<bool> stopping_ = false;
  std::atomic<State> state_ = idle;  // says whose the next two are
  Order order_;
  Delivery delivery_;
  std::atomic<PitchStretcher*> discarded_ = nullptr;
};
