#include "output/OutputWriter.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <utility>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "keywords/KeywordList.h"
#include "output/FluxValues.h"
#include "output/OutputContinuation.h"
#include "output/OutputRecord.h"

namespace VELMORA {

namespace {

const char* const WRITE_ID = "[VelmoraCvodeSolver::writeOutput]";

using Format = VelOutputFormat;

void warn(const std::string& text) {
  TKL::message(text, TKL::MSG_WARNING, WRITE_ID, -1);
}

void warnNotImplemented(const char* kind, const Format& format, const char* reason) {
  warn(std::string(kind) + " output format '" + quantityDescription(format) + "' not yet implemented" +
       reason + ".\n");
}

Format::field_t fieldOf(const Format& format) {
  return static_cast<Format::field_t>(format.quantity);
}

Format::flux_t fluxOf(const Format& format) {
  return static_cast<Format::flux_t>(format.quantity);
}

bool isSaltField(const Format& format) {
  return format.quantity >= Format::Q_SALT && format.quantity <= Format::Q_SOLUTION;
}

/// Whether the solver offers what records of this format need. Formats that are answered by a warning need
/// nothing.
bool isOffered(const Format& format, const OutputSource& source) {
  if (format.type == Format::T_FIELD) {
    if (format.timeType != Format::M_NONE || isSaltField(format)) return true;
    return FieldValues::isAvailable(fieldOf(format), source);
  }
  if (format.timeType == Format::M_NONE) return fluxValues(fluxOf(format), source).isAvailable();
  return !hasFluxSums(fluxOf(format)) || fluxSums(fluxOf(format), source).isAvailable();
}

/// Whether an output at a time [s] makes a record, and no more than a warning.
bool hasRecordAt(double time, const Format& format) {
  if (format.spaceType == Format::NUM_S || format.timeType == Format::NUM_M) return false;
  if (format.type == Format::T_FIELD) return format.timeType == Format::M_NONE && !isSaltField(format);
  if (format.timeType == Format::M_NONE) return time != 0.0;
  return hasFluxSums(fluxOf(format)) && (format.timeType == Format::M_INTEGRAL || time != 0.0);
}

}  // namespace

OutputWriter::OutputWriter(const OutputConstruction& construction,
                           const std::vector<VelOutputFile>& outputFiles,
                           std::vector<VelOutputGrid>& outputGrids, const ReferenceState& reference)
    : construction_(construction),
      outputFiles_(&outputFiles),
      schedule_(outputGrids),
      fieldValues_(construction.elements, reference) {}

void OutputWriter::initOutputFiles(bool restart) {
  VELMORA::initOutputFiles(*outputFiles_, construction_, outputStreams_, restart);
  lastValues_.assign(outputFiles_->size(), {});
  quantitiesChecked_ = false;
}

bool OutputWriter::shows(Format::field_t quantity) const {
  return std::any_of(outputFiles_->begin(), outputFiles_->end(), [quantity](const VelOutputFile& file) {
    return file.format->type == Format::T_FIELD && fieldOf(*file.format) == quantity;
  });
}

bool OutputWriter::needsEveryStep() const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::init]";
  bool result = false;
  for (const VelOutputFile& file : *outputFiles_) {
    const Format& format = *file.format;
    if (format.timeType == Format::M_INTEGRAL && format.type != Format::T_FLUX) {
      throw TKL::Exception("You can only integrate flux outputs in time. Output format '" + format.name +
                               "' was defined with time integration!",
                           FUNC_ID);
    }
    if (format.timeType != Format::M_NONE) result = true;
  }
  return result;
}

std::vector<int> OutputWriter::integratedSides() const {
  std::set<int> numbers;
  for (std::size_t i = 0; i < outputStreams_.size(); ++i) {
    const VelOutputFile& file = (*outputFiles_)[i];
    const bool integrated =
        file.format->timeType == Format::M_MEAN || file.format->timeType == Format::M_INTEGRAL;
    if (!outputStreams_[i] || !integrated) continue;
    for (const Side* side : file.sides) numbers.insert(side->number);
  }
  return {numbers.begin(), numbers.end()};
}

void OutputWriter::continueFrom(double duration, double t) {
  constexpr double ALIKE = 1.2e-5;  // two times with the same six digits are nearer to each other
  std::vector<ContinuationPoint> points(outputStreams_.size(), {.t = t, .shownAlike = 0});
  std::vector<std::size_t> expected(outputStreams_.size(), 0);
  schedule_.resume(duration, t, [&](double time) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      const VelOutputFile& file = (*outputFiles_)[i];
      if (!outputStreams_[i] || !schedule_.isDue(file.grid, time)) continue;
      if (hasRecordAt(time, *file.format)) ++expected[i];
      if (time >= t * (1.0 - ALIKE) && timeAsShown(file, time) == timeAsShown(file, t))
        ++points[i].shownAlike;
    }
  });
  for (std::size_t i = 0; i < points.size(); ++i)
    if (outputStreams_[i]) continueFile((*outputFiles_)[i], points[i], expected[i]);
}

/// Fewer records than output times are there where the restart state belongs to another run, or when a run is
/// extended that ended inside a long step.
void OutputWriter::continueFile(const VelOutputFile& file, const ContinuationPoint& point,
                                std::size_t expected) {
  const char* const FUNC_ID = "[OutputWriter::continueFrom]";
  const ContinuedFile kept = cutRecordsAfter(file, point);
  if (kept.cut > 0)
    TKL::message(TKL::FormatString("Removed %1 bytes behind the restart time from output file '%2'.\n")
                     .arg(static_cast<unsigned long>(kept.cut))
                     .arg(file.path.absolutePath()),
                 TKL::MSG_STANDARD, FUNC_ID, 1);
  if (kept.records < expected)
    TKL::message(TKL::FormatString("Output file '%1' has %2 records up to the restart time instead of %3.\n")
                     .arg(file.path.absolutePath())
                     .arg(static_cast<unsigned long>(kept.records))
                     .arg(static_cast<unsigned long>(expected)),
                 TKL::MSG_WARNING, FUNC_ID, -1);
}

