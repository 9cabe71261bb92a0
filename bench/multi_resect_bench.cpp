// How long a multi-point resection takes, by its number of sights.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cmath>
#include <random>
#include <vector>

#include "kavostdlib.h"

namespace {

// Points all round the origin at 50 to 500 m, measured with errors of 2 arc-seconds and 2 mm.
std::vector<MultiResectInput> SightsAllRound(std::int64_t count) {
  std::mt19937_64 random(20261121);
  std::uniform_real_distribution<double> ranges(50.0, 500.0);
  std::normal_distribution<double> units(0.0, 32.0);
  std::normal_distribution<double> metres(0.0, 0.002);
  const double pi = std::acos(-1.0);
  std::vector<MultiResectInput> sights;
  for (std::int64_t i = 0; i < count; ++i) {
    const double turn = static_cast<double>(i) / static_cast<double>(count);
    const double dist = ranges(random);
    MultiResectInput sight{};
    sight.point.north = dist * std::cos(2.0 * pi * turn);
    sight.point.east = dist * std::sin(2.0 * pi * turn);
    sight.point.flags = COORD_HAS_NE | COORD_HAS_ELEV;
    sight.ha = static_cast<IntAngle>(turn * ANGLE_FULL_CIRCLE + units(random));
    sight.va = ANGLE_QUARTER_CIRCLE;
    sight.slopeDist = sight.horizDist = dist + metres(random);
    sights.push_back(sight);
  }
  return sights;
}

void MultiResect(benchmark::State& state) {
  const auto sights = SightsAllRound(state.range(0));
  std::vector<MultiResectResidual> residuals(sights.size());
  MultiResectResult result{};
  for ([[maybe_unused]] auto _ : state) {
    if (KavoSTNMultiResect(static_cast<std::int16_t>(sights.size()), sights.data(), &result,
                           residuals.data()) != STATUS_OK) {
      state.SkipWithError("no station");
      break;
    }
    benchmark::DoNotOptimize(result);
  }
  state.counters["per sight"] = benchmark::Counter(
      static_cast<double>(sights.size()),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(MultiResect)->Arg(3)->Arg(10)->Arg(50)->Arg(200)->Arg(1000)->Arg(32767);

}  // namespace

int main(int argc, char** argv) {
  // A call with hundreds of sights frees more than 128 KiB; glibc would give them back to the
  // system and take them again page by page with the next call, which is not the library's time.
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
