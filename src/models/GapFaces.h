#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "project/VelFieldCond.h"
#include "project/VelSelection.h"

namespace VELMORA {

/// Fails with "Field condition '%1' is already used. ..." if `used`.
void failIfUsed(bool used, const VelFieldCond& fieldCond);

/// Sets or clears the flag `CONVECTION_X` of a condition in a construction of one row or one column, where
/// there is but one direction, and reports what it changes as an error.
void correctFlowDirection(VelFieldCond& fieldCond, const std::vector<Element>& elements);

/// Finds the gas of a gap and the faces at both of its ends in a rectangle. A "line" of cells runs across the
/// gap: a row with the flag `CONVECTION_X`, else a column.
class GapFaces {
 public:
  GapFaces(const VelFieldCond& fieldCond, const VelSelection::Range& selection,
           const IndexMatrix& indexMatrix, const std::vector<Element>& elements);

  /// Fills `pairs` and `inner`.
  /// @throws TKL::Exception for a rectangle that is not a gap of air with a face at each end
  void find();
  /// Clear width of the gap in the first line [m].
  double width() const;

  std::vector<std::pair<std::int32_t, std::int32_t>> pairs;
  std::vector<std::int32_t> inner;

 private:
  struct Cell {
    int i, j;
  };

  Cell cell(int position, int line) const;
  const Element& element(int position, int line) const;
  bool isAir(int position, int line) const;
  bool hasAir(int line) const;
  void checkCells() const;
  void growOverAir();
  void dropLinesWithoutAir();
  void takeLine(int line);
  [[noreturn]] void refuse(const char* text) const;
  [[noreturn]] void refuse(const char* text, int position, int line) const;

  const VelFieldCond& fieldCond_;
  const IndexMatrix& indexMatrix_;
  const std::vector<Element>& elements_;
  const bool alongX_;
  int begin_ = 0;  ///< positions in a line
  int end_ = 0;
  int firstLine_ = 0;
  int lastLine_ = 0;
};

}  // namespace VELMORA
