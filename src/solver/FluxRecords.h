#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "grid/FluxSlots.h"

namespace VELMORA_SOLVER {

/// One record of fixed length per side or element, all in one array. Slot 0 of a record is the sum of the
/// slots behind it. Behind the last record stands one that is always zero, for a side that is not there.
class RecordArray {
 public:
  RecordArray() = default;
  RecordArray(std::size_t nRecords, std::size_t nSlots)
      : nSlots_(nSlots), size_(nRecords * nSlots), values_((nRecords + 1) * nSlots, 0.0) {}

  double* operator[](std::size_t record) { return values_.data() + record * nSlots_; }
  const double* operator[](std::size_t record) const { return values_.data() + record * nSlots_; }
  std::size_t nSlots() const { return nSlots_; }
  std::span<const double> values() const { return {values_.data(), size_}; }
  std::span<double> values() { return {values_.data(), size_}; }

  void clear(std::size_t record) { std::fill_n((*this)[record], nSlots_, 0.0); }
  void clear() { std::fill(values_.begin(), values_.end(), 0.0); }
  void sum(std::size_t record) {
    double* slot = (*this)[record];
    double total = 0.0;
    for (std::size_t i = 1; i < nSlots_; ++i) total += slot[i];
    slot[0] = total;
  }

 private:
  std::size_t nSlots_ = 0;
  std::size_t size_ = 0;
  std::vector<double> values_;
};

/// Flows through the sides and sources in the elements, by contribution (slots in grid/FluxSlots.h).
struct FluxRecords {
  RecordArray heatFlux;        ///< per side [W]
  RecordArray moistureFlux;    ///< per side [kg/s]
  RecordArray vocFlux;         ///< per side [kg/s]
  RecordArray additionalFlux;  ///< per side, for outputs only [kg/s]
  /// Dry air per side [kg/s] with the sign rule of the other flows, from the last update of the air
  /// pressures.
  std::vector<double> airMassFlux;
  RecordArray heatSource;      ///< per element [W/m3]
  RecordArray moistureSource;  ///< per element [kg/(m3 s)]
  RecordArray vocSource1;      ///< per element, pollutant in the gas [kg/(m3 s)]; empty in runs without
  RecordArray vocSource2;      ///< per element, pollutant in the solid [kg/(m3 s)]; empty in runs without

  // For outputs only, per element: enthalpy of air that flows through [W/m2], and what leaks bring.
  std::vector<double> airFlowEnthalpyIn;
  std::vector<double> airFlowEnthalpyOut;
  std::vector<double> convectiveMoistureSource;  ///< [kg/m3s]
  std::vector<double> convectiveAirFlow;         ///< [m3/m2s]
};

}  // namespace VELMORA_SOLVER
