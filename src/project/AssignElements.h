#pragma once

#include <vector>

#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "project/VelAssignments.h"
#include "project/VelFieldCond.h"
#include "project/VelInitialCond.h"
#include "project/VelMaterials.h"

namespace VELMORA {

/// Sets the material of each element; later assignments override earlier ones.
/// @throws std::runtime_error "Material '...' is not defined!"
void assignMaterials(const VelAssignments& assignments, const std::vector<MaterialDescription>& materials,
                     const IndexMatrix& indexMatrix, std::vector<Element>& elements);

/// Appends the initial conditions to the elements of their rectangles.
/// @throws std::runtime_error "Initial condition '...' is not defined!"
void assignInitialConds(const VelAssignments& assignments, std::vector<VelInitialCond>& initialConds,
                        const IndexMatrix& indexMatrix, std::vector<Element>& elements);

/// Appends the field conditions to the elements of their rectangles, collects the elements and their volume
/// in the conditions, and prepares those that need to know their rectangle; a condition with a model keeps
/// the rectangle for it. Needs the materials.
/// @throws std::runtime_error "Field condition '...' is not defined!", and what the preparation throws
void assignFieldConds(const VelAssignments& assignments, std::vector<VelFieldCond>& fieldConds,
                      const IndexMatrix& indexMatrix, std::vector<Element>& elements);

}  // namespace VELMORA
