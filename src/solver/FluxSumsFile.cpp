#include "solver/FluxSumsFile.h"

namespace VELMORA_SOLVER {

namespace {

/// Calls `visit` for each array of flows that is integrated.
template <class Records, class Visit>
void forEachSum(Records& sums, const Visit& visit) {
  for (auto* records : {&sums.heatFlux, &sums.moistureFlux, &sums.vocFlux, &sums.additionalFlux})
    visit(*records);
}

bool takeRows(const TimedRowsFile::Rows& rows, const std::vector<int>& sides, FluxRecords& sums) {
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
  file_.begin(t);
  for (const int side : sides) {
    file_.beginRow(side);
    forEachSum(sums, [&](const RecordArray& records) {
      const double* record = records[static_cast<std::size_t>(side)];
      for (std::size_t slot = 0; slot < records.nSlots(); ++slot) file_.add(record[slot]);
    });
  }
  file_.write();
}

bool FluxSumsFile::read(double t, const std::vector<int>& sides, FluxRecords& sums) {
  return file_.read(t, [&](const TimedRowsFile::Rows& rows) { return takeRows(rows, sides, sums); });
}

}  // namespace VELMORA_SOLVER
