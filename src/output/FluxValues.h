#pragma once

#include <cstddef>

#include "output/OutputSource.h"
#include "project/VelOutputFormat.h"

namespace VELMORA {

/// Where the flows of one quantity stand: a slot of a record per side.
struct FluxSlot {
  RecordView records;
  std::size_t slot = 0;

  bool isAvailable() const { return !records.empty() && slot < records.nSlots; }
};

/// The flows of a quantity at the time of the source.
FluxSlot fluxValues(VelOutputFormat::flux_t quantity, const OutputSource& source);

/// The time integrals of the flows of a quantity. Not available for a quantity that is not integrated.
FluxSlot fluxSums(VelOutputFormat::flux_t quantity, const OutputSource& source);

/// Whether time means and integrals are offered for a quantity.
bool hasFluxSums(VelOutputFormat::flux_t quantity);

}  // namespace VELMORA
