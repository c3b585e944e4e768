#pragma once

#include <functional>
#include <vector>

namespace VELMORA_TEST {

/// Rectangular grid of cells; row 0 is the top row, `y` is counted downwards here.
struct ReferenceGrid {
  std::vector<double> dx;                              ///< column widths [m]
  std::vector<double> dy;                              ///< row heights [m]
  bool cylindrical = false;                            ///< about x = 0, full circle; else 1 m thick
  std::function<double(double x, double y)> lambda{};  ///< conductivity at a place [W/mK], 0 in a void

  int columns() const { return static_cast<int>(dx.size()); }
  int rows() const { return static_cast<int>(dy.size()); }
};

/// Air at a surface, for the faces between a cell and a void or the edge of the grid.
struct ReferenceAir {
  double coefficient = 0;                        ///< [W/m2K], 0: the face is adiabatic
  double temperature = 0;                        ///< [C]
  std::function<bool(double x, double y)> at{};  ///< whether the face with this centre is in this air
};

/// How the resistance between two cell centres, or a cell centre and the air, is made up.
enum class Links {
  SERIES,     ///< both half cells (logarithmic in the radius) or half cell and film in series
  CELL_MEAN,  ///< mean conductivity weighted by the widths; the film acts on the cell centre
};

/// Steady temperatures of a grid, solved directly.
class SteadyReference {
 public:
  SteadyReference(const ReferenceGrid& grid, const std::vector<ReferenceAir>& airs, Links links);

  /// Temperature of a cell [C].
  double temperature(int column, int row) const { return T_[index(column, row)]; }
  /// Heat flow from this air into the construction [W], for each metre of thickness in a plane.
  double heatFrom(std::size_t air) const { return heat_[air]; }

 private:
  struct Film {
    std::size_t cell, air;
    double conductance;
  };

  std::size_t index(int column, int row) const {
    return static_cast<std::size_t>(row) * columns_ + static_cast<std::size_t>(column);
  }
  double& matrix(std::size_t row, std::size_t column) { return band_[row * (columns_ + 1) + row - column]; }
  void addLink(std::size_t a, std::size_t b, double conductance);
  void solve();

  std::size_t columns_;
  std::vector<double> band_;  ///< lower half of the conductance matrix, diagonal first [W/K]
  std::vector<double> T_;     ///< right-hand side [W], then temperatures [C]
  std::vector<double> heat_;
};

}  // namespace VELMORA_TEST
