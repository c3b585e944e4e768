#pragma once

#include <cstddef>
#include <cstdint>

#include "project/VelOutputFile.h"

namespace VELMORA {

/// Where a stopped run goes on.
struct ContinuationPoint {
  double t = 0.0;  ///< [s] time of the restart state
  /// How many outputs of the file up to `t` have times that its text shows like `t`: it has six digits only.
  std::size_t shownAlike = 0;
};

/// What a continued file keeps and has lost.
struct ContinuedFile {
  std::size_t records = 0;  ///< that stay
  std::uint64_t cut = 0;    ///< bytes that have been cut
};

/// Cuts from the end of an output file what belongs to the run that goes on: records later than the restart
/// state, and a record that is not complete. So no output time stands twice, and none is missing.
/// @throws TKL::Exception that names the path, for a header that is not complete and where the system refuses
ContinuedFile cutRecordsAfter(const VelOutputFile& file, const ContinuationPoint& point);

/// The time of a record as a text file shows it: in the unit of the format, with six digits.
double timeAsShown(const VelOutputFile& file, double t);

}  // namespace VELMORA
