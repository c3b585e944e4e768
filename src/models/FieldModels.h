#pragma once

#include <span>
#include <vector>

#include "models/FieldModelAmbientRadiation.h"
#include "models/GasConvectionModel.h"
#include "models/WTAConvectionModel.h"
#include "project/CalculationData.h"

namespace VELMORA {

/// The models of all field conditions of a calculation that have one.
class FieldModels {
 public:
  /// Makes, links and prepares the models. `data` must keep its vectors; the flags of a condition may change.
  /// @throws TKL::Exception from the preparation of a model
  explicit FieldModels(CalculationData& data);

  /// Gives the gas in gaps its effective conductivity [W/mK] at the temperatures [K] of the elements.
  void updateConductivities(double t, std::span<const double> temperature, std::span<double> lambda);

  /// Brings the leaks up to date with the temperatures [K] of the elements and the climate.
  void updateLeaks(double t, std::span<const double> temperature);

  /// Model of a leak, null for another condition.
  const WTAConvectionModel* leakOf(const VelFieldCond& condition) const;
  /// Direction of a surface that radiates to the surroundings, `D_UNSET` for another condition.
  int radiationDirectionOf(const VelFieldCond& condition) const;

 private:
  template <class Model>
  struct Entry {
    VelFieldCond* condition = nullptr;
    Model model;
  };
  template <class Model>
  static const Model* find(const std::vector<Entry<Model>>& entries, const VelFieldCond& condition);
  template <class Model>
  static void prepare(Entry<Model>& entry, const CalculationData& data);

  const CalculationData& data_;
  std::vector<Entry<GasConvectionModel>> gaps_;
  std::vector<Entry<WTAConvectionModel>> leaks_;
  std::vector<Entry<FieldModelAmbientRadiation>> surfaces_;
};

}  // namespace VELMORA
