#include "solver/Ledger.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace VELMORA_SOLVER {

Ledger::Ledger(VelmoraCvodeSolver& solver, std::vector<Entry> front_, std::vector<Entry> back_)
    : solver_(solver), frontEntries_(std::move(front_)), backEntries_(std::move(back_)) {
  for (std::size_t e = 0; e < solver_.data().elements.size(); ++e) {
    start_.push_back(solver_.state().U[e]);
    start_.push_back(solver_.state().mw[e]);
  }
}

int Ledger::calculate(double t, const double* y, double* ydot) {
  const std::size_t nFront = frontEntries_.size();
  const int code = solver_.calculate(t, y + nFront, ydot + nFront);
  if (code != 0) return code;
  for (std::size_t i = 0; i < nFront; ++i) ydot[i] = frontEntries_[i]();
  double* behind = ydot + nFront + start_.size();
  for (std::size_t i = 0; i < backEntries_.size(); ++i) behind[i] = backEntries_[i]();
  return 0;
}

/// The integrals follow the state; their own errors do not govern the steps.
void Ledger::setTolerances(Integrator& integrator) const {
  constexpr double LOOSE = 1e3, ENERGY = 1e-1, MOISTURE = 1e-8;
  const auto tolerance = integrator.absoluteTolerances();
  std::fill(tolerance.begin(), tolerance.end(), LOOSE);
  for (std::size_t i = 0; i < start_.size(); ++i)
    tolerance[frontEntries_.size() + i] = i % 2 == 0 ? ENERGY : MOISTURE;
}

void Ledger::run(double end, double relativeTolerance, double maxStep, long reach) {
  const std::size_t nFront = frontEntries_.size(), n = start_.size();
  Integrator integrator;
  ASSERT_TRUE(integrator.createVectors(nFront + n + backEntries_.size()));
  ASSERT_TRUE(integrator.createAbsoluteTolerances());
  std::copy(start_.begin(), start_.end(), integrator.state().begin() + static_cast<long>(nFront));
  setTolerances(integrator);
  ASSERT_EQ(integrator.initialise(*this, 0.0, relativeTolerance), 0);
  long halfBand = (solver_.data().bandWidth + 1) * 2 - 1;
  if (reach > 0) {
    const auto entries = static_cast<long>(std::max(nFront, backEntries_.size()));
    halfBand = std::max(halfBand, entries + 2 * reach - 1);
  }
  ASSERT_EQ(integrator.attachBandSolver(halfBand), 0);
  IntegratorSettings settings;
  settings.maxSteps = 100000000;
  settings.maxStep = maxStep;
  integrator.configure(settings);
  double t = 0.0;
  while (t < end) ASSERT_GE(integrator.step(end, t), 0);
  collect(integrator.state());
}

void Ledger::collect(std::span<const double> y) {
  const auto nFront = static_cast<long>(frontEntries_.size());
  front.assign(y.begin(), y.begin() + nFront);
  back.assign(y.begin() + nFront + static_cast<long>(start_.size()), y.end());
  heat = moisture = 0.0;
  for (const VELMORA::Element& e : solver_.data().elements) {
    const auto i = 2 * static_cast<std::size_t>(e.number);
    heat += (y[frontEntries_.size() + i] - start_[i]) * e.volume;
    moisture += (y[frontEntries_.size() + i + 1] - start_[i + 1]) * e.volume;
  }
}

}  // namespace VELMORA_SOLVER
