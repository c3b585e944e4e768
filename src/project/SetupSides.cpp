#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "project/NameIndex.h"
#include "project/SetupCalculation.h"

namespace VELMORA::setup {

namespace {

/// Gives the room's condition to the first side from `begin` on, in steps of `step`, that has a neighbour
/// on the inner side. Returns true where that side has lost other conditions.
bool couplesRow(SideMatrices& sides, int row, int begin, int step, Element* Side::*inner,
                VelBoundaryCond& roomCondition) {
  for (int i = begin; i >= 0 && i <= sides.columns(); i += step) {
    Side& side = *sides.verticalAt(i, row);
    if (side.*inner == nullptr) continue;
    const bool lost = !side.boundaryConds.empty();
    side.boundaryConds.assign(1, &roomCondition);
    return lost;
  }
  return false;
}

bool isKept(const Side& side) {
  const bool outer = side.elementLeft == nullptr || side.elementRight == nullptr;
  const bool alone = side.elementLeft == nullptr && side.elementRight == nullptr;
  return !outer || (!alone && !side.boundaryConds.empty());
}

void keepSides(std::vector<Side>& matrix, std::vector<Side>& sides) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  for (Side& side : matrix) {
    if (isKept(side)) {
      side.number = static_cast<int>(sides.size());
      sides.push_back(std::move(side));
    } else if (!side.contactConds.empty()) {
      throw TKL::Exception(TKL::FormatString("Error while assigning contact condition '%1'. Reason : %2")
                               .arg(side.contactConds.front()->name)
                               .arg("On side is at boundary! Contact condition must be between material "
                                    "layers!"),
                           FUNC_ID);
    }
  }
}

/// The last contact condition of a side decides, with all its values, those that it leaves unset included.
SideQuantities quantitiesOf(const Side& side) {
  SideQuantities quantities{};
  for (const VelContactCond* condition : side.contactConds) {
    for (std::size_t k = 0; k < quantities.size(); ++k) quantities[k] = condition->para[k].value;
  }
  return quantities;
}

}  // namespace

SideMatrices createSides(const VelProject& project, const IndexMatrix& indexMatrix, CalculationData& data) {
  SideMatrices sides(indexMatrix.columns(), indexMatrix.rows());
  progress("Setting up horizontal sides matrix\n");
  setHorizontalSides(project.m_disc, indexMatrix, data.elements, sides);
  progress("Setting up vertical sides matrix\n");
  setVerticalSides(project.m_disc, indexMatrix, data.elements, sides);
  return sides;
}

void assignToSides(const VelProject& project, CalculationData& data, SideMatrices& sides) {
  progress("Assigning boundary conditions\n");
  assign_bc(project.m_assignments, data.boundaryConds, sides);
  assignRooms(project.m_assignments, data.boundaryConds, sides);
  progress("Assigning contact conditions\n");
  assign_kc(project.m_assignments, data.contactConds, sides);
}

void assignRooms(const VelAssignments& assignments, std::vector<VelBoundaryCond>& boundaryConds,
                 SideMatrices& sides) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const auto couple = [&](const RoomModel* room, const std::string& name, int begin, int step,
                          Element* Side::*inner, const char* lossWarning) {
    if (room == nullptr) return;
    const std::size_t position = NameIndex(boundaryConds).find(name);
    if (position == NameIndex::NONE) {
      throw TKL::Exception("BC with ID name '" + name + "' expected, but not found in vector!", FUNC_ID);
    }
    bool lost = false;
    for (int j = 0; j < sides.rows(); ++j) {
      lost = couplesRow(sides, j, begin, step, inner, boundaryConds[position]) || lost;
    }
    if (lost) TKL::message(std::string(lossWarning), TKL::MSG_WARNING, FUNC_ID, 2);
  };
  couple(assignments.roomLeft, ROOM_LEFT, 0, 1, &Side::elementRight,
         "One or more BC assignments at the left side of the construction were removed and replaced with a "
         "room interface boundary condition!\n");
  // the missing blank is an old slip that log readers know
  couple(assignments.roomRight, ROOM_RIGHT, sides.columns(), -1, &Side::elementLeft,
         "One or more BC assignments at the right side of the construction were removed and replacedwith a "
         "room interface boundary condition!\n");
}

void collectSides(SideMatrices& sides, CalculationData& data) {
  progress("Renumbering sides and creating final sides vector\n");
  data.sides.clear();
  keepSides(sides.horizontal, data.sides);
  keepSides(sides.vertical, data.sides);
  progress(TKL::FormatString("Side vector created, number of sides: %1\n").arg(data.sides.size()).str());
  data.sideQuantities.clear();
  for (const Side& side : data.sides) data.sideQuantities.push_back(quantitiesOf(side));
}

void linkSides(CalculationData& data) {
  progress("Linking elements to sides\n");
  for (Side& side : data.sides) {
    if (side.elementLeft != nullptr) {
      (side.horizontal ? side.elementLeft->sideBottom : side.elementLeft->sideRight) = &side;
    }
    if (side.elementRight != nullptr) {
      (side.horizontal ? side.elementRight->sideTop : side.elementRight->sideLeft) = &side;
    }
  }
  for (VelBoundaryCond& condition : data.boundaryConds) condition.prepareElements(data.elements);
}

}  // namespace VELMORA::setup
