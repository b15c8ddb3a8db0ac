#include "StretcherWorkshop.h"

#include <chrono>

namespace {

constexpr std::chrono::milliseconds patience(20);

}  // namespace

void StretcherWorkshop::start(double sampleRate, uint32_t delay) {
  stop();
  sampleRate_ = sampleRate;
  delay_ = delay;
  stopping_ = false;
  thread_ = std::thread([this] { work(); });
}

void StretcherWorkshop::stop() {
  if (thread_.joinable()) {
    stopping_ = true;
    { const std::lock_guard lock(mutex_); }  // it has seen that, or is waiting
    stop_.notify_one();
    thread_.join();
  }
  state_ = idle;
  delivery_ = {};
  delete discarded_.exchange(nullptr);
}

bool StretcherWorkshop::place(const Order& order) {
  if (state_.load(std::memory_order_acquire) != idle) return false;
  order_ = order;
  state_.store(ordered, std::memory_order_release);
  return true;
}

bool StretcherWorkshop::collect(Delivery& delivery) {
  if (state_.load(std::memory_order_acquire) != ready) return false;
  delivery = std::move(delivery_);
  state_.store(idle, std::memory_order_release);
  return true;
}

bool StretcherWorkshop::discard(std::unique_ptr<PitchStretcher>& stretcher) {
  PitchStretcher* none = nullptr;
  if (!discarded_.compare_exchange_strong(none, stretcher.get(), std::memory_order_release)) return false;
  static_cast<void>(stretcher.release());
  return true;
}

void StretcherWorkshop::work() {
  std::unique_lock lock(mutex_);
  while (!stop_.wait_for(lock, patience, [this] { return stopping_.load(); })) {
    std::unique_ptr<PitchStretcher>(discarded_.exchange(nullptr, std::memory_order_acquire));
    if (state_.load(std::memory_order_acquire) == ordered) {
      build();
      state_.store(ready, std::memory_order_release);
    }
  }
}

void StretcherWorkshop::build() {
  constexpr uint32_t chunk = InputHistory::chunkFrames;
  delivery_.stretcher =
      std::make_unique<PitchStretcher>(order_.kind, sampleRate_, history_.channels(), delay_, order_.pitch);
  delivery_.stretcher->setTransients(order_.transients);
  delivery_.era = order_.era;
  // What is heard next was given one delay ago; it must not be the stretcher's beginning.
  const uint64_t end = history_.written(), enough = uint64_t{2} * delay_ / chunk * chunk;
  uint64_t frame = end > enough ? end - enough : 0;
  InputHistory::Chunk input[2], unheard[2];
  // Rendered faster than this can follow, the audio thread has to do the rest.
  for (uint64_t left = 2 * enough; left > 0 && frame < history_.written() && !stopping_; left -= chunk) {
    history_.read(frame, input);
    if (frame < history_.oldest()) break;
    delivery_.stretcher->process(input, unheard);
    frame += chunk;
  }
  delivery_.taken = frame;
}
