#pragma once

#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "climate/VelClimateCond.h"
#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "keywords/SectionText.h"
#include "project/VelFieldCond.h"
#include "project/VelSelection.h"

namespace VELMORA {

/// What a field condition does that acts by a model of its own. Each operation does nothing unless a model
/// needs it.
class FieldConditionModelBase {
 public:
  FieldConditionModelBase() = default;
  FieldConditionModelBase(const FieldConditionModelBase&) = default;
  FieldConditionModelBase& operator=(const FieldConditionModelBase&) = default;
  virtual ~FieldConditionModelBase() = default;

  /// Writes the block of the project file.
  virtual void write(std::ostream& /*stream*/) const {}
  /// Reads the block of the project file.
  virtual void read(const SectionText& /*text*/) {}
  /// Links the climate conditions that the model names, for the field condition `name`.
  virtual void assignClimateCond(const std::string& /*name*/,
                                 const std::vector<VelClimateCond>& /*climateConds*/) {}
  /// Gets ready for a rectangle of elements, whose materials must be assigned.
  /// @return true
  virtual bool prepare(VelFieldCond& /*fieldCond*/, const VelSelection::Range& /*selection*/,
                       const IndexMatrix& /*elementIndexMatrix*/, const std::vector<Element>& /*elements*/) {
    return true;
  }
  /// Brings the results up to date with the time [s], the temperatures [K] of all elements and the climate.
  virtual void calculate(double /*t*/, const VelFieldCond& /*fieldCond*/,
                         const std::vector<Element>& /*elements*/, std::span<const double> /*temperature*/) {}
  /// Back to the state before the first call.
  virtual void clear() {}
};

}  // namespace VELMORA
