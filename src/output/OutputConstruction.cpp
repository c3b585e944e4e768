#include "output/OutputConstruction.h"

#include "project/CalculationData.h"
#include "project/VelProject.h"

namespace VELMORA {

OutputConstruction outputConstruction(const VelProject& project, const CalculationData& data) {
  OutputConstruction construction;
  construction.projectFile = project.m_projectFile;
  construction.outputDir = data.outputDir;
  construction.balanceEquations = project.m_init.balanceEquations;
  construction.disc = &project.m_disc;
  construction.materials = data.materials;
  construction.elements = data.elements;
  construction.sides = data.sides;
  return construction;
}

}  // namespace VELMORA
