#pragma once

#include <fstream>
#include <string>

#include "foundation/Path.h"
#include "solver/Integrator.h"

namespace VELMORA_SOLVER {

/// Log of the integrator's own counters, one line per output time or per step, for the diagnosis of slow
/// runs.
class MonitorFile {
 public:
  /// Opens the file and writes its header; a restart appends behind an empty line instead.
  /// @throws TKL::Exception when the file cannot be opened
  void open(const TKL::Path& projectFile, bool restart, bool withAir);
  bool isOpen() const { return file_.is_open(); }
  /// One line; nothing before the first step.
  /// @param pressureUpdates updates of the air pressures so far, which a file with air shows
  /// @throws TKL::Exception when the file does not take it
  void write(const IntegratorStatistics& statistics, double relTol, int pressureUpdates = 0);
  /// @throws TKL::Exception when the file does not take its end
  void close();

 private:
  void writeHeader(const std::string& projectFileName, bool withAir);

  void check(const char* action, const char* functionId) const;

  std::ofstream file_;
  std::string path_;
  bool withAir_ = false;
};

}  // namespace VELMORA_SOLVER
