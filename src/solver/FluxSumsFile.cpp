#include "solver/FluxSumsFile.h"

#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <map>
#include <string>

namespace VELMORA_SOLVER {

namespace {

constexpr int TIME_DECIMALS_OF_SUMS = 3;  // as in the restart file
const char* const LAST_LINE = "END";

std::string timeLine(double t) {
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), t, std::chars_format::fixed,
                                    TIME_DECIMALS_OF_SUMS);
  return std::string(buffer.data(), result.ptr);
}

/// Calls `visit` for each array of flows that is integrated.
template <class Records, class Visit>
void forEachSum(Records& sums, const Visit& visit) {
  for (auto* records : {&sums.heatFlux, &sums.moistureFlux, &sums.vocFlux, &sums.additionalFlux})
    visit(*records);
}

void appendShortest(std::string& text, double value) {
  std::array<char, 40> buffer{};
  text.append(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
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

using RowsBySide = std::map<int, std::vector<double>>;

/// The rows of a file of the given time, by the number of their side; empty where the file is another one.
RowsBySide readRows(const TKL::Path& path, double t) {
  std::ifstream stream(path.str());
  std::string line;
  if (!stream || !std::getline(stream, line) || line != timeLine(t)) return {};
  RowsBySide rows;
  while (std::getline(stream, line) && line != LAST_LINE) {
    std::vector<double> values = numbersOf(line);
    if (values.empty()) return {};
    const double side = values.front();
    if (!(side >= 0.0 && side < 1e9)) return {};
    values.erase(values.begin());
    rows[static_cast<int>(side)] = std::move(values);
  }
  return line == LAST_LINE ? rows : RowsBySide();
}

bool takeRows(const RowsBySide& rows, const std::vector<int>& sides, FluxRecords& sums) {
  std::size_t nSlots = 0;
  forEachSum(sums, [&](const RecordArray& records) { nSlots += records.nSlots(); });
  for (const int side : sides) {
    const auto row = rows.find(side);
    if (row == rows.end() || row->second.size() != nSlots) return false;
  }
  for (const int side : sides) {
    auto value = rows.at(side).begin();
    forEachSum(sums, [&](RecordArray& records) {
      double* record = records[static_cast<std::size_t>(side)];
      for (std::size_t slot = 0; slot < records.nSlots(); ++slot) record[slot] = *value++;
    });
  }
  return true;
}

}  // namespace

FluxSumsFile::FluxSumsFile(const TKL::Path& resultsDirectory) : file_(resultsDirectory, "restart.sums") {}

void FluxSumsFile::write(double t, const std::vector<int>& sides, const FluxRecords& sums) {
  std::string text = timeLine(t) + '\n';
  for (const int side : sides) {
    text += std::to_string(side);
    forEachSum(sums, [&](const RecordArray& records) {
      const double* record = records[static_cast<std::size_t>(side)];
      for (std::size_t slot = 0; slot < records.nSlots(); ++slot) {
        text += ' ';
        appendShortest(text, record[slot]);
      }
    });
    text += '\n';
  }
  file_.write(text + LAST_LINE + '\n');
}

bool FluxSumsFile::read(double t, const std::vector<int>& sides, FluxRecords& sums) {
  if (takeRows(readRows(file_.file(), t), sides, sums)) return true;
  if (!takeRows(readRows(file_.backup(), t), sides, sums)) return false;
  file_.takeBackup();
  return true;
}

}  // namespace VELMORA_SOLVER
