#pragma once

#include <cairo.h>

#include <functional>
#include <map>
#include <optional>
#include <vector>

/// The cairo calls that some work makes, taken down in the order and with the arguments in which they were
/// made, and played again without the code that made them: what drawing costs beyond them is ours.
///
/// This program defines the cairo functions that draw (CairoCalls.cpp), so every call of the platform's
/// library comes by here on its way. What was there before the work began is drawn to and from as it is when
/// the tape is played; what the work made is made anew.
class CairoTape {
 public:
  /// Objects of one play, in the order in which the work made them.
  using Made = std::vector<void*>;
  using Call = std::function<void(Made&)>;

  CairoTape() = default;
  ~CairoTape();
  CairoTape(const CairoTape&) = delete;
  CairoTape& operator=(const CairoTape&) = delete;

  /// Takes down what `work` calls, behind what is on the tape already.
  void record(const std::function<void()>& work);
  bool isEmpty() const { return calls_.empty(); }
  void play();
  /// Gives back what play() left alive. Apart from it, so that nobody counts it.
  void rewind();

  /// Where calls go at the moment; null when nothing is recorded.
  static CairoTape* current() { return current_; }

  // For the functions of CairoCalls.cpp while this is the current tape.
  enum class Kind { context, surface, pattern, lentPattern };
  void add(Call call) { calls_.push_back(std::move(call)); }
  /// The work has made an object, or has been lent one; the number that stands for it.
  size_t numberMade(void* object, Kind kind);
  bool hasMade(void* object, Kind kind) const;
  /// The work gives an object back; its number, if the work made it.
  std::optional<size_t> forget(void* object);
  /// What stands for an argument on the tape.
  struct Reference {
    void* before = nullptr;
    size_t number = 0;
    void* in(const Made& made) const { return before ? before : made[number]; }
  };
  Reference referenceTo(void* object, Kind kind);

 private:
  static CairoTape* current_;

  std::vector<Call> calls_;
  std::vector<Kind> kinds_;  // of what the work made
  std::map<void*, size_t> numbers_;
  std::map<void*, Kind> kept_;  // what was there before, held so that it is there at every play
  Made made_;
};
