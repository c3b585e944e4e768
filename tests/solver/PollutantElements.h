#pragma once

#include <memory>
#include <vector>

#include "solver/MoistBench.h"
#include "solver/PollutantBalance.h"
#include "solver/PollutantBench.h"

namespace VELMORA_SOLVER {

/// Two elements with a pollutant, of "Board" and of "Screed", in a state that is set by hand.
class PollutantElements : public ::testing::Test {
 protected:
  PollutantElements() {
    file.read(library, {"Screed", "Board"});
    data.materials = {&screed, &board};
    data.elements.resize(2);
    for (int e = 0; e < 2; ++e) data.elements[static_cast<std::size_t>(e)].number = e;
    data.elements[0].material = &board;
    data.elements[1].material = &screed;
    s.resize(2);
    s.resizePollutant(2);
    s.T = {300.0, 285.0};
    s.Theta = {0.1, 0.0};
    balance = std::make_unique<PollutantBalance>(data, library);
  }
  void decompose(double m1, double m2) {
    s.mVOC1 = {m1, m1};
    s.mVOC2 = {m2, m2};
    for (std::size_t e = 0; e < 2; ++e) balance->decompose(e, 60.0, s);
  }

  PollutantFile file;
  POLLUTANT_LIB::PollutantLibrary library;
  MM::Material board = moistMaterial();
  MM::Material screed = moistMaterial();
  VELMORA::CalculationData data;
  SolverState s;
  std::unique_ptr<PollutantBalance> balance;
  TKL::MessageCapture capture;
};

}  // namespace VELMORA_SOLVER
