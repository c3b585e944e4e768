#include "solver/RestartFile.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <string>

#include "foundation/Exception.h"
#include "foundation/NumberText.h"

namespace VELMORA_SOLVER {

namespace {

constexpr int TIME_DECIMALS = 3;
constexpr int ENERGY_DECIMALS = 2;
constexpr int MASS_DECIMALS = 8;

void appendFixed(std::string& text, double value, int decimals) {
  char buffer[TKL::MAX_NUMBER_TEXT];
  text.append(buffer, TKL::writeNumber(buffer, value, {std::chars_format::fixed, decimals}));
}

/// The numbers pass through a buffer, since appending each of them costs as much as its digits.
void appendLine(std::string& text, const std::vector<double>& values, int decimals) {
  constexpr std::size_t PIECE = 4096;
  std::array<char, PIECE + TKL::MAX_NUMBER_TEXT + 1> piece;
  char* out = piece.data();
  for (const double value : values) {
    out = TKL::writeNumber(out, value, {std::chars_format::fixed, decimals});
    *out++ = ' ';
    if (out <= piece.data() + PIECE) continue;
    text.append(piece.data(), out);
    out = piece.data();
  }
  text.append(piece.data(), out);
  text += '\n';
}

/// A line of whole numbers, none at all without values.
template <class Number>
void appendCounts(std::string& text, const std::vector<Number>& values) {
  for (const Number value : values) text += std::to_string(value) + ' ';
  if (!values.empty()) text += '\n';
}

/// Whether the file may have been cut inside the number that ends at `position`: neither a blank nor the end
/// of the line says that no digit is missing.
bool mayBeCut(const std::istream& in, const char* position, const char* end) {
  return position == end && in.eof();
}

/// Reads the first `count` numbers of one line; false where there are fewer.
bool readNumbers(std::istream& in, std::size_t count, std::vector<double>& values) {
  std::string line;
  if (!std::getline(in, line)) return false;
  values.clear();
  values.reserve(count);
  const char* position = line.data();
  const char* const end = position + line.size();
  while (values.size() < count) {
    while (position != end && *position == ' ') ++position;
    double value = 0.0;
    const auto result = std::from_chars(position, end, value);
    if (result.ec != std::errc() || !std::isfinite(value) || mayBeCut(in, result.ptr, end)) return false;
    values.push_back(value);
    position = result.ptr;
  }
  return true;
}

/// Reads exactly `count` whole numbers of one line, or none at all.
template <class Number>
std::vector<Number> readCounts(std::istream& in, std::size_t count) {
  std::string line;
  std::vector<Number> values;
  if (!std::getline(in, line)) return values;
  const char* position = line.data();
  const char* const end = position + line.size();
  while (values.size() < count) {
    while (position != end && *position == ' ') ++position;
    Number value = 0;
    const auto result = std::from_chars(position, end, value);
    if (result.ec != std::errc() || mayBeCut(in, result.ptr, end)) return {};
    values.push_back(value);
    position = result.ptr;
  }
  return values;
}

}  // namespace

RestartFile::RestartFile(const TKL::Path& resultsDirectory) : file_(resultsDirectory, "restart.txt") {}

void RestartFile::write(const RestartState& state) {
  std::string text;
  text.reserve(24 * (state.U.size() + state.mw.size() + 2 * state.mVOC1.size()) + 64);
  appendFixed(text, state.t, TIME_DECIMALS);
  text += '\n';
  appendLine(text, state.U, ENERGY_DECIMALS);
  appendLine(text, state.mw, MASS_DECIMALS);
  if (!state.mVOC1.empty()) {
    appendLine(text, state.mVOC1, MASS_DECIMALS);
    appendLine(text, state.mVOC2, MASS_DECIMALS);
  }
  appendCounts(text, state.freezeThawCycles);
  appendCounts(text, state.frozen);

  file_.write(text);
}

RestartState RestartFile::read(std::size_t nElements, bool withPollutant) const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::setRestartFields]";
  const std::string prefix = std::string(FUNC_ID) + "  ";
  std::ifstream in(file_.file().str());
  std::string line;
  if (!in || !std::getline(in, line)) throw TKL::Exception(prefix + "Restart file missing!", FUNC_ID);
  RestartState state;
  const auto time = std::from_chars(line.data(), line.data() + line.size(), state.t);
  if (time.ec != std::errc() || !std::isfinite(state.t))
    throw TKL::Exception(prefix + "Error reading time point from restart file!", FUNC_ID);
  bool complete = readNumbers(in, nElements, state.U) && readNumbers(in, nElements, state.mw);
  if (withPollutant)
    complete = complete && readNumbers(in, nElements, state.mVOC1) && readNumbers(in, nElements, state.mVOC2);
  if (!complete) throw TKL::Exception(prefix + "Error reading restart file!", FUNC_ID);
  state.freezeThawCycles = readCounts<std::uint32_t>(in, nElements);
  state.frozen = readCounts<std::uint8_t>(in, nElements);
  return state;
}

}  // namespace VELMORA_SOLVER
