#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "project/MarkUsed.h"
#include "project/NameIndex.h"
#include "project/SetupCalculation.h"

namespace VELMORA::setup {

namespace {

/// A boundary condition that hands the conditions at a side to a coupled room.
VelBoundaryCond roomCondition(const char* name, RoomModel* room) {
  VelBoundaryCond condition;
  condition.condition = VelBoundaryCond::C_ROOM;
  condition.name = name;
  condition.room = room;
  condition.used = true;
  return condition;
}

/// Adsorption between pore air and solid goes on in every material, whether or not a condition for it is
/// assigned: this one gives its rate.
VelFieldCond hiddenAdsorption() {
  VelFieldCond condition;
  condition.condition = VelFieldCond::C_VOCADSORPTION;
  condition.name = "Automatic adsorption FC";
  condition.para[VelFieldCond::P_GAS2SOLID_TRANSFER_COEFF].set("GAS2SOLID_TRANSFER_COEFF", 0.1, "m3/s");
  condition.used = true;
  return condition;
}

/// Flags the climate conditions that scale the solutions of the project.
void markSolutionClimate(const std::vector<VelSolutionDefinition>& solutions,
                         const std::vector<VelClimateCond>& climateConds, UsedFlags& used) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const NameIndex index(climateConds);
  for (const VelSolutionDefinition& solution : solutions) {
    if (solution.percentage.empty()) continue;
    const std::size_t position = index.find(solution.percentage);
    if (position == NameIndex::NONE) {
      throw TKL::Exception(TKL::FormatString("Missing climate condition of type PERCENTAGE with name '%1'")
                               .arg(solution.percentage),
                           FUNC_ID);
    }
    if (climateConds[position].condition != VelClimateCond::C_PERCENTAGE) {
      throw TKL::Exception(TKL::FormatString("Climate condition with name '%1' should have type PERCENTAGE.")
                               .arg(solution.percentage),
                           FUNC_ID);
    }
    used[position] = true;
  }
}

}  // namespace

void transferMaterials(const VelProject& project, CalculationData& data) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const std::vector<MaterialDescription>& materials = project.m_materials.materials;
  const UsedFlags used = mark_used(project.m_assignments, materials);
  for (std::size_t k = 0; k < materials.size(); ++k) {
    if (!used[k]) continue;
    if (!materials[k].hasData) {
      throw TKL::Exception(TKL::FormatString("Material '%1' has no data, its file '%2' could not be read.")
                               .arg(materials[k].idName())
                               .arg(materials[k].filename),
                           FUNC_ID);
    }
    data.materials.push_back(&materials[k].material);
  }
}

void transferBoundaryConds(const VelProject& project, CalculationData& data) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const VelAssignments& assignments = project.m_assignments;
  data.boundaryConds = project.m_conditions.boundaryConds;
  removeUnused(data.boundaryConds, mark_used(assignments, data.boundaryConds));
  for (VelBoundaryCond& condition : data.boundaryConds) {
    if (!condition.checkParameters()) throw TKL::Exception("Error in boundary condition parameter", FUNC_ID);
  }
  for (VelBoundaryCond& condition : data.boundaryConds) condition.prepareParameters();
  if (assignments.roomLeft != nullptr) {
    data.boundaryConds.push_back(roomCondition(ROOM_LEFT, assignments.roomLeft));
  }
  if (assignments.roomRight != nullptr) {
    data.boundaryConds.push_back(roomCondition(ROOM_RIGHT, assignments.roomRight));
  }
}

void transferFieldConds(const VelProject& project, CalculationData& data) {
  data.fieldConds = project.m_conditions.fieldConds;
  removeUnused(data.fieldConds, mark_used(project.m_assignments, data.fieldConds));
  for (VelFieldCond& condition : data.fieldConds) condition.checkParameters();
  data.fieldConds.push_back(hiddenAdsorption());
  for (VelFieldCond& condition : data.fieldConds) condition.assignRemoteFieldCond(data.fieldConds);
}

void transferWallData(const VelProject& project, CalculationData& data) {
  data.wallData = project.m_conditions.wallData;
  removeUnused(data.wallData, mark_used_wd(data.boundaryConds, data.wallData));
  for (VelBoundaryCond& condition : data.boundaryConds) condition.assignWallData(data.wallData);
  for (VelWallData& wall : data.wallData) wall.checkParameters();
}

void transferClimateConds(const VelProject& project, CalculationData& data) {
  data.climateConds = project.m_conditions.climateConds;
  UsedFlags used = mark_used_cc(data.boundaryConds, data.climateConds);
  const UsedFlags usedByFields = mark_used_cc(data.fieldConds, data.climateConds);
  for (std::size_t k = 0; k < used.size(); ++k) used[k] = used[k] || usedByFields[k];
  markSolutionClimate(project.m_conditions.solutionDefinitions, data.climateConds, used);
  removeUnused(data.climateConds, used);
  for (VelBoundaryCond& condition : data.boundaryConds) condition.assignClimateCond(data.climateConds);
  for (VelFieldCond& condition : data.fieldConds) condition.assignClimateCond(data.climateConds);
}

void transferInitialConds(const VelProject& project, CalculationData& data) {
  data.initialConds = project.m_conditions.initialConds;
  removeUnused(data.initialConds, mark_used(project.m_assignments, data.initialConds));
}

void transferContactConds(const VelProject& project, CalculationData& data) {
  data.contactConds = project.m_conditions.contactConds;
  removeUnused(data.contactConds, mark_used(project.m_assignments, data.contactConds));
  for (VelContactCond& condition : data.contactConds) {
    condition.checkParameters();
    condition.prepareParameters();
  }
}

}  // namespace VELMORA::setup
