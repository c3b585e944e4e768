#pragma once

#include <string>

#include "grid/IndexMatrix.h"
#include "project/CalculationData.h"
#include "project/SideMatrices.h"
#include "project/VelProject.h"

/// The steps of `VelProject::setup_calculation`, in their order.
namespace VELMORA::setup {

/// Progress text of the set-up, at verbosity 2.
void progress(const std::string& text);

/// Takes over the materials and conditions that the assignments reach, checks and links them.
void transferMaterials(const VelProject& project, CalculationData& data);
void transferBoundaryConds(const VelProject& project, CalculationData& data);
void transferFieldConds(const VelProject& project, CalculationData& data);
void transferWallData(const VelProject& project, CalculationData& data);
void transferClimateConds(const VelProject& project, CalculationData& data);
void transferInitialConds(const VelProject& project, CalculationData& data);
void transferContactConds(const VelProject& project, CalculationData& data);

/// Makes and numbers the elements and calculates their geometry; returns their numbers by cell.
IndexMatrix createElements(const VelProject& project, CalculationData& data);
/// Materials, initial and field conditions of the elements.
void assignToElements(const VelProject& project, const IndexMatrix& indexMatrix, CalculationData& data);

/// All sides of the grid with their geometry.
SideMatrices createSides(const VelProject& project, const IndexMatrix& indexMatrix, CalculationData& data);
/// Boundary and contact conditions of the sides.
void assignToSides(const VelProject& project, CalculationData& data, SideMatrices& sides);
/// Replaces the conditions at the outermost sides of each row by those of a coupled room.
void assignRooms(const VelAssignments& assignments, std::vector<VelBoundaryCond>& boundaryConds,
                 SideMatrices& sides);
/// Keeps the inner sides, and the outer ones with a boundary condition.
void collectSides(SideMatrices& sides, CalculationData& data);
/// Tells the elements their sides.
void linkSides(CalculationData& data);

/// Creates the output directory.
void createOutputDirectory(const VelProject& project, CalculationData& data);
/// Output files that an assignment refers to, their formats and their grids.
void transferOutputs(const VelProject& project, CalculationData& data);
/// Elements and sides of the output files.
void assignOutputs(const VelProject& project, const IndexMatrix& indexMatrix, CalculationData& data);

/// Names of the boundary conditions that stand for a coupled room.
inline constexpr char ROOM_LEFT[] = "Room interface left";
inline constexpr char ROOM_RIGHT[] = "Room interface right";

}  // namespace VELMORA::setup
