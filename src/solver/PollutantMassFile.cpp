#include "solver/PollutantMassFile.h"

#include <algorithm>
#include <cmath>

namespace VELMORA_SOLVER {

namespace {

/// Whether a mass is one that the restart file shows as `rounded` [kg/m3].
bool isRoundedTo(double rounded, double mass) {
  constexpr double HALF_DECIMAL = 0.5e-8;
  constexpr double MARGIN = 1e-12;  // for the digits of large masses
  return std::fabs(mass - rounded) <= HALF_DECIMAL + MARGIN * std::max(1.0, std::fabs(rounded));
}

bool takeMasses(const TimedRowsFile::Rows& rows, std::vector<double>& gas, std::vector<double>& solid) {
  for (std::size_t e = 0; e < gas.size(); ++e) {
    const auto row = rows.find(static_cast<int>(e));
    if (row == rows.end() || row->second.size() != 2) return false;
    if (!isRoundedTo(gas[e], row->second[0]) || !isRoundedTo(solid[e], row->second[1])) return false;
  }
  for (std::size_t e = 0; e < gas.size(); ++e) {
    gas[e] = rows.at(static_cast<int>(e))[0];
    solid[e] = rows.at(static_cast<int>(e))[1];
  }
  return true;
}

}  // namespace

PollutantMassFile::PollutantMassFile(const TKL::Path& resultsDirectory)
    : file_(resultsDirectory, "restart.pollutant") {}

void PollutantMassFile::write(double t, const std::vector<double>& gas, const std::vector<double>& solid) {
  file_.begin(t);
  for (std::size_t e = 0; e < gas.size(); ++e) {
    file_.beginRow(static_cast<int>(e));
    file_.add(gas[e]);
    file_.add(solid[e]);
  }
  file_.write();
}

bool PollutantMassFile::read(double t, std::vector<double>& gas, std::vector<double>& solid) {
  return file_.read(t, [&](const TimedRowsFile::Rows& rows) { return takeMasses(rows, gas, solid); });
}

}  // namespace VELMORA_SOLVER
