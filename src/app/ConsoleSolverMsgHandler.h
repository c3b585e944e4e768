#pragma once

#include <fstream>
#include <memory>
#include <string>

#include "foundation/Message.h"

namespace VELMORA_SOLVER {

/// The ".output" file of the run, null while none is open.
extern std::unique_ptr<std::ofstream> solverLogFile;

/// Receives all messages of a run: writes them to the console and to the log beside the project file. The
/// log has neither time stamps nor marks of the message type.
class ConsoleSolverMsgHandler : public TKL::MessageHandler {
 public:
  /// `verbosityLimit` is the highest level that is written, errors aside.
  ConsoleSolverMsgHandler(int verbosityLimit, bool writeLog);
  ~ConsoleSolverMsgHandler() override;

  /// Writes a message to the console and to the log. `functionId` may be null.
  void msg(const std::string& text, int type, const char* functionId, int verbosityLevel) override;

  /// Opens `projectFile` + ".output", behind the old text or in its place. A log that cannot be opened does
  /// not stop a run: it stays empty.
  void openSolverLog(const std::string& projectFile, bool append);
  /// Closes the log, if it is open.
  void closeSolverLog();

  bool writeLogFile;       ///< whether `openSolverLog` opens a file
  int verbosity;           ///< highest level written
  bool logFailed = false;  ///< the log could be opened but not written to its end

 private:
  void reportLogFailure();
  void writeToConsole(const std::string& text, int type, const char* functionId) const;
  void writeToLog(const std::string& text, int type, const char* functionId) const;

  std::string logFileName_;
};

}  // namespace VELMORA_SOLVER
