#include "RatioTable.h"

#include <algorithm>
#include <cstdio>
#include <regex>
#include <utility>

namespace {

std::string nameOf(const RatioRow& row) {
  std::string name = row.subject + " " + row.figure;
  if (row.scale) name += " @" + std::to_string(row.scale);
  return name;
}

}  // namespace

void RatioTable::add(std::vector<RatioRow> rows, Measurement measurement, Runs runs) {
  entries_.push_back({std::move(rows), std::move(measurement), runs});
}

bool RatioTable::run(const std::string& filter) {
  const std::regex wanted(filter);
  for (const Entry& entry : entries_) {
    const bool matches = std::any_of(entry.rows.begin(), entry.rows.end(), [&](const RatioRow& row) {
      return std::regex_search(nameOf(row), wanted);
    });
    if (!matches) continue;
    const std::string name = nameOf(entry.rows.front());
    chosen_[name] = &entry;
    auto* engine = benchmark::RegisterBenchmark(name.c_str(), entry.measurement)->UseManualTime();
    if (entry.runs == Runs::once) engine->Iterations(1)->Repetitions(1);
  }
  benchmark::RunSpecifiedBenchmarks(this);
  std::printf("%d rows, %d above their goals", printed_, missed_);
  if (failed_) std::printf(", %d measurements failed", failed_);
  std::printf("\n");
  return failed_ == 0;
}

bool RatioTable::ReportContext(const Context&) {
  std::printf("%-8s%-46s%5s%10s%8s\n", "EDITOR", "FIGURE", "SCALE", "RATIO", "GOAL");
  return true;
}

void RatioTable::ReportRuns(const std::vector<Run>& runs) {
  if (runs.front().run_type == Run::RT_Aggregate) return;
  const Entry& entry = *chosen_.at(runs.front().run_name.function_name);
  for (const Run& run : runs) {
    if (!run.error_occurred) continue;
    std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
    ++failed_;
    return;
  }
  for (const RatioRow& row : entry.rows) {
    std::vector<double> ratios;
    for (const Run& run : runs)
      ratios.push_back(run.counters.at(row.counter).value / run.counters.at("floor").value);
    std::sort(ratios.begin(), ratios.end());
    print(row, ratios[ratios.size() / 2]);
  }
}

void RatioTable::print(const RatioRow& row, double ratio) {
  ++printed_;
  std::printf("%-8s%-46s%5s%9.2f×", row.subject.c_str(), row.figure.c_str(),
              row.scale ? std::to_string(row.scale).c_str() : "", ratio);
  if (row.goal > 0) std::printf("%7g×", row.goal);
  if (row.goal > 0 && ratio > row.goal) {
    ++missed_;
    std::printf("  missed");
  }
  if (!row.note.empty())
    std::printf("%*s", static_cast<int>(row.note.size()) + (row.goal > 0 ? 2 : 10), row.note.c_str());
  std::printf("\n");
  std::fflush(stdout);
}