void OutputWriter::writeOutput(const OutputSource& source) {
  if (outputStreams_.size() != outputFiles_->size()) {
    throw TKL::Exception("Size mismatch between output file vector and output stream list!", WRITE_ID);
  }
  if (!quantitiesChecked_) checkQuantities(source);
  for (std::size_t i = 0; i < outputFiles_->size(); ++i) {
    if (outputStreams_[i] && schedule_.isDue((*outputFiles_)[i].grid, source.time)) writeFile(i, source);
  }
}

void OutputWriter::close() {
  const OutputStreams streams = std::exchange(outputStreams_, {});
  for (std::size_t i = 0; i < streams.size(); ++i) {
    if (!streams[i]) continue;
    errno = 0;
    streams[i]->close();
    checkOutputStream(*streams[i], (*outputFiles_)[i].path);
  }
}

void OutputWriter::checkQuantities(const OutputSource& source) {
  for (std::size_t i = 0; i < outputFiles_->size(); ++i) {
    const VelOutputFile& file = (*outputFiles_)[i];
    if (!outputStreams_[i] || isOffered(*file.format, source)) continue;
    throw TKL::Exception(
        TKL::FormatString(
            "Quantity '%1' of output file '%2' is not calculated by this version of the solver!")
            .arg(quantityDescription(*file.format))
            .arg(file.path.absolutePath()),
        WRITE_ID);
  }
  quantitiesChecked_ = true;
}

void OutputWriter::writeFile(std::size_t index, const OutputSource& source) {
  const VelOutputFile& file = (*outputFiles_)[index];
  if (file.format->spaceType == Format::NUM_S) return;
  std::ofstream& stream = *outputStreams_[index];
  errno = 0;
  if (file.format->type == Format::T_FIELD) {
    writeField(file, stream, source);
  } else {
    writeFlux(index, stream, source);
  }
  checkOutputStream(stream, file.path);
}

void OutputWriter::writeField(const VelOutputFile& file, std::ostream& stream, const OutputSource& source) {
  const Format& format = *file.format;
  switch (format.timeType) {
    case Format::M_NONE:
      if (isSaltField(format)) {
        warnNotImplemented("Field", format, "");
      } else {
        writeSingleValueField(source.time, file, stream, fieldValues_.values(fieldOf(format), source));
      }
      break;
    case Format::M_MEAN:
      warn(
          "Time averaged field outputs temporarily disabled. Use post-processing to obtain time averaged "
          "field variables!\n");
      break;
    case Format::M_INTEGRAL:
      warn("Time integrated field outputs not yet implemented.\n");
      break;
    case Format::NUM_M:
      break;
  }
}

void OutputWriter::writeFlux(std::size_t index, std::ostream& stream, const OutputSource& source) {
  const VelOutputFile& file = (*outputFiles_)[index];
  const Format& format = *file.format;
  const Format::flux_t quantity = fluxOf(format);
  // The enthalpy of air exists only where both balances are solved.
  if (quantity == Format::X_AIRENTH && !construction_.balanceEquations[VelInit::B_ENERGY]) return;
  if (format.timeType == Format::M_NONE) {
    if (source.time == 0.0) return;
    const FluxSlot flux = fluxValues(quantity, source);
    writeSingleValueFlux(source.time, file, stream, flux.records, flux.slot);
  } else if (format.timeType == Format::M_MEAN) {
    if (source.time == 0.0) return;
    if (hasFluxSums(quantity)) {
      writeTimeMean(index, stream, source);
    } else {
      warnNotImplemented("Flux", format, " for averaged flux outputs");
    }
  } else if (format.timeType == Format::M_INTEGRAL) {
    if (hasFluxSums(quantity)) {
      const FluxSlot sums = fluxSums(quantity, source);
      writeSingleValueFlux(source.time, file, stream, sums.records, sums.slot);
    } else {
      warnNotImplemented("Flux", format, " for integrated flux outputs");
    }
  }
}

/// Before the first record the time of the last one is -1 s, and that record holds the plain integral.
void OutputWriter::writeTimeMean(std::size_t index, std::ostream& stream, const OutputSource& source) {
  const VelOutputFile& file = (*outputFiles_)[index];
  LastValues& last = lastValues_[index];
  const bool first = last.lastTime == -1.0;
  const double dt = source.time - last.lastTime;
  if (dt <= 0.0) {
    warn("Negative or zero time step encountered when calculating average outputs.\n");
    return;
  }
  const FluxSlot sums = fluxSums(fluxOf(*file.format), source);
  std::vector<double> current(file.sides.size());
  std::vector<double> shown(file.sides.size());
  last.values.resize(file.sides.size());
  for (std::size_t i = 0; i < current.size(); ++i) {
    current[i] = sums.records.at(static_cast<std::size_t>(file.sides[i]->number), sums.slot);
    shown[i] = first ? current[i] : (current[i] - last.values[i]) / dt;
  }
  writeFluxRecord(source.time, file, stream, shown);
  last.values = std::move(current);
  last.lastTime = source.time;
}

}  // namespace VELMORA
