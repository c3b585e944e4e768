// Reading of project files, and the set-up of the calculation.

#include <benchmark/benchmark.h>

#include <string>

#include "bench/RateCase.h"
#include "project/VelProject.h"
#include "solver/VelmoraCvodeSolver.h"

namespace {

/// A body of n times n cells with a selection for each of them.
class ProjectOfCells {
 public:
  explicit ProjectOfCells(int n) {
    std::string text = VELMORA_BENCH::RateBody{n, n, "ENERGY MOISTURE"}.text();
    for (int i = 0; i < n; ++i) {
      for (int j = 0; j < n; ++j) {
        const std::string cell = std::to_string(i) + " " + std::to_string(j);
        text += "[SELECTION]\nTYPE = INITIALCOND\nRANGE = " + cell + " " + cell +
                "\nNAME = Damp\nLOCATION = ELEMENT\n";
      }
    }
    VELMORA_BENCH::writeMaterials(folder_);
    file_ = TKL::Path(folder_.write("cells.vel", text));
  }

  void read(VELMORA::VelProject& project) const {
    std::string error;
    if (project.read(file_, error) != 0) throw std::runtime_error(error);
  }

 private:
  VELMORA_BENCH::Silence silence_;
  VELMORA_BENCH::Folder folder_;
  TKL::Path file_;
};

void readProject(benchmark::State& state) {
  const ProjectOfCells cells(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] const auto& pass : state) {
    VELMORA::VelProject project;
    cells.read(project);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(0));
}
BENCHMARK(readProject)->Arg(10)->Arg(40)->Unit(benchmark::kMillisecond);

void setUpCalculation(benchmark::State& state) {
  const ProjectOfCells cells(static_cast<int>(state.range(0)));
  VELMORA::VelProject project;
  cells.read(project);
  for ([[maybe_unused]] const auto& pass : state) {
    VELMORA_SOLVER::VelmoraCvodeSolver solver;
    if (!solver.init(project)) state.SkipWithError("no set-up");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(0));
}
BENCHMARK(setUpCalculation)->Arg(10)->Arg(40)->Unit(benchmark::kMillisecond);

}  // namespace
