// All benchmarks in one table of ratios: see docs/benchmarks.md.

#include <cstdio>
#include <cstring>
#include <exception>

#include "Figures.h"
#include "RegisterEffects.h"

namespace {

constexpr const char* heading =
    R"(RATIO is the time of a figure over that of its floor, both taken by turns in this run.
Floor of an editor's figure: the cairo calls of the same turns, played again without the code
that made them; where a turn measures the effect, also the effect's own render, the transform
and the logarithms. That of open makes the same bitmaps and the first picture. Automated turns:
over the bare calls of a full redraw. Growth: over the same with the lesser number.

)";

}  // namespace

int main(int argc, char** argv) try {
  std::string filter;
  std::vector<char*> arguments(argv, argv + argc);
  std::erase_if(arguments, [&](const char* argument) {
    const bool isFilter = std::strncmp(argument, "--filter=", 9) == 0;
    if (isFilter) filter = argument + 9;
    return isFilter;
  });
  static char leastTime[] = "--benchmark_min_time=0.1", repetitions[] = "--benchmark_repetitions=3";
  arguments.insert(arguments.begin() + 1, {leastTime, repetitions});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

  RegisterEffects();
  RatioTable table;
  addEditorFigures(table);
  addWorstTurns(table);
  addWorstBlocks(table);
  addGrowth(table);
  addMessages(table);
  std::fputs(heading, stdout);
  return table.run(filter) ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "tovin_bench: %s\n", error.what());
  return 1;
}
