#include <algorithm>
#include <string>

#include "foundation/Exception.h"
#include "project/NameIndex.h"
#include "project/SideMatrices.h"
#include "project/VelBoundaryCond.h"
#include "project/VelContactCond.h"

namespace VELMORA {

namespace {

/// Calls `visit` for the sides at the chosen edges of the rectangle, as far as they lie inside the grid.
template <class Visit>
void forEachEdgeSide(const VelSelection& selection, SideMatrices& sides, Visit visit) {
  const VelSelection::Range& r = selection.range;
  const auto alongRow = [&](int row) {
    for (int i = std::max(r.left, 0); i <= std::min(r.right, sides.columns() - 1); ++i) {
      if (Side* side = sides.horizontalAt(i, row)) visit(*side);
    }
  };
  const auto alongColumn = [&](int column) {
    for (int j = std::max(r.top, 0); j <= std::min(r.bottom, sides.rows() - 1); ++j) {
      if (Side* side = sides.verticalAt(column, j)) visit(*side);
    }
  };
  if (selection.location.test(VelSelection::L_TOP)) alongRow(r.top);
  if (selection.location.test(VelSelection::L_BOTTOM)) alongRow(r.bottom + 1);
  if (selection.location.test(VelSelection::L_LEFT)) alongColumn(r.left);
  if (selection.location.test(VelSelection::L_RIGHT)) alongColumn(r.right + 1);
}

/// `what` names the kind of condition in the failure text, `list` the member of the side.
template <class Condition>
void assignToSides(const VelAssignments& assignments, VelSelection::assignment_t kind,
                   std::vector<Condition>& conditions, std::vector<Condition*> Side::*list,
                   const std::string& what, const char* functionId, SideMatrices& sides) {
  const NameIndex index(conditions);
  for (const VelSelection& selection : assignments.selections) {
    if (selection.kind != kind) continue;
    const std::size_t position = index.find(selection.name);
    if (position == NameIndex::NONE) {
      throw TKL::Exception(what + " condition '" + selection.name + "' is not defined!", functionId);
    }
    forEachEdgeSide(selection, sides, [&](Side& side) { (side.*list).push_back(&conditions[position]); });
  }
}

}  // namespace

void assign_bc(const VelAssignments& assignments, std::vector<VelBoundaryCond>& boundaryConds,
               SideMatrices& sides) {
  const char* const FUNC_ID = "[assign_bc]";
  assignToSides(assignments, VelSelection::A_BOUNDARYCOND, boundaryConds, &Side::boundaryConds, "Boundary",
                FUNC_ID, sides);
}

void assign_kc(const VelAssignments& assignments, std::vector<VelContactCond>& contactConds,
               SideMatrices& sides) {
  const char* const FUNC_ID = "[assign_kc]  ";
  assignToSides(assignments, VelSelection::A_CONTACTCOND, contactConds, &Side::contactConds, "Contact",
                FUNC_ID, sides);
}

}  // namespace VELMORA
