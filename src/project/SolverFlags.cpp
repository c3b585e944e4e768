#include "project/SolverFlags.h"

#include <fstream>
#include <iostream>

#include "foundation/Path.h"

namespace VELMORA {

void SolverFlags::readParams(int argc, const char* const argv[]) {
  solverPath = argc > 0 ? argv[0] : "";
  projectFile.clear();
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (!argument.starts_with('-'))
      readProjectFile(argument);
    else if (argument.starts_with("--"))
      readLongOption(argument);
    else
      readShortOption(argument);
  }
  if (projectFile.empty()) error = true;
}

void SolverFlags::readLongOption(const std::string& argument) {
  if (argument == "--closeonexit")
    closeOnExit = true;
  else if (argument == "--restart")
    restart = true;
  else if (argument == "--testinit")
    testInit = true;
  else if (argument == "--help")
    help = true;
  else if (argument == "--disableheaders")
    disableHeaders = true;
  else
    error = true;
}

void SolverFlags::readShortOption(const std::string& argument) {
  constexpr std::int32_t MAX_VERBOSITY = 4;
  if (argument.size() < 2) return;
  // The letter alone counts, whatever follows; other letters and signs are ignored.
  switch (argument[1]) {
    case 'x':
      closeOnExit = true;
      break;
    case 'r':
      restart = true;
      break;
    case 't':
      testInit = true;
      break;
    case 'h':
      help = true;
      break;
    case 'd':
      disableHeaders = true;
      break;
    case 'v':
      if (argument.size() < 3) {
        error = true;
        break;
      }
      verbosity = argument[2] - '0';
      if (verbosity < 0 || verbosity > MAX_VERBOSITY) error = true;
      break;
    default:
      break;
  }
}

void SolverFlags::readProjectFile(const std::string& argument) {
  if (!projectFile.empty()) {
    error = true;
    return;
  }
  projectFile = argument;
  if (std::ifstream(argument).is_open() && !TKL::Path(argument).isDirectory()) return;
  std::cerr << "Cannot open project file '" << argument << "' !" << std::endl;
  error = true;
  projectFile.clear();
}

void SolverFlags::printHelp() {
  std::cout << "\nCommand line options generally supported by Velmora solvers\n"
               "-----------------------------------------------------------\n"
               "\n"
               "Syntax: solver [options] <projectfile>\n"
               "\n"
               "Options:\n"
               "  -x, --closeonexit    Close console window after finishing simulation\n"
               "  -r, --restart        Continue stopped calculation from last output\n"
               "  -t, --testinit       Run the initialization and stop then\n"
               "  -v0 .. -v4           Set verbose level for solver output:\n"
               "                       from 0 (very little) to 4 (very verbose)\n"
               "  -d, --disableheaders Do not print the headers in the output log\n"
               "  -h, --help           Show additional help\n"
               "\n"
               "You can combine the options. The implementation of these options\n"
               "depends on the specific solver."
            << std::endl;
}

}  // namespace VELMORA
