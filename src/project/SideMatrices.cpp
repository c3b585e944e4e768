#include "project/SideMatrices.h"

#include <numeric>

#include "foundation/Exception.h"

namespace VELMORA {

namespace {

/// Shorter than the number that the volumes are calculated with; areas and results that hang on them have
/// always been calculated with this one.
constexpr double PI_AREA = 3.14159265359;

Element* elementAt(const IndexMatrix& indexMatrix, std::vector<Element>& elements, int i, int j) {
  const int number = indexMatrix.at(i, j);
  return number < 0 ? nullptr : &elements.at(static_cast<std::size_t>(number));
}

/// Weights and distance from the widths of the neighbours across the side [m].
void setDistances(Side& side, double Element::*width) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  if (side.elementLeft != nullptr && side.elementRight != nullptr) {
    const double left = side.elementLeft->*width;
    const double right = side.elementRight->*width;
    const double sum = left + right;
    if (sum == 0.0) {
      throw TKL::Exception("Invalid element dimensions would cause division by 0!", FUNC_ID);
    }
    side.weightLeft = left / sum;
    side.weightRight = right / sum;
    side.invDistance = 2.0 / sum;
  } else if (side.elementLeft != nullptr) {
    side.invDistance = 1.0 / (side.elementLeft->*width);
  } else if (side.elementRight != nullptr) {
    side.invDistance = 1.0 / (side.elementRight->*width);
  }
}

std::size_t product(int a, int b) {
  return static_cast<std::size_t>(a) * static_cast<std::size_t>(b);
}

}  // namespace

SideMatrices::SideMatrices(int columns, int rows)
    : horizontal(product(columns, rows + 1)),
      vertical(product(columns + 1, rows)),
      columns_(columns),
      rows_(rows) {}

Side* SideMatrices::horizontalAt(int i, int j) {
  if (i < 0 || i >= columns_ || j < 0 || j > rows_) return nullptr;
  return &horizontal[product(j, columns_) + static_cast<std::size_t>(i)];
}

Side* SideMatrices::verticalAt(int i, int j) {
  if (i < 0 || i > columns_ || j < 0 || j >= rows_) return nullptr;
  return &vertical[product(j, columns_ + 1) + static_cast<std::size_t>(i)];
}

void setHorizontalSides(const VelDisc& disc, const IndexMatrix& indexMatrix, std::vector<Element>& elements,
                        SideMatrices& sides) {
  const std::vector<double>& dx = disc.dx.data;
  const std::vector<double>& dy = disc.dy.data;
  double y = std::accumulate(dy.begin(), dy.end(), 0.0);
  for (int j = 0; j <= sides.rows(); ++j) {
    double x = 0.0;
    for (int i = 0; i < sides.columns(); ++i) {
      const double width = dx[static_cast<std::size_t>(i)];
      Side& side = *sides.horizontalAt(i, j);
      x += width / 2.0;
      side.horizontal = true;
      side.i = i;
      side.j = j;
      side.x = x;
      side.y = y;
      side.elementLeft = elementAt(indexMatrix, elements, i, j - 1);
      side.elementRight = elementAt(indexMatrix, elements, i, j);
      setDistances(side, &Element::dy);
      x += width / 2.0;
      const double inner = x - width;
      side.area =
          disc.geometry == VelDisc::G_RSYM ? (x * x - inner * inner) * PI_AREA : disc.thickness() * width;
    }
    if (j < sides.rows()) y -= dy[static_cast<std::size_t>(j)];
  }
}

void setVerticalSides(const VelDisc& disc, const IndexMatrix& indexMatrix, std::vector<Element>& elements,
                      SideMatrices& sides) {
  const std::vector<double>& dx = disc.dx.data;
  const std::vector<double>& dy = disc.dy.data;
  double y = std::accumulate(dy.begin(), dy.end(), 0.0);
  for (int j = 0; j < sides.rows(); ++j) {
    const double height = dy[static_cast<std::size_t>(j)];
    y -= height / 2.0;
    double x = 0.0;
    for (int i = 0; i <= sides.columns(); ++i) {
      Side& side = *sides.verticalAt(i, j);
      side.horizontal = false;
      side.i = i;
      side.j = j;
      side.x = x;
      side.y = y;
      side.elementLeft = elementAt(indexMatrix, elements, i - 1, j);
      side.elementRight = elementAt(indexMatrix, elements, i, j);
      setDistances(side, &Element::dx);
      side.area = disc.geometry == VelDisc::G_RSYM ? 2.0 * x * height * PI_AREA : disc.thickness() * height;
      if (i < sides.columns()) x += dx[static_cast<std::size_t>(i)];
    }
    y -= height / 2.0;
  }
}

}  // namespace VELMORA
