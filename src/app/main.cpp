#include "app/RunSequence.h"
#include "project/SolverFlags.h"
#include "project/VelProject.h"
#include "solver/VelmoraCvodeSolver.h"

int main(int argc, char* argv[]) {
  VELMORA::SolverFlags flags;
  flags.readParams(argc, argv);
  if (flags.error) return VELMORA_SOLVER::rejectCommandLine(flags);
  return VELMORA_SOLVER::runProgram<VELMORA::VelProject, VELMORA_SOLVER::VelmoraCvodeSolver>(flags);
}
