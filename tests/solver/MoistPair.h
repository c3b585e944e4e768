#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "project/VelContactCond.h"
#include "solver/FieldFluxes.h"
#include "solver/MoistBench.h"

namespace VELMORA_SOLVER {

constexpr double PAIR_AREA = 0.5;    ///< [m2] of the side between the two elements
constexpr double PAIR_G = 5.0;       ///< [1/m] 2 / (0.1 m + 0.3 m)
constexpr double PAIR_LEFT = 0.25;   ///< share of the left width, 0.1 m
constexpr double PAIR_RIGHT = 0.75;  ///< share of the right width, 0.3 m

/// Two elements of 0.1 m and 0.3 m with one side between them, in a state that is set by hand: nothing is
/// decomposed.
class MoistPair : public ::testing::Test {
 protected:
  MoistPair() {
    setPotential(plaster, 4e-6);
    setPotential(brick, 1e-6);
    data.elements.resize(2);
    data.sides.resize(1);
    data.sideQuantities.resize(1);
    data.sideQuantities[0].fill(0.0);
    for (int e = 0; e < 2; ++e) data.elements[static_cast<std::size_t>(e)].number = e;
    VELMORA::Side& side = data.sides[0];
    side.number = 0;
    side.elementLeft = &data.elements[0];
    side.elementRight = &data.elements[1];
    side.weightLeft = PAIR_LEFT;
    side.weightRight = PAIR_RIGHT;
    side.invDistance = PAIR_G;
    side.area = PAIR_AREA;
    materials(plaster, plaster);
  }

  void materials(const MM::Material& left, const MM::Material& right) {
    data.elements[0].material = &left;
    data.elements[1].material = &right;
    arrays.size(data, settings);
    s.T = {300.0, 290.0};
    s.lambda = {1.0, 3.0};
    s.mw = {50.0, 40.0};
    s.RH = {0.6, 0.4};
    s.pV = {2000.0, 800.0};
    s.Kv = {4e-11, 2e-11};
    s.pCTotal = {-3e7, -9e7};
    s.Kl = {4e-16, 2e-16};
    s.Kirchhoff = {3e-7, 1e-7};
  }

  /// Swaps the states of the two elements, so that all flows turn round.
  void turnRound() {
    for (auto* values : {&s.T, &s.lambda, &s.mw, &s.RH, &s.pV, &s.Kv, &s.pCTotal, &s.Kl, &s.Kirchhoff})
      std::swap((*values)[0], (*values)[1]);
  }

  VELMORA::VelContactCond& contact(VELMORA::VelContactCond::condition_t condition,
                                   VELMORA::VelContactCond::kind_t kind = VELMORA::VelContactCond::NUM_K) {
    contacts.push_back(std::make_unique<VELMORA::VelContactCond>());
    VELMORA::VelContactCond& result = *contacts.back();
    result.name = "Joint";
    result.condition = condition;
    result.kind = kind;
    data.sides[0].contactConds.push_back(&result);
    return result;
  }
  void resistance(VELMORA::VelContactCond::para_t index, double value) {
    data.sideQuantities[0][static_cast<std::size_t>(index)] = value;
  }

  void calculate() {
    arrays.traits = elementTraits(data.elements, settings);
    FieldFluxes(data, settings, arrays.traits, s, arrays.records).calculate();
  }
  double moisture(VELMORA::moistureFluxSlot_t slot) const { return arrays.records.moistureFlux[0][slot]; }
  double heat(VELMORA::heatFluxSlot_t slot) const { return arrays.records.heatFlux[0][slot]; }
  double vapour() const { return moisture(VELMORA::MF_VAPOUR_DIFFUSION); }
  double liquid() const { return moisture(VELMORA::MF_LIQUID); }

  MM::Material plaster = moistMaterial();
  MM::Material brick = moistMaterial();
  MM::Material cavity = airMaterial();
  ModelSettings settings = moistSettings();
  VELMORA::CalculationData data;
  MoistArrays arrays;
  SolverState& s = arrays.state;
  std::vector<std::unique_ptr<VELMORA::VelContactCond>> contacts;
};

}  // namespace VELMORA_SOLVER
