// The right-hand side per cell, for each combination of balance equations.

#include <benchmark/benchmark.h>

#include <string>

#include "bench/RateCase.h"

namespace {

void rightHandSide(benchmark::State& state, const VELMORA_BENCH::RateBody& body) {
  VELMORA_BENCH::RateCase rates(body);
  for ([[maybe_unused]] const auto& pass : state) rates.evaluate();
  state.SetItemsProcessed(state.iterations() * static_cast<long>(rates.nCells()));
}

struct Registration {
  Registration() {
    for (const char* const balances : VELMORA_BENCH::BALANCES) {
      benchmark::RegisterBenchmark((std::string("wall/") + balances).c_str(), rightHandSide,
                                   VELMORA_BENCH::RateBody{100, 1, balances})
          ->Unit(benchmark::kMicrosecond);
      benchmark::RegisterBenchmark((std::string("square/") + balances).c_str(), rightHandSide,
                                   VELMORA_BENCH::RateBody{20, 20, balances})
          ->Unit(benchmark::kMicrosecond);
    }
  }
} const REGISTERED;

}  // namespace
