#include "solver/SparseFactor.h"

#include <klu.h>

#include <new>

namespace VELMORA_SOLVER {

using index_t = JacobianPattern::index_t;

struct SparseFactor::Workspace {
  klu_common common{};
  klu_symbolic* symbolic = nullptr;
  klu_numeric* numeric = nullptr;

  Workspace() { klu_defaults(&common); }
  ~Workspace() {
    klu_free_numeric(&numeric, &common);
    klu_free_symbolic(&symbolic, &common);
  }
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
};

SparseFactor::SparseFactor(const JacobianPattern& pattern)
    : pattern_(pattern), workspace_(std::make_unique<Workspace>()) {
  constexpr int MINIMUM_DEGREE = 0;
  buildColumns();
  workspace_->common.ordering = MINIMUM_DEGREE;
  workspace_->common.btf = 0;  // all cells hang together
  workspace_->symbolic = klu_analyze(static_cast<int>(pattern_.nUnknowns()), columnStart_.data(), row_.data(),
                                     &workspace_->common);
  if (workspace_->symbolic == nullptr) throw std::bad_alloc();
}

SparseFactor::~SparseFactor() = default;

/// Compressed columns of the single unknowns. The pattern is symmetric: the rows of a column are the columns
/// of the row.
void SparseFactor::buildColumns() {
  const std::size_t n = pattern_.blockSize;
  columnStart_.push_back(0);
  for (std::size_t cell = 0; cell < pattern_.nCells; ++cell)
    for (std::size_t k = 0; k < n; ++k) {
      for (index_t p = pattern_.rowStart[cell]; p < pattern_.rowStart[cell + 1]; ++p)
        for (std::size_t i = 0; i < n; ++i) {
          row_.push_back(static_cast<int>(pattern_.column[p] * n + i));
          source_.push_back((pattern_.mirror[p] * n + i) * n + k);
        }
      columnStart_.push_back(static_cast<int>(row_.size()));
    }
  values_.resize(row_.size());
}

void SparseFactor::fillValues(const BlockJacobian& jacobian, double gamma) {
  const double* J = jacobian.block(0);
  for (std::size_t entry = 0; entry < values_.size(); ++entry) values_[entry] = -gamma * J[source_[entry]];
  for (std::size_t unknown = 0; unknown < pattern_.nUnknowns(); ++unknown)
    for (auto entry = static_cast<std::size_t>(columnStart_[unknown]);
         entry < static_cast<std::size_t>(columnStart_[unknown + 1]); ++entry)
      if (row_[entry] == static_cast<int>(unknown)) values_[entry] += 1.0;
}

bool SparseFactor::factorise(const BlockJacobian& jacobian, double gamma) {
  constexpr double WORST_RECIPROCAL_CONDITION = 1e-12;
  Workspace& w = *workspace_;
  fillValues(jacobian, gamma);
  if (w.numeric != nullptr) {
    // The row exchanges of the last matrix mostly suit this one, too.
    const bool done = klu_refactor(columnStart_.data(), row_.data(), values_.data(), w.symbolic, w.numeric,
                                   &w.common) != 0 &&
                      klu_rcond(w.symbolic, w.numeric, &w.common) != 0;
    if (done && w.common.rcond > WORST_RECIPROCAL_CONDITION) return true;
    klu_free_numeric(&w.numeric, &w.common);
  }
  w.numeric = klu_factor(columnStart_.data(), row_.data(), values_.data(), w.symbolic, &w.common);
  return w.numeric != nullptr && w.common.status == KLU_OK;
}

void SparseFactor::solve(double* b) {
  Workspace& w = *workspace_;
  klu_solve(w.symbolic, w.numeric, static_cast<int>(pattern_.nUnknowns()), 1, b, &w.common);
}

}  // namespace VELMORA_SOLVER
