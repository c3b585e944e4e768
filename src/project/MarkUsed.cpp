#include "project/MarkUsed.h"

#include <array>
#include <cstdint>
#include <string>

#include "foundation/Exception.h"
#include "keywords/KeywordList.h"
#include "project/MaterialIndex.h"
#include "project/NameIndex.h"

namespace VELMORA {

namespace {

template <class Index>
void markKind(const VelAssignments& assignments, VelSelection::assignment_t kind, const Index& index,
              UsedFlags& used) {
  const char* const FUNC_ID = "[mark_used]  ";
  const std::string type =
      "with type '" + KeywordList::Keyword("VelSelection::assignment_t", static_cast<std::uint32_t>(kind)) +
      "'. ";
  for (const VelSelection& selection : assignments.selections) {
    if (selection.kind != kind || selection.isVoid()) continue;
    const std::string assignment = "assignment '" + selection.name + "' " + type;
    const std::size_t position = index.find(selection.name);
    if (position == NameIndex::NONE) {
      throw TKL::Exception("Invalid " + assignment + "Check the ID names of your assignments!", FUNC_ID)
          .withInputLine(selection.nameLine);
    }
    used[position] = true;
    if (index.isAmbiguous(selection.name)) {
      throw TKL::Exception("Ambiguous " + assignment +
                               "Check whether there are multiple definitions (materials, conditions, etc.) "
                               "of the same identification name!",
                           FUNC_ID)
          .withInputLine(selection.nameLine);
    }
  }
}

template <class T>
UsedFlags markObjects(const VelAssignments& assignments, VelSelection::assignment_t kind,
                      const std::vector<T>& objects) {
  UsedFlags used(objects.size(), false);
  markKind(assignments, kind, NameIndex(objects), used);
  return used;
}

/// Flags the climate conditions of one referring condition; `referrer` is "boundary" or "field".
class ClimateMarker {
 public:
  ClimateMarker(const std::vector<VelClimateCond>& climateConds, std::string referrer)
      : used(climateConds.size(), false), index_(climateConds), referrer_(std::move(referrer)) {}

  template <class Names>
  void mark(const Names& climateNames, const std::string& conditionName) {
    const char* const FUNC_ID = "[mark_used_cc]";
    for (const std::string& name : climateNames) {
      if (name.empty()) continue;
      const std::size_t position = index_.find(name);
      if (position == NameIndex::NONE) {
        throw TKL::Exception("Climate condition with id name '" + name + "' referred from " + referrer_ +
                                 " condition '" + conditionName + "' does not exist!",
                             FUNC_ID);
      }
      used[position] = true;
    }
  }

  UsedFlags used;

 private:
  NameIndex index_;
  std::string referrer_;
};

}  // namespace

UsedFlags mark_used(const VelAssignments& assignments, const std::vector<MaterialDescription>& materials) {
  UsedFlags used(materials.size(), false);
  markKind(assignments, VelSelection::A_MATERIAL, MaterialIndex(materials), used);
  return used;
}

UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelBoundaryCond>& boundaryConds) {
  return markObjects(assignments, VelSelection::A_BOUNDARYCOND, boundaryConds);
}

UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelInitialCond>& initialConds) {
  return markObjects(assignments, VelSelection::A_INITIALCOND, initialConds);
}

UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelFieldCond>& fieldConds) {
  return markObjects(assignments, VelSelection::A_FIELDCOND, fieldConds);
}

UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelContactCond>& contactConds) {
  return markObjects(assignments, VelSelection::A_CONTACTCOND, contactConds);
}

UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelOutputFile>& outputFiles) {
  UsedFlags used(outputFiles.size(), false);
  const NameIndex index(outputFiles);
  markKind(assignments, VelSelection::A_FIELDOUTPUT, index, used);
  markKind(assignments, VelSelection::A_FLUXOUTPUT, index, used);
  return used;
}

UsedFlags mark_used_wd(const std::vector<VelBoundaryCond>& boundaryConds,
                       const std::vector<VelWallData>& wallData) {
  const char* const FUNC_ID = "[mark_used_wd]";
  UsedFlags used(wallData.size(), false);
  const NameIndex index(wallData);
  for (const VelBoundaryCond& condition : boundaryConds) {
    const std::string& name = condition.idNames[VelBoundaryCond::I_WALLDATA];
    if (name.empty()) continue;
    const std::size_t position = index.find(name);
    if (position == NameIndex::NONE) {
      throw TKL::Exception("Wall data with id name '" + name + "' referred from boundary condition '" +
                               condition.name + "' does not exist!",
                           FUNC_ID);
    }
    used[position] = true;
  }
  return used;
}

UsedFlags mark_used_cc(const std::vector<VelBoundaryCond>& boundaryConds,
                       const std::vector<VelClimateCond>& climateConds) {
  ClimateMarker marker(climateConds, "boundary");
  for (const VelBoundaryCond& condition : boundaryConds) marker.mark(condition.climateNames, condition.name);
  return marker.used;
}

UsedFlags mark_used_cc(const std::vector<VelFieldCond>& fieldConds,
                       const std::vector<VelClimateCond>& climateConds) {
  ClimateMarker marker(climateConds, "field");
  for (const VelFieldCond& condition : fieldConds) {
    marker.mark(condition.climateNames, condition.name);
    if (condition.wtaModel) marker.mark(condition.wtaModel->climateNames, condition.name);
  }
  return marker.used;
}

}  // namespace VELMORA
