#include "app/ConsoleSolverMsgHandler.h"

#include <cerrno>
#include <iomanip>
#include <iostream>

#include "foundation/ConsoleColor.h"
#include "foundation/Path.h"

namespace VELMORA_SOLVER {

std::unique_ptr<std::ofstream> solverLogFile;

ConsoleSolverMsgHandler::ConsoleSolverMsgHandler(int verbosityLimit, bool writeLog)
    : writeLogFile(writeLog), verbosity(verbosityLimit) {
  solverLogFile.reset();
}

ConsoleSolverMsgHandler::~ConsoleSolverMsgHandler() {
  closeSolverLog();
}

void ConsoleSolverMsgHandler::openSolverLog(const std::string& projectFile, bool append) {
  if (!writeLogFile) return;
  logFileName_ = projectFile + ".output";
  logFailed = false;
  solverLogFile =
      std::make_unique<std::ofstream>(logFileName_, append ? std::ios::out | std::ios::app : std::ios::out);
  if (!append) return;
  errno = 0;
  *solverLogFile << "\n----------- continued -------------\n" << std::endl;
  if (solverLogFile->is_open() && !*solverLogFile) reportLogFailure();
}

void ConsoleSolverMsgHandler::closeSolverLog() {
  if (solverLogFile != nullptr && solverLogFile->is_open()) {
    errno = 0;
    solverLogFile->close();
    if (!*solverLogFile) reportLogFailure();
  }
  solverLogFile.reset();
}

void ConsoleSolverMsgHandler::msg(const std::string& text, int type, const char* functionId,
                                  int verbosityLevel) {
  const bool filtered = type == TKL::MSG_STANDARD || type == TKL::MSG_PROGRESS || type == TKL::MSG_WARNING ||
                        type == TKL::MSG_DEBUG;
  if (filtered && verbosityLevel > verbosity) return;
  writeToConsole(text, type, functionId);
  if (solverLogFile == nullptr) return;
  errno = 0;
  writeToLog(text, type, functionId);
  // A run that is killed must leave its log behind.
  solverLogFile->flush();
  if (solverLogFile->is_open() && !*solverLogFile) reportLogFailure();
}

/// Once, and on the console alone. The run goes on: its results are worth more than its log.
void ConsoleSolverMsgHandler::reportLogFailure() {
  if (logFailed) return;
  logFailed = true;
  const std::string reason = errno != 0 ? ": " + TKL::systemErrorText(errno) : "!";
  writeToConsole("Cannot write log file '" + logFileName_ + "'" + reason, TKL::MSG_ERROR, nullptr);
}

void ConsoleSolverMsgHandler::writeToConsole(const std::string& text, int type,
                                             const char* functionId) const {
  switch (type) {
    case TKL::MSG_STANDARD:
      std::cout << indentText() << text << std::flush;
      break;
    case TKL::MSG_PROGRESS:
      std::cout << text << std::flush;
      break;
    case TKL::MSG_WARNING: {
      TKL::setConsoleColor(std::cout, TKL::CC_YELLOW);
      const bool ownLineEnd = text.ends_with('\n');
      if (ownLineEnd) TKL::setConsoleColor(std::cout, TKL::CC_LIGHT_CYAN);
      std::cout << indentText() << (ownLineEnd ? text.substr(0, text.size() - 1) : text) << std::endl;
      TKL::setConsoleColor(std::cout, TKL::CC_GREY);
      break;
    }
    case TKL::MSG_ERROR:
      TKL::setConsoleColor(std::cerr, TKL::CC_LIGHT_RED);
      std::cerr << indentText() << text << std::endl;
      TKL::setConsoleColor(std::cerr, TKL::CC_GREY);
      break;
    case TKL::MSG_DEBUG:
      TKL::setConsoleColor(std::clog, TKL::CC_LIGHT_MAGENTA);
      std::clog << text;
      if (functionId != nullptr) std::clog << "  " << functionId;
      std::clog << std::endl;
      TKL::setConsoleColor(std::clog, TKL::CC_GREY);
      break;
    default:
      break;
  }
}

void ConsoleSolverMsgHandler::writeToLog(const std::string& text, int type, const char* functionId) const {
  constexpr int ID_WIDTH = 30;
  std::ofstream& log = *solverLogFile;
  switch (type) {
    case TKL::MSG_STANDARD:
      log << indentText() << text;
      break;
    case TKL::MSG_PROGRESS:
      log << text << text << '\n';
      break;
    case TKL::MSG_ERROR:
      if (functionId != nullptr) log << std::setw(ID_WIDTH) << functionId << ": " << indentText();
      log << text << '\n';
      break;
    default:
      log << text << '\n';
      break;
  }
}

}  // namespace VELMORA_SOLVER
