#pragma once

#include <cstdint>

#include "models/FieldConditionModelBase.h"

namespace VELMORA {

/// Long-wave radiation of a surface inside the construction, next to an air layer, with the surroundings. The
/// model finds out to which side the surface looks; the sources have the formula.
class FieldModelAmbientRadiation final : public FieldConditionModelBase {
 public:
  enum direction_t { D_LEFT, D_RIGHT, D_TOP, D_BOTTOM, D_UNSET };

  std::int32_t radiationDirection = D_UNSET;  ///< a `direction_t`

  /// Takes the direction from the emission coefficients, the last of left, right, top and bottom that is
  /// given, and tests that air lies before the surface. Only the first cell of a longer rectangle is tested.
  /// @throws TKL::Exception for a rectangle with voids, of several rows and columns, without the coefficient
  /// of a suitable direction, or without air before it
  bool prepare(VelFieldCond& fieldCond, const VelSelection::Range& selection,
               const IndexMatrix& elementIndexMatrix, const std::vector<Element>& elements) override;

  void clear() override { radiationDirection = D_UNSET; }

 private:
  void findDirection(const VelFieldCond& fieldCond);
};

}  // namespace VELMORA
