#pragma once

#include <string>
#include <vector>

#include "project/VelAssignments.h"
#include "project/VelDisc.h"
#include "project/VelMaterials.h"
#include "project/VelProject.h"

namespace VELMORA {

inline VelDisc makeDisc(std::vector<double> dx, std::vector<double> dy,
                        VelDisc::geometry_t geometry = VelDisc::G_PLANE2D) {
  VelDisc disc;
  disc.geometry = geometry;
  disc.dx.data = std::move(dx);
  disc.dy.data = std::move(dy);
  return disc;
}

inline VelSelection makeSelection(VelSelection::assignment_t kind, const std::string& name,
                                  VelSelection::Range range,
                                  std::vector<VelSelection::location_t> locations = {}) {
  VelSelection selection;
  selection.kind = kind;
  selection.name = name;
  selection.range = range;
  for (const VelSelection::location_t location : locations) {
    selection.location.set(static_cast<std::size_t>(location));
  }
  return selection;
}

inline MaterialDescription makeMaterial(const std::string& name, bool air = false) {
  MaterialDescription material;
  material.name = name;
  material.hasData = true;
  if (air) material.material.identification.flags = MM::MaterialIdentification::F_AIR;
  return material;
}

template <class T>
T named(const std::string& name) {
  T object;
  object.name = name;
  return object;
}

}  // namespace VELMORA
