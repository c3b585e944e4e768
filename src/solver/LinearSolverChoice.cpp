#include "solver/LinearSolverChoice.h"

#include <utility>

#include "foundation/FormatString.h"
#include "foundation/Message.h"

namespace VELMORA_SOLVER {

using VELMORA::VelSolverCVODESettings;

namespace {

const char* const FUNC_ID = "[VelmoraCvodeSolver::init]";

void tell(const char* text, std::size_t size) {
  TKL::message(TKL::FormatString(text).arg(size), TKL::MSG_STANDARD, FUNC_ID, 2);
}

}  // namespace

JacobianPattern jacobianPattern(const VELMORA::CalculationData& data, int nEquations) {
  std::vector<std::pair<JacobianPattern::index_t, JacobianPattern::index_t>> pairs;
  for (const VELMORA::Side& side : data.sides)
    if (side.elementLeft != nullptr && side.elementRight != nullptr)
      pairs.emplace_back(side.elementLeft->number, side.elementRight->number);
  std::vector<JacobianPattern::Place> places;
  for (const VELMORA::Element& e : data.elements)
    places.push_back(
        {static_cast<JacobianPattern::index_t>(e.i), static_cast<JacobianPattern::index_t>(e.j)});
  JacobianPattern pattern =
      JacobianPattern::of(data.elements.size(), static_cast<std::size_t>(nEquations), pairs, places);
  for (std::size_t e = 0; e < data.elements.size(); ++e) pattern.volume[e] = data.elements[e].volume;
  return pattern;
}

int attachLinearSolver(Integrator& integrator, const VELMORA::CalculationData& data, int nEquations,
                       VelSolverCVODESettings::linear_solver_t selected) {
  const long halfBand = static_cast<long>(data.bandWidth + 1) * nEquations - 1;
  if (selected == VelSolverCVODESettings::L_BAND) {
    tell("Linear solver: band matrix with half bandwidth %1.\n", static_cast<std::size_t>(halfBand));
    return integrator.attachBandSolver(halfBand);
  }
  JacobianPattern pattern = jacobianPattern(data, nEquations);
  const std::size_t size = pattern.nCells;
  switch (selected) {
    case VelSolverCVODESettings::L_KLU:
      tell("Linear solver: sparse matrix of %1 elements.\n", size);
      return integrator.attachBlockSolver(std::move(pattern), BlockMethod::SPARSE);
    case VelSolverCVODESettings::L_GMRES:
      tell("Linear solver: iteration with incomplete block factors of %1 elements.\n", size);
      return integrator.attachBlockSolver(std::move(pattern), BlockMethod::KRYLOV);
    default:
      tell("Linear solver: block factors of %1 elements.\n", size);
      return integrator.attachBlockSolver(std::move(pattern), BlockMethod::BLOCK);
  }
}

}  // namespace VELMORA_SOLVER
