#include "system/SteadyReference.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace VELMORA_TEST {

namespace {

using std::numbers::pi;

std::vector<double> edges(const std::vector<double>& widths) {
  std::vector<double> result{0.0};
  for (const double width : widths) result.push_back(result.back() + width);
  return result;
}

/// The cells of the grid with their edges.
class Cells {
 public:
  explicit Cells(const ReferenceGrid& grid) : grid_(grid), x_(edges(grid.dx)), y_(edges(grid.dy)) {}

  double left(int i) const { return x_[static_cast<std::size_t>(i)]; }
  double top(int j) const { return y_[static_cast<std::size_t>(j)]; }
  double dx(int i) const { return grid_.dx[static_cast<std::size_t>(i)]; }
  double dy(int j) const { return grid_.dy[static_cast<std::size_t>(j)]; }
  double x(int i) const { return left(i) + dx(i) / 2; }
  double y(int j) const { return top(j) + dy(j) / 2; }

  double lambda(int i, int j) const {
    if (i < 0 || j < 0 || i >= grid_.columns() || j >= grid_.rows()) return 0;
    return grid_.lambda(x(i), y(j));
  }
  /// Area between this cell and one to the left of it [m2].
  double verticalArea(int i, int j) const { return grid_.cylindrical ? 2 * pi * left(i) * dy(j) : dy(j); }
  /// Area between this cell and one above or below it [m2].
  double horizontalArea(int i) const { return grid_.cylindrical ? 2 * pi * x(i) * dx(i) : dx(i); }

  /// Resistance of the half of a cell next to its left (+1: right) edge [K/W].
  double halfAcross(int i, int j, bool rightHalf) const {
    const double inner = rightHalf ? x(i) : left(i);
    const double outer = rightHalf ? left(i + 1) : x(i);
    if (grid_.cylindrical) return std::log(outer / inner) / (2 * pi * dy(j) * lambda(i, j));
    return (outer - inner) / (dy(j) * lambda(i, j));
  }
  double halfAlong(int i, int j) const { return dy(j) / 2 / (horizontalArea(i) * lambda(i, j)); }

 private:
  const ReferenceGrid& grid_;
  std::vector<double> x_;
  std::vector<double> y_;
};

/// Conductance with the conductivity averaged over the widths [W/K].
double meanLink(double lambdaA, double widthA, double lambdaB, double widthB, double area) {
  return (lambdaA * widthA + lambdaB * widthB) / (widthA + widthB) * area / ((widthA + widthB) / 2);
}

std::optional<std::size_t> airAt(const std::vector<ReferenceAir>& airs, double x, double y) {
  const auto found = std::find_if(airs.begin(), airs.end(), [&](const auto& air) { return air.at(x, y); });
  if (found == airs.end()) return std::nullopt;
  return static_cast<std::size_t>(found - airs.begin());
}

}  // namespace

SteadyReference::SteadyReference(const ReferenceGrid& grid, const std::vector<ReferenceAir>& airs,
                                 Links links)
    : columns_(grid.dx.size()),
      band_(grid.dx.size() * grid.dy.size() * (grid.dx.size() + 1)),
      T_(grid.dx.size() * grid.dy.size()),
      heat_(airs.size()) {
  const Cells cells(grid);
  const bool series = links == Links::SERIES;
  std::vector<Film> films;
  // The face at (x, y) between a used cell and a void.
  const auto addFilm = [&](int i, int j, double x, double y, double area, double halfCell) {
    const auto air = airAt(airs, x, y);
    if (!air || area <= 0) return;
    const double film = 1 / (airs[*air].coefficient * area);
    films.push_back({index(i, j), *air, 1 / (series ? film + halfCell : film)});
  };
  for (int j = 0; j <= grid.rows(); ++j) {
    for (int i = 0; i <= grid.columns(); ++i) {
      const double here = cells.lambda(i, j);
      const double before = cells.lambda(i - 1, j);
      const double above = cells.lambda(i, j - 1);
      if (here > 0 && before > 0) {
        const double area = cells.verticalArea(i, j);
        addLink(index(i, j), index(i - 1, j),
                series ? 1 / (cells.halfAcross(i - 1, j, true) + cells.halfAcross(i, j, false))
                       : meanLink(before, cells.dx(i - 1), here, cells.dx(i), area));
      } else if (here > 0) {
        addFilm(i, j, cells.left(i), cells.y(j), cells.verticalArea(i, j), cells.halfAcross(i, j, false));
      } else if (before > 0) {
        addFilm(i - 1, j, cells.left(i), cells.y(j), cells.verticalArea(i, j),
                cells.halfAcross(i - 1, j, true));
      }
      if (here > 0 && above > 0) {
        addLink(index(i, j), index(i, j - 1),
                series ? 1 / (cells.halfAlong(i, j - 1) + cells.halfAlong(i, j))
                       : meanLink(above, cells.dy(j - 1), here, cells.dy(j), cells.horizontalArea(i)));
      } else if (here > 0) {
        addFilm(i, j, cells.x(i), cells.top(j), cells.horizontalArea(i), cells.halfAlong(i, j));
      } else if (above > 0) {
        addFilm(i, j - 1, cells.x(i), cells.top(j), cells.horizontalArea(i), cells.halfAlong(i, j - 1));
      }
    }
  }
  for (const Film& film : films) {
    matrix(film.cell, film.cell) += film.conductance;
    T_[film.cell] += film.conductance * airs[film.air].temperature;
  }
  solve();
  for (const Film& film : films)
    heat_[film.air] += film.conductance * (airs[film.air].temperature - T_[film.cell]);
}

void SteadyReference::addLink(std::size_t a, std::size_t b, double conductance) {
  matrix(a, a) += conductance;
  matrix(b, b) += conductance;
  matrix(a, b) -= conductance;
}

/// Cholesky factors within the band; cells of a void have a zero row and keep the temperature 0.
void SteadyReference::solve() {
  const std::size_t n = T_.size();
  for (std::size_t c = 0; c < n; ++c) {
    if (matrix(c, c) <= 0) matrix(c, c) = 1;
    const double pivot = std::sqrt(matrix(c, c));
    const std::size_t end = std::min(n, c + columns_ + 1);
    for (std::size_t r = c; r < end; ++r) matrix(r, c) /= pivot;
    for (std::size_t k = c + 1; k < end; ++k) {
      if (const double factor = matrix(k, c); factor != 0)
        for (std::size_t r = k; r < end; ++r) matrix(r, k) -= matrix(r, c) * factor;
    }
  }
  for (std::size_t r = 0; r < n; ++r) {
    for (std::size_t c = r > columns_ ? r - columns_ : 0; c < r; ++c) T_[r] -= matrix(r, c) * T_[c];
    T_[r] /= matrix(r, r);
  }
  for (std::size_t r = n; r-- > 0;) {
    const std::size_t end = std::min(n, r + columns_ + 1);
    for (std::size_t c = r + 1; c < end; ++c) T_[r] -= matrix(c, r) * T_[c];
    T_[r] /= matrix(r, r);
  }
}

}  // namespace VELMORA_TEST
