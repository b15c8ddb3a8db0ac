#include "OpaqueCalls.h"

#include "Class.h"

namespace {

template <int step>
class StepCounter : public Counter {
 public:
  const Class& isa() const override { return record(); }
  static const Class& record() {
    static const Class c = Class::of<StepCounter>("StepCounter" + std::to_string(step), NSObject::record())
                               .template answers<&StepCounter::count>("count:");
    return c;
  }
  void count(NSObject* sender) override { total_ += sender ? step : 0; }

 private:
  long total_ = 0;
};

template <int... steps>
std::shared_ptr<Counter> make(size_t kind, std::integer_sequence<int, steps...>) {
  std::shared_ptr<Counter> counter;
  ((kind == steps ? void(counter = std::make_shared<StepCounter<steps>>()) : void()), ...);
  return counter;
}

}  // namespace

std::vector<std::shared_ptr<Counter>> makeCounters(size_t number) {
  std::vector<std::shared_ptr<Counter>> counters;
  for (size_t i = 0; i < number; ++i)
    counters.push_back(make(i * 5 % 8, std::make_integer_sequence<int, 8>()));
  return counters;
}
