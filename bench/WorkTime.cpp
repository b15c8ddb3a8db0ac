#include "WorkTime.h"

#include <vector>

namespace {

double lowerQuartile(std::vector<double>& seconds) {
  const auto at = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 4);
  std::nth_element(seconds.begin(), at, seconds.end());
  return *at;
}

}  // namespace

void takeTurns(benchmark::State& state, const TimedWork& figure, const TimedWork& floor) {
  std::vector<double> ofFigure, ofFloor;
  for (auto _ : state) {
    ofFigure.push_back(figure());
    ofFloor.push_back(floor());
    state.SetIterationTime(ofFigure.back() + ofFloor.back());
  }
  state.counters["figure"] = lowerQuartile(ofFigure);
  state.counters["floor"] = lowerQuartile(ofFloor);
}
