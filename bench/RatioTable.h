#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// One line of the table: a counter of a measurement over the measurement's counter `floor`.
struct RatioRow {
  std::string subject;  // an editor, an effect, or what is looked at
  std::string figure;
  int scale = 0;    // pixels to a point; 0 where it makes no difference
  double goal = 0;  // the ratio should not be above it; 0: there is none
  std::string note = {};
  std::string counter = "figure";
};

/// The table: measurements that Google Benchmark runs, and the ratios in them, printed as they come.
class RatioTable : public benchmark::BenchmarkReporter {
 public:
  using Measurement = std::function<void(benchmark::State&)>;
  enum class Runs { repeated, once };

  void add(std::vector<RatioRow> rows, Measurement measurement, Runs runs = Runs::repeated);
  /// Runs those measurements of which a row matches the regular expression, and prints the table. False when
  /// one of them failed; rows above their goals are no failures.
  bool run(const std::string& filter);

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

 private:
  struct Entry {
    std::vector<RatioRow> rows;
    Measurement measurement;
    Runs runs;
  };

  void print(const RatioRow& row, double ratio);

  std::vector<Entry> entries_;
  std::map<std::string, const Entry*> chosen_;  // by the name of the benchmark
  int printed_ = 0, missed_ = 0, failed_ = 0;
};
