#include <algorithm>
#include <array>
#include <cmath>

#include "airflow/AirFlowLibrary.h"
#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "material/Material.h"
#include "project/VelBoundaryCond.h"

namespace VELMORA {

namespace {

const char* const ANCHOR_ID = "[AirFlowLibrary::calculateLinearPressureGradient]";

/// A coupling below this share of an element's diagonal does not outlive the rounding in it.
constexpr double LOST_IN_ROUNDING = 1e-14;

std::array<const Side*, 4> sidesOf(const Element& element) {
  return {element.sideLeft, element.sideRight, element.sideTop, element.sideBottom};
}

}  // namespace

/// The balance fixes differences of pressures only; their level comes from outside. Without any opening there
/// is none, and the matrix has no inverse, whatever the rounding makes of it. An enclosure in a construction
/// that is open elsewhere gets the normal pressure: no flow depends on it.
/// @return false while all openings wait for their time or have ended
bool AirFlowLibrary::anchorPressures() {
  std::fill(anchored_.begin(), anchored_.end(), std::uint8_t{0});
  std::vector<std::size_t> open;
  const auto diagonal = [this](std::size_t e) {
    const auto n = static_cast<std::uint32_t>(e);
    return matrix_.at(n, n);
  };
  for (std::size_t e = 0; e < nElements; ++e)
    if (fromOutside_[e] > -diagonal(e) * LOST_IN_ROUNDING) {
      anchored_[e] = 1;
      open.push_back(e);
    }
  if (open.empty() && hasIdleOpening()) return false;
  if (open.empty())
    throw TKL::Exception(
        "Error while decomposition of pressure field update matrix! Zero element found in diagonal!",
        ANCHOR_ID);
  anchorNeighbours(open);
  for (std::size_t e = 0; e < nElements; ++e) {
    if (anchored_[e] != 0) continue;
    const auto n = static_cast<std::uint32_t>(e);
    matrix_.at(n, n) = diagonal(e) != 0.0 ? 2.0 * diagonal(e) : -1.0;
    warnOfEnclosure((*elements_)[e]);
    anchored_[e] = 1;
    open.push_back(e);
    anchorNeighbours(open);
  }
  return true;
}

/// Whether some element could exchange air with the outside at another time.
bool AirFlowLibrary::hasIdleOpening() const {
  return std::any_of(sides_->begin(), sides_->end(), [this](const Side& side) {
    if (side.elementLeft != nullptr && side.elementRight != nullptr) return false;
    const Element& element = side.elementLeft != nullptr ? *side.elementLeft : *side.elementRight;
    return !element.material->isAirTight() &&
           std::any_of(side.boundaryConds.begin(), side.boundaryConds.end(),
                       [this](const VelBoundaryCond* bc) { return exchangesAir(*bc) && !acts(*bc); });
  });
}

/// Marks all elements whose pressure hangs on that of an element in `open`, which is empty afterwards.
void AirFlowLibrary::anchorNeighbours(std::vector<std::size_t>& open) {
  while (!open.empty()) {
    const Element& from = (*elements_)[open.back()];
    open.pop_back();
    for (const Side* side : sidesOf(from)) {
      if (side == nullptr) continue;
      const Element* other = side->elementLeft == &from ? side->elementRight : side->elementLeft;
      if (other == nullptr) continue;
      const auto e = static_cast<std::size_t>(other->number);
      const auto n = static_cast<std::uint32_t>(e);
      const double coupling = kGSide[static_cast<std::size_t>(side->number)] * side->area * side->invDistance;
      if (anchored_[e] != 0 || !(coupling > -matrix_.at(n, n) * LOST_IN_ROUNDING)) continue;
      anchored_[e] = 1;
      open.push_back(e);
    }
  }
}

void AirFlowLibrary::warnOfEnclosure(const Element& element) const {
  if (updateCount > 1 || element.material->isAirTight()) return;
  TKL::message(TKL::FormatString("The air around element %1 (x = %2 m, y = %3 m, material '%4') is enclosed; "
                                 "it is taken to have normal pressure.\n")
                   .arg(element.number)
                   .arg(element.x)
                   .arg(element.y)
                   .arg(element.material->name()),
               TKL::MSG_WARNING, ANCHOR_ID, 1);
}

/// A pressure that is none or a missing temperature of the climate ends here, not in failing steps.
void AirFlowLibrary::checkPressures() const {
  for (const Element& element : *elements_)
    if (const double p = rhs[static_cast<std::size_t>(element.number)] + NORMAL_PRESSURE;
        !(p > 0.0 && std::isfinite(p)))
      throw TKL::Exception(
          TKL::FormatString("The air pressure of element %1 (x = %2 m, y = %3 m) is not above "
                            "0 Pa. GASPRESS must be above 0 Pa, TEMPER above 0 K.")
              .arg(element.number)
              .arg(element.x)
              .arg(element.y),
          ANCHOR_ID);
}

}  // namespace VELMORA
