#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "solver/PollutantBench.h"
#include "solver/SolverProject.h"
#include "solver/VelmoraCvodeSolver.h"
#include "support/MessageCapture.h"

namespace VELMORA_SOLVER {

/// Two equal cells with a pollutant, sealed unless a test opens them, with the files of a project around
/// them: outputs and restarts.
class PollutedBlock : public ::testing::Test {
 protected:
  PollutedBlock() {
    text.balances = "BALANCE_EQUATIONS = ENERGY POLLUTANT\n";
    text.climate.clear();
    text.boundary.clear();
    text.material = SolverProject::storage("RHO = 1000 kg/m3\nCE = 1000 J/kgK\nTHETA_POR = 0.4 m3/m3\n") +
                    SolverProject::transport("LAMBDA = 1 W/mK\nMEW = 10 -\nKG = 1e-4 s\n");
    text.settings = "ABS_TOL_POLLUTANT = 1e-15\nREL_TOL = 1e-7\n";
    text.assignments = SolverProject::assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT") +
                       SolverProject::assign("FIELDOUTPUT", "0 0 1 0", "T.out", "ELEMENT");
    last("1 h");
  }
  /// Lets the run end at a time.
  void last(const std::string& duration) {
    text.general = "DURATION = " + duration + "\nVOC_DATABASE = " + database.path() + "\nVOC_IDS = Vapour\n";
  }
  void start(const std::string& type, const std::string& value, const std::string& range) {
    const std::string name = type + " " + range;
    initials_ += "[INIT_COND]\nNAME = " + name + "\nTYPE = " + type + "\nVALUE = " + value + "\n";
    text.assignments += SolverProject::assign("INITIALCOND", range, name, "ELEMENT");
  }
  bool init() {
    solver.clear();  // a solver outlives no project
    project = std::make_unique<VELMORA::VelProject>();
    const std::string boundary = text.boundary;
    if (!initials_.empty()) text.boundary += "[INITIAL_CONDITIONS]\n" + initials_;
    text.read(*project);
    text.boundary = boundary;
    project->m_solverFlags.restart = restart;
    capture.messages.clear();
    return solver.init(*project);
  }
  bool run() {
    if (!init()) return false;
    solver.run();
    return true;
  }
  void restartFrom(const std::string& content) {
    std::filesystem::create_directories(text.folder.file("wall.results"));
    text.folder.write(text.resultFile("restart.txt"), content);
    restart = true;
  }
  std::vector<std::string> restartLines() const {
    std::istringstream stream(text.result("restart.txt"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  PollutantFile database;
  TKL::MessageCapture capture;
  SolverProject text;
  bool restart = false;
  std::unique_ptr<VELMORA::VelProject> project;
  VelmoraCvodeSolver solver;

 private:
  std::string initials_;
};

}  // namespace VELMORA_SOLVER
