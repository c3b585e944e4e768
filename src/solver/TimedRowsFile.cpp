#include "solver/TimedRowsFile.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fstream>

namespace VELMORA_SOLVER {

namespace {

constexpr int TIME_DECIMALS_OF_ROWS = 3;  // as in the restart file
const char* const LAST_LINE = "END";

std::string timeLine(double t) {
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), t, std::chars_format::fixed,
                                    TIME_DECIMALS_OF_ROWS);
  return std::string(buffer.data(), result.ptr);
}

/// The numbers of a line; empty where one of them is none.
std::vector<double> numbersOf(const std::string& line) {
  std::vector<double> values;
  const char* position = line.data();
  const char* const end = position + line.size();
  while (position != end) {
    double value = 0.0;
    const auto result = std::from_chars(position, end, value);
    if (result.ec != std::errc() || !std::isfinite(value)) return {};
    values.push_back(value);
    position = result.ptr;
    while (position != end && *position == ' ') ++position;
  }
  return values;
}

/// The rows of a file of the given time; empty where the file is another one.
TimedRowsFile::Rows readRows(const TKL::Path& path, double t) {
  std::ifstream stream(path.str());
  std::string line;
  if (!stream || !std::getline(stream, line) || line != timeLine(t)) return {};
  TimedRowsFile::Rows rows;
  while (std::getline(stream, line) && line != LAST_LINE) {
    std::vector<double> values = numbersOf(line);
    if (values.empty()) return {};
    const double number = values.front();
    if (!(number >= 0.0 && number < 1e9)) return {};
    values.erase(values.begin());
    rows[static_cast<int>(number)] = std::move(values);
  }
  return line == LAST_LINE ? rows : TimedRowsFile::Rows();
}

}  // namespace

void TimedRowsFile::begin(double t) {
  text_ = timeLine(t) + '\n';
}

void TimedRowsFile::beginRow(int number) {
  if (text_.back() != '\n') text_ += '\n';
  text_ += std::to_string(number);
}

void TimedRowsFile::add(double value) {
  std::array<char, 40> buffer{};
  text_ += ' ';
  text_.append(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
}

void TimedRowsFile::write() {
  if (text_.back() != '\n') text_ += '\n';
  file_.write(text_ + LAST_LINE + '\n');
}

bool TimedRowsFile::read(double t, const std::function<bool(const Rows&)>& take) {
  if (take(readRows(file_.file(), t))) return true;
  if (!take(readRows(file_.backup(), t))) return false;
  file_.takeBackup();
  return true;
}

}  // namespace VELMORA_SOLVER
