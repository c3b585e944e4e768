#pragma once

#include <optional>
#include <string>

#include "foundation/Path.h"
#include "foundation/StopWatch.h"

namespace VELMORA_SOLVER {

/// A small file that is rewritten again and again, with the last one but one as "<name>.backup". The old
/// backup gets a third name and is written over with the new text; then the file becomes the backup and the
/// new text the file. So at every instant one of the two names holds a complete text, whatever stops the
/// program. It is forced to disk before it is renamed, but at most once per second of real time, and more
/// rarely on a slow disk: that guards against a power cut without making a fast run wait for the disk at each
/// output.
class TwoGenerationFile {
 public:
  TwoGenerationFile(const TKL::Path& folder, const std::string& name);

  /// Replaces the file and moves the last one to the backup.
  /// @throws TKL::Exception that names path and reason; the last text stays, as the file or as the backup
  void write(const std::string& text);

  /// Forces the file and its name to disk, if the last `write` has not done it.
  /// @throws TKL::Exception that names path and reason
  void flush();

  /// Makes the backup the file again, as if the file had never been written.
  /// @throws TKL::Exception that names path and reason
  void takeBackup();

  const TKL::Path& file() const { return file_; }
  const TKL::Path& backup() const { return backup_; }

 private:
  TKL::Path folder_;
  TKL::Path file_;
  TKL::Path backup_;
  TKL::Path unfinished_;
  bool onDisk_ = true;                        ///< nothing has been written since the last flush
  std::optional<TKL::StopWatch> sinceFlush_;  ///< since a text was last forced to disk
  double flushInterval_ = 0.0;                ///< [ms] that must pass until the next time
};

}  // namespace VELMORA_SOLVER
