#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "solver/MoistBench.h"
#include "solver/Sources.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

/// Two by two elements of one material with all inner sides and one outer side at the left of the upper left
/// one, in a state that is set by hand, and two field conditions to act on them.
class SourceBench : public ::testing::Test {
 protected:
  enum cell_t : std::size_t { UPPER_LEFT, UPPER_RIGHT, LOWER_LEFT, LOWER_RIGHT, NUM_CELLS };
  enum direction_t { TO_LEFT, TO_RIGHT, TO_TOP, TO_BOTTOM };
  using Field = VELMORA::VelFieldCond;
  using Climate = VELMORA::VelClimateCond;

  explicit SourceBench(int equations) : settings(moistSettings(equations)) {
    data.elements.resize(NUM_CELLS);
    data.indexMatrix = VELMORA::IndexMatrix(2, 2);
    for (std::size_t e = 0; e < NUM_CELLS; ++e) {
      VELMORA::Element& element = data.elements[e];
      element.number = static_cast<int>(e);
      element.i = static_cast<int>(e % 2);
      element.j = static_cast<int>(e / 2);
      data.indexMatrix.set(element.i, element.j, element.number);
      element.dx = dx[e % 2];
      element.dy = dy[e / 2];
      element.volume = element.dx * element.dy;
    }
    data.sides.resize(5);
    for (std::size_t n = 0; n < data.sides.size(); ++n) data.sides[n].number = static_cast<int>(n);
    beside(data.sides[0], UPPER_LEFT, UPPER_RIGHT);
    beside(data.sides[1], LOWER_LEFT, LOWER_RIGHT);
    above(data.sides[2], UPPER_LEFT, LOWER_LEFT);
    above(data.sides[3], UPPER_RIGHT, LOWER_RIGHT);
    data.sides[4].elementRight = &data.elements[UPPER_LEFT];
    data.elements[UPPER_LEFT].sideLeft = &data.sides[4];
    data.fieldConds.resize(2);
    data.fieldConds[0].name = "First";
    data.fieldConds[1].name = "Second";
    useMaterial(plaster);
  }

  void useMaterial(const MM::Material& material) {
    for (VELMORA::Element& element : data.elements) element.material = &material;
    arrays.size(data, settings);
    arrays.records.heatSource = RecordArray(NUM_CELLS, VELMORA::NUM_HS);
    arrays.records.moistureSource = RecordArray(NUM_CELLS, VELMORA::NUM_MS);
    arrays.records.airFlowEnthalpyIn.assign(NUM_CELLS, 0.0);
    arrays.records.airFlowEnthalpyOut.assign(NUM_CELLS, 0.0);
    arrays.records.convectiveMoistureSource.assign(NUM_CELLS, 0.0);
    arrays.records.convectiveAirFlow.assign(NUM_CELLS, 0.0);
    s.T = {300.0, 290.0, 285.0, 280.0};
    s.pV = {1500.0, 900.0, 700.0, 500.0};
    s.Theta = {0.1, 0.05, 0.02, 0.15};
  }

  /// Lets a field condition act on these elements and nowhere else.
  Field& act(Field::condition_t type, std::initializer_list<cell_t> cells, std::size_t n = 0) {
    Field& fc = data.fieldConds[n];
    fc.condition = type;
    fc.elements.clear();
    fc.volume = 0.0;
    for (VELMORA::Element& element : data.elements) std::erase(element.fieldConds, &fc);
    for (const cell_t cell : cells) {
      fc.elements.push_back(static_cast<int>(cell));
      fc.volume += volume(cell);
      data.elements[cell].fieldConds.push_back(&fc);
    }
    return fc;
  }
  /// Makes each of the two conditions the other end of the other one.
  void connect() {
    data.fieldConds[0].remote = &data.fieldConds[1];
    data.fieldConds[1].remote = &data.fieldConds[0];
  }
  /// Attaches a climate condition with its current value.
  void attach(Climate::condition_t quantity, double value, std::size_t n = 0) {
    climate[n][quantity].condition = quantity;
    climate[n][quantity].currentValue = value;
    data.fieldConds[n].climate[quantity] = &climate[n][quantity];
  }
  void detach(Climate::condition_t quantity, std::size_t n = 0) {
    data.fieldConds[n].climate[quantity] = nullptr;
  }
  void set(Field::para_t index, double value, std::size_t n = 0) {
    data.fieldConds[n].para[index].setBaseValue("X", value, TKL::Unit());
  }

  void calculate(double t = 1000.0) {
    arrays.traits = elementTraits(data.elements, settings);
    VELMORA::FieldModels models(data);
    Sources(data, settings, arrays.traits, s, arrays.records, models).calculate(t);
  }
  TKL::Thrown failure() {
    return TKL::thrownBy([this] { calculate(); });
  }
  /// The failure of the first condition for want of a climate condition.
  static TKL::Thrown missing(const std::string& type, const std::string& quantity, const std::string& tag) {
    return {"Error in in field condition 'First' with type '" + type + "'.\nClimate condition of type '" +
                quantity + "' needs to be specified!",
            tag};
  }

  double heat(cell_t cell) const { return arrays.records.heatSource[cell][VELMORA::HS_HEAT]; }
  double enthalpy(cell_t cell) const {
    return arrays.records.heatSource[cell][VELMORA::HS_MOISTURE_ENTHALPY];
  }
  double moisture(cell_t cell) const { return arrays.records.moistureSource[cell][VELMORA::MS_MOISTURE]; }
  double volume(cell_t cell) const { return data.elements[cell].volume; }
  /// Heat that all elements get together [W].
  double totalHeat() const {
    double total = 0.0;
    for (const cell_t cell : {UPPER_LEFT, UPPER_RIGHT, LOWER_LEFT, LOWER_RIGHT})
      total += heat(cell) * volume(cell);
    return total;
  }

  static void expectClose(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-11 * std::fabs(expected));
  }

  const std::array<double, 2> dx{0.1, 0.2};  // [m]
  const std::array<double, 2> dy{0.3, 0.5};  // [m]
  MM::Material plaster = moistMaterial();
  ModelSettings settings;
  VELMORA::CalculationData data;
  std::array<std::array<Climate, Climate::NUM_C>, 2> climate;
  MoistArrays arrays;
  SolverState& s = arrays.state;
  TKL::MessageCapture capture;

 private:
  void beside(VELMORA::Side& side, cell_t left, cell_t right) {
    side.elementLeft = &data.elements[left];
    side.elementRight = &data.elements[right];
    data.elements[left].sideRight = data.elements[right].sideLeft = &side;
  }
  void above(VELMORA::Side& side, cell_t top, cell_t bottom) {
    side.horizontal = true;
    side.elementLeft = &data.elements[top];
    side.elementRight = &data.elements[bottom];
    data.elements[top].sideBottom = data.elements[bottom].sideTop = &side;
  }
};

}  // namespace VELMORA_SOLVER
