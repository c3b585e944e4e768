#pragma once

#include <vector>

#include "output/DerivedQuantities.h"
#include "output/FieldValues.h"
#include "output/OutputConstruction.h"
#include "output/OutputContinuation.h"
#include "output/OutputFiles.h"
#include "output/OutputSchedule.h"
#include "output/OutputSource.h"

namespace VELMORA {

/// All output files of a run, from their creation to their end. The vectors it is built on must keep their
/// places as long as it lives.
class OutputWriter {
 public:
  OutputWriter(const OutputConstruction& construction, const std::vector<VelOutputFile>& outputFiles,
               std::vector<VelOutputGrid>& outputGrids, const ReferenceState& reference);
  OutputWriter(const OutputWriter&) = delete;
  OutputWriter& operator=(const OutputWriter&) = delete;
  ~OutputWriter() = default;

  /// Creates the files, or opens them for appending on a restart; see `initOutputFiles`.
  void initOutputFiles(bool restart);

  /// Whether some file needs the integrals of the fluxes over every step of the integrator.
  /// @throws TKL::Exception "You can only integrate flux outputs in time. ..."
  bool needsEveryStep() const;

  /// Whether some file shows a field quantity.
  bool shows(VelOutputFormat::field_t quantity) const;

  /// Numbers of the sides whose flows are integrated over time for some file, rising.
  std::vector<int> integratedSides() const;

  /// Prepares a run of `duration` [s] that goes on at `t` [s]: passes the output times before, and cuts from
  /// the files what the stopped run has written after that time. Warns of files that lack records before it.
  /// @throws TKL::Exception for a file that cannot be continued
  void continueFrom(double duration, double t);

  OutputSchedule& schedule() { return schedule_; }

  /// Appends a record to every file whose grid is due at `source.time`, and checks that it has been written.
  /// @throws TKL::Exception for a quantity that the solver does not offer, and where a file cannot be written
  void writeOutput(const OutputSource& source);

  /// Closes all files.
  /// @throws TKL::Exception for the first file whose end could not be written
  void close();

  const OutputStreams& outputStreams() const { return outputStreams_; }

 private:
  /// What a time mean must know of its last record.
  struct LastValues {
    double lastTime = -1.0;      ///< [s] before the first record -1
    std::vector<double> values;  ///< time integrals at that time, in the order of the sides of the file
  };

  static void continueFile(const VelOutputFile& file, const ContinuationPoint& point, std::size_t expected);
  void checkQuantities(const OutputSource& source);
  void writeFile(std::size_t index, const OutputSource& source);
  void writeField(const VelOutputFile& file, std::ostream& stream, const OutputSource& source);
  void writeFlux(std::size_t index, std::ostream& stream, const OutputSource& source);
  void writeTimeMean(std::size_t index, std::ostream& stream, const OutputSource& source);

  OutputConstruction construction_;
  const std::vector<VelOutputFile>* outputFiles_;
  OutputSchedule schedule_;
  FieldValues fieldValues_;
  OutputStreams outputStreams_;
  std::vector<LastValues> lastValues_;
  bool quantitiesChecked_ = false;
};

}  // namespace VELMORA
