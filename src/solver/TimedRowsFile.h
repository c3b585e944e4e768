#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/Path.h"
#include "solver/TwoGenerationFile.h"

namespace VELMORA_SOLVER {

/// Numbers with all their digits that belong to a restart state: one row for each of some sides or elements.
/// Both generations of the file carry the time of their state, so that the one that belongs to a restart file
/// is found even if the run was killed between the writing of the two files.
class TimedRowsFile {
 public:
  using Rows = std::map<int, std::vector<double>>;  ///< by number

  TimedRowsFile(const TKL::Path& folder, const std::string& name) : file_(folder, name) {}

  /// Begins the rows of a state at `t` [s].
  void begin(double t);
  void beginRow(int number);
  void add(double value);
  /// Writes the rows that have been added.
  /// @throws TKL::Exception that names the path, when the disk does not take it
  void write();

  /// Hands the rows that belong to a state at `t` [s] to `take`, which tells whether they fit; if not, those
  /// of the backup, which then becomes the file again.
  /// @return whether rows have been taken
  bool read(double t, const std::function<bool(const Rows&)>& take);

  /// Forces the last rows to disk.
  void flush() { file_.flush(); }

 private:
  TwoGenerationFile file_;
  std::string text_;
};

}  // namespace VELMORA_SOLVER
