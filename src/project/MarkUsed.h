#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "climate/VelClimateCond.h"
#include "project/VelAssignments.h"
#include "project/VelBoundaryCond.h"
#include "project/VelContactCond.h"
#include "project/VelFieldCond.h"
#include "project/VelInitialCond.h"
#include "project/VelMaterials.h"
#include "project/VelOutputFile.h"
#include "project/VelWallData.h"

namespace VELMORA {

/// One flag for each object of a list: an assignment, or a used condition, refers to it.
using UsedFlags = std::vector<bool>;

/// Flags the objects that the assignments of their kind refer to. Only the first object of a name can be
/// used; a second one of the same name is an error if the name is referred to. The material name `VOID`
/// refers to nothing. Output files are referred to by both kinds of outputs.
/// @throws TKL::Exception "Invalid assignment '...' with type '...'. ...", "Ambiguous assignment ..."
UsedFlags mark_used(const VelAssignments& assignments, const std::vector<MaterialDescription>& materials);
UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelBoundaryCond>& boundaryConds);
UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelInitialCond>& initialConds);
UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelFieldCond>& fieldConds);
UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelContactCond>& contactConds);
UsedFlags mark_used(const VelAssignments& assignments, const std::vector<VelOutputFile>& outputFiles);

/// Flags the wall data that boundary conditions refer to.
/// @throws TKL::Exception "Wall data with id name '...' referred from boundary condition '...' does not
/// exist!"
UsedFlags mark_used_wd(const std::vector<VelBoundaryCond>& boundaryConds,
                       const std::vector<VelWallData>& wallData);

/// Flags the climate conditions that boundary or field conditions refer to.
/// @throws TKL::Exception "Climate condition with id name '...' referred from ... condition '...' does not
/// exist!"
UsedFlags mark_used_cc(const std::vector<VelBoundaryCond>& boundaryConds,
                       const std::vector<VelClimateCond>& climateConds);
UsedFlags mark_used_cc(const std::vector<VelFieldCond>& fieldConds,
                       const std::vector<VelClimateCond>& climateConds);

/// Drops the objects without a flag; the others keep their order.
template <class T>
void removeUnused(std::vector<T>& objects, const UsedFlags& used) {
  std::vector<T> kept;
  for (std::size_t k = 0; k < objects.size(); ++k) {
    if (!used[k]) continue;
    kept.push_back(std::move(objects[k]));
    if constexpr (requires { kept.back().used; }) kept.back().used = true;
  }
  objects = std::move(kept);
}

}  // namespace VELMORA
