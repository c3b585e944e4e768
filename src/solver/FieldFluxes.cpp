#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "solver/RightHandSide.h"

namespace VELMORA_SOLVER {

using VELMORA::VelContactCond;

/// Heat conduction between two elements. The conductivity of the side is the mean of the two elements,
/// weighted by their widths; the resistance of a contact layer [m2K/W] stands in series with it.
void RightHandSide::fieldFluxEnergy(const InnerSide& side) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::fieldFluxEnergy]";
  const auto left = static_cast<std::size_t>(side.left);
  const auto right = static_cast<std::size_t>(side.right);
  double* heatFlux = records.heatFlux[static_cast<std::size_t>(side.side)];

  if (side.airContact == nullptr) {
    double lam = state.lambda[left] * side.weightLeft + state.lambda[right] * side.weightRight;
    if (side.heatResistance > 0.0) lam = lam / (side.heatResistance * lam * side.invDistance + 1.0);
    heatFlux[VELMORA::HF_CONDUCTION] = lam * side.area * (state.T[left] - state.T[right]) * side.invDistance;
    return;
  }
  // Air at rest: without an air balance both kinds have the coefficient of still air.
  const VelContactCond& contact = *side.airContact;
  if (contact.kind != VelContactCond::K_EXCHANGE && contact.kind != VelContactCond::K_EXCHANGE_VEL)
    throw TKL::Exception(TKL::FormatString("Invalid/unsupported model type for contact condition '%1' "
                                           "between air and non-air material!")
                             .arg(contact.name),
                         FUNC_ID);
  heatFlux[VELMORA::HF_CONDUCTION] =
      (state.T[left] - state.T[right]) * side.area * contact.para[VelContactCond::P_EXCOEFF].value;
}

}  // namespace VELMORA_SOLVER
