#include "app/RunSequence.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "foundation/ConsoleColor.h"
#include "foundation/Version.h"
#include "project/Version.h"

namespace VELMORA_SOLVER {

namespace {

const char* const FUNC_ID = "[main]";

std::string compilerName() {
#ifdef __clang__
  return __VERSION__;
#else
  return std::string("GNU C++ ") + __VERSION__;
#endif
}

}  // namespace

void mainMessage(const std::string& text, int verbosityLevel) {
  TKL::message(text, TKL::MSG_STANDARD, FUNC_ID, verbosityLevel);
}

void mainError(const std::string& text) {
  constexpr int ALWAYS = -1;
  TKL::message(text, TKL::MSG_ERROR, FUNC_ID, ALWAYS);
}

int rejectCommandLine(const VELMORA::SolverFlags& flags) {
  VELMORA::SolverFlags::printHelp();
  TKL::setConsoleColor(std::cerr, TKL::CC_LIGHT_RED);
  std::cerr << "\nWrong or missing command line options!" << std::endl;
  TKL::setConsoleColor(std::cerr, TKL::CC_GREY);
  if (!flags.closeOnExit) waitForKey();
  return 1;
}

void writeBanner() {
  mainMessage("Velmora CVODE based solver\n");
  mainMessage("--------------------------\n");
  mainMessage("\n");
  mainMessage(std::string("Velmora model and solver version : ") + VELMORA::MODEL_VERSION + "\n");
  mainMessage(std::string("TKL library version              : ") + TKL::LIBRARY_VERSION + "\n");
  mainMessage("\n");
  mainMessage("Compiled with: " + compilerName() + "\n");
  mainMessage("\n");
}

void waitForKey() {
  if (isatty(STDIN_FILENO) == 0) return;
  std::cout << "Press Enter to continue . . . " << std::flush;
  for (int character = std::getchar(); character != '\n' && character != EOF;) character = std::getchar();
}

}  // namespace VELMORA_SOLVER
