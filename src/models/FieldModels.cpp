#include "models/FieldModels.h"

namespace VELMORA {

template <class Model>
const Model* FieldModels::find(const std::vector<Entry<Model>>& entries, const VelFieldCond& condition) {
  for (const Entry<Model>& entry : entries)
    if (entry.condition == &condition) return &entry.model;
  return nullptr;
}

template <class Model>
void FieldModels::prepare(Entry<Model>& entry, const CalculationData& data) {
  for (const VelSelection::Range& range : entry.condition->modelRanges)
    entry.model.prepare(*entry.condition, range, data.indexMatrix, data.elements);
}

FieldModels::FieldModels(CalculationData& data) : data_(data) {
  for (VelFieldCond& condition : data.fieldConds) {
    switch (condition.condition) {
      case VelFieldCond::C_GAS_CONVECTION:
        prepare(gaps_.emplace_back(Entry<GasConvectionModel>{&condition, {}}), data);
        break;
      case VelFieldCond::C_CONVECTIVE_SOURCE: {
        auto& entry = leaks_.emplace_back(Entry<WTAConvectionModel>{&condition, {}});
        if (condition.wtaModel) entry.model.definition = *condition.wtaModel;
        entry.model.assignClimateCond(condition.name, data.climateConds);
        prepare(entry, data);
        break;
      }
      case VelFieldCond::C_AMBIENTRADIATION:
        prepare(surfaces_.emplace_back(Entry<FieldModelAmbientRadiation>{&condition, {}}), data);
        break;
      default:
        break;
    }
  }
}

void FieldModels::updateConductivities(double t, std::span<const double> temperature,
                                       std::span<double> lambda) {
  for (Entry<GasConvectionModel>& gap : gaps_) {
    gap.model.calculate(t, *gap.condition, data_.elements, temperature);
    gap.model.applyToConductivity(lambda);
  }
}

void FieldModels::updateLeaks(double t, std::span<const double> temperature) {
  for (Entry<WTAConvectionModel>& leak : leaks_)
    leak.model.calculate(t, *leak.condition, data_.elements, temperature);
}

const WTAConvectionModel* FieldModels::leakOf(const VelFieldCond& condition) const {
  return find(leaks_, condition);
}

int FieldModels::radiationDirectionOf(const VelFieldCond& condition) const {
  const FieldModelAmbientRadiation* model = find(surfaces_, condition);
  return model != nullptr ? model->radiationDirection : FieldModelAmbientRadiation::D_UNSET;
}

}  // namespace VELMORA
