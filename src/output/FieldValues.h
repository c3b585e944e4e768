#pragma once

#include <span>
#include <vector>

#include "grid/Element.h"
#include "output/DerivedQuantities.h"
#include "output/OutputSource.h"
#include "project/VelOutputFormat.h"

namespace VELMORA {

/// Gives the values of every field quantity per element: straight from the solver where it has an array,
/// else derived from such arrays when a file asks for them.
class FieldValues {
 public:
  FieldValues(std::span<const Element> elements, const ReferenceState& reference)
      : elements_(elements), reference_(reference) {}

  /// Whether all arrays that a quantity needs are there.
  static bool isAvailable(VelOutputFormat::field_t quantity, const OutputSource& source);

  /// Values by element number in the base unit. The view holds until the next call.
  /// @throws TKL::Exception for a quantity whose arrays are not there
  std::span<const double> values(VelOutputFormat::field_t quantity, const OutputSource& source);

 private:
  std::span<const double> derived(VelOutputFormat::field_t quantity, const OutputSource& source);
  std::span<const double> derivedFromFlows(VelOutputFormat::field_t quantity, const OutputSource& source);
  template <class Formula>
  std::span<const double> ofEach(const Formula& formula);

  std::span<const Element> elements_;
  ReferenceState reference_;
  std::vector<double> scratch_;
};

}  // namespace VELMORA
