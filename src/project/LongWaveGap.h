#pragma once

#include <vector>

#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "project/VelFieldCond.h"
#include "project/VelSelection.h"

namespace VELMORA {

/// Long wave radiation between the two faces of an air gap: links the elements at both ends of each row
/// (flag `LW_RADIATION_X`) or column (`LW_RADIATION_Y`) of the rectangle, whose inner cells must be air.
/// The rows at the rectangle's own edge are left out where they hold no air, since the faces may end there.
/// @throws std::runtime_error "Invalid field condition assignment of type LW_RADIATION..."
void prepareLongWaveGap(VelFieldCond& fieldCond, const VelSelection& selection,
                        const IndexMatrix& indexMatrix, std::vector<Element>& elements);

}  // namespace VELMORA
