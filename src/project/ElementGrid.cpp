#include "project/ElementGrid.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <numeric>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace VELMORA {

namespace {

constexpr double PI_VOLUME = 3.141592653589793;

struct Box {
  int left = INT_MAX;
  int top = INT_MAX;
  int right = INT_MIN;
  int bottom = INT_MIN;

  bool empty() const { return right < left; }
};

Box boxOfUsedCells(const IndexMatrix& indexMatrix) {
  Box box;
  indexMatrix.forEachUsedCell(0, 0, indexMatrix.columns() - 1, indexMatrix.rows() - 1,
                              [&](int i, int j, int) {
                                box.left = std::min(box.left, i);
                                box.right = std::max(box.right, i);
                                box.top = std::min(box.top, j);
                                box.bottom = std::max(box.bottom, j);
                              });
  return box;
}

void addElement(IndexMatrix& indexMatrix, int i, int j, std::vector<Element>& elements) {
  if (indexMatrix.at(i, j) < 0) return;
  Element element;
  element.i = i;
  element.j = j;
  element.number = static_cast<int>(elements.size());
  indexMatrix.set(i, j, element.number);
  elements.push_back(std::move(element));
}

double volume(const VelDisc& disc, const Element& element) {
  if (disc.geometry != VelDisc::G_RSYM) return element.dx * element.dy * element.dz;
  const double outer = element.x + element.dx / 2.0;
  const double inner = outer - element.dx;
  return (outer * outer - inner * inner) * PI_VOLUME * element.dy;
}

}  // namespace

void selectUsedCells(const VelAssignments& assignments, IndexMatrix& indexMatrix) {
  for (const VelSelection& selection : assignments.selections) {
    if (selection.kind != VelSelection::A_MATERIAL) continue;
    const int mark = selection.isVoid() ? -1 : 1;
    const VelSelection::Range& r = selection.range;
    for (int j = std::max(r.top, 0); j <= std::min(r.bottom, indexMatrix.rows() - 1); ++j) {
      for (int i = std::max(r.left, 0); i <= std::min(r.right, indexMatrix.columns() - 1); ++i) {
        indexMatrix.set(i, j, mark);
      }
    }
  }
}

Numbering numberElements(IndexMatrix& indexMatrix, std::vector<Element>& elements) {
  elements.clear();
  Numbering numbering;
  const Box box = boxOfUsedCells(indexMatrix);
  if (box.empty()) return numbering;
  const int columnSpan = box.right - box.left;
  const int rowSpan = box.bottom - box.top;
  numbering.rowWise = columnSpan < rowSpan;
  numbering.bandWidth = std::min(columnSpan, rowSpan) + 1;
  if (numbering.rowWise) {
    for (int j = box.top; j <= box.bottom; ++j) {
      for (int i = box.left; i <= box.right; ++i) addElement(indexMatrix, i, j, elements);
    }
  } else {
    for (int i = box.left; i <= box.right; ++i) {
      for (int j = box.top; j <= box.bottom; ++j) addElement(indexMatrix, i, j, elements);
    }
  }
  return numbering;
}

void setElementGeometry(const VelDisc& disc, const IndexMatrix& indexMatrix, std::vector<Element>& elements) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  double y = std::accumulate(disc.dy.data.begin(), disc.dy.data.end(), 0.0);
  for (int j = 0; j < indexMatrix.rows(); ++j) {
    const double dy = disc.dy.data[static_cast<std::size_t>(j)];
    double x = 0.0;
    y -= dy / 2.0;
    for (int i = 0; i < indexMatrix.columns(); ++i) {
      const int number = indexMatrix.at(i, j);
      if (number < 0) continue;
      const auto position = static_cast<std::size_t>(number);
      if (position >= elements.size()) throw TKL::Exception("Error in numbering algorithm!", FUNC_ID);
      Element& element = elements[position];
      element.i = i;
      element.j = j;
      element.dx = disc.dx.data[static_cast<std::size_t>(i)];
      element.dy = dy;
      element.dz = disc.thickness();
      if (!(element.dx > 0.0 && element.dy > 0.0)) {
        throw TKL::Exception(TKL::FormatString("Invalid dimensions for element %1,%2 !").arg(i).arg(j),
                             FUNC_ID);
      }
      x += element.dx / 2.0;
      element.x = x;
      element.y = y;
      x += element.dx / 2.0;
      element.volume = volume(disc, element);
    }
    y -= dy / 2.0;
  }
}

}  // namespace VELMORA
