#pragma once

#include <exception>
#include <string>

#include "app/ConsoleSolverMsgHandler.h"
#include "foundation/Counters.h"
#include "foundation/Encoding.h"
#include "foundation/Message.h"
#include "foundation/Path.h"
#include "project/CurrentProject.h"
#include "project/SolverFlags.h"
#include "solver/StopRequest.h"

namespace VELMORA_SOLVER {

/// Shows the help text and the complaint about a wrong command line, and holds the console open if wanted.
/// @returns the exit code
int rejectCommandLine(const VELMORA::SolverFlags& flags);

/// Writes the program's name, its versions and its compiler.
void writeBanner();

/// Waits for the Enter key where standard input is a terminal.
void waitForKey();

/// A standard message of main at verbosity 1, unless told otherwise.
void mainMessage(const std::string& text, int verbosityLevel = 1);
/// An error message of main.
void mainError(const std::string& text);

/// Makes a project the current one for as long as the object lives.
class CurrentProjectGuard {
 public:
  explicit CurrentProjectGuard(VELMORA::VelProject& project) { VELMORA::currentProject = &project; }
  ~CurrentProjectGuard() { VELMORA::currentProject = nullptr; }
  CurrentProjectGuard(const CurrentProjectGuard&) = delete;
  CurrentProjectGuard& operator=(const CurrentProjectGuard&) = delete;
};

/// Integrates to the end of the simulated time and writes the totals of the run.
template <class Solver>
void runSolver(Solver& solver) {
  mainMessage("Starting solver\n\n");
  solver.stopwatch.start();
  {
    const StopSignals signals;
    solver.run();
  }
  if (TKL::iceIterationCount != 0)
    mainMessage("\nGlobal count of Ice decomposition iterations : " + std::to_string(TKL::iceIterationCount) +
                "\n");
  if (TKL::mrcIterationCount != 0)
    mainMessage("\nGlobal count of MRC iterations : " + std::to_string(TKL::mrcIterationCount) + "\n");
  constexpr int ALWAYS = -1;
  mainMessage("\nSimulation finished after : " + solver.stopwatch.diff_str() + "\n", ALWAYS);
}

/// Reads the project, sets the solver up and runs it.
/// @returns the exit code
/// @throws whatever stops the run
template <class Project, class Solver>
int runProject(const VELMORA::SolverFlags& flags) {
  Project project;
  const CurrentProjectGuard current(project);
  project.m_solverFlags = flags;
  project.m_executable = flags.solverPath;

  const TKL::Path projectFile(TKL::WstringToUTF8(TKL::ANSIToWstring(flags.projectFile)));
  mainMessage("Reading project '" + flags.projectFile + "'\n");
  std::string errorText;
  if (project.read(projectFile, errorText) != 0) {
    mainError(errorText);
    mainError("Cannot read project file. Program aborted.");
    return 1;
  }
  mainMessage("Project read successfully!\n");

  Solver solver;
  mainMessage("Initializating solver\n");
  if (!solver.init(project)) {
    mainError("Cannot initialize solver. Program aborted.");
    return 1;
  }
  mainMessage("Initialization complete!\n");
  if (flags.testInit)
    mainMessage("\nSolver halted after successful initialization!\n");
  else
    runSolver(solver);
  return 0;
}

/// The whole run of a valid command line, from the opening of the log to the wait for a key.
/// @returns the exit code
template <class Project, class Solver>
int runProgram(const VELMORA::SolverFlags& flags) {
  int exitCode = 1;
  {
    ConsoleSolverMsgHandler handler(flags.verbosity, true);
    handler.openSolverLog(flags.projectFile, flags.restart);
    TKL::MessageHandlerRegistry::instance().setMessageHandler(&handler);
    writeBanner();
    try {
      exitCode = runProject<Project, Solver>(flags);
    } catch (const std::exception& error) {
      mainError(error.what());
      mainMessage("Simulation of project '" + flags.projectFile + "' aborted.\n");
    }
    TKL::MessageHandlerRegistry::instance().setDefaultMessageHandler();
    handler.closeSolverLog();
    if (handler.logFailed) exitCode = 1;
  }
  if (!flags.closeOnExit) waitForKey();
  return exitCode;
}

}  // namespace VELMORA_SOLVER
