#pragma once

#include <cstdint>
#include <string>

namespace VELMORA {

/// The parsed command line. A plain value: the project and the solver keep copies of it.
class SolverFlags {
 public:
  bool closeOnExit = false;     ///< no wait for a key at the end of the run
  bool restart = false;         ///< continue a stopped calculation from its restart file
  bool testInit = false;        ///< stop after a successful initialisation
  bool help = false;            ///< a help option was given; help is shown through `error` only
  bool disableHeaders = false;  ///< no table headers in the console log of the time loop
  std::int32_t verbosity = 1;   ///< verbosity of console and log, 0 (very little) to 4 (very verbose)
  bool error = false;           ///< the command line is wrong or incomplete
  std::string solverPath;       ///< the program as it was called
  std::string projectFile;      ///< project file as given, in local encoding

  /// Reads the command line. Faults end in `error`; a project file that cannot be opened is named on
  /// standard error.
  void readParams(int argc, const char* const argv[]);

  /// Writes the help text and a line end to standard output.
  static void printHelp();

 private:
  void readLongOption(const std::string& argument);
  void readShortOption(const std::string& argument);
  void readProjectFile(const std::string& argument);
};

}  // namespace VELMORA
