#pragma once

#include <string>
#include <vector>

#include "support/TempFolder.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

/// Four cells of half a metre in a row: brick of 30 C, still air of 25 C, brick of 20 C and of 10 C, sealed
/// but for what a test adds. It runs for three seconds, in which the cells hardly change.
class ConditionProject {
 public:
  static constexpr double CELL = 0.5;                                     ///< [m] width; 1 m2 of face
  static constexpr double SECONDS = 3.0;                                  ///< [s] simulated
  static constexpr double RHO_C = 1.8e6;                                  ///< [J/m3K] of the brick
  static constexpr double WARM = 303.15, MEDIUM = 293.15, COLD = 283.15;  ///< [K]

  std::string balances = "ENERGY";
  std::string general;                            ///< more lines of the general settings
  std::string moisture = "RELHUM\nVALUE = 80 %";  ///< type and value at the start
  std::string damp;                               ///< the same of the first cell, if another one

  void climate(const std::string& type, const std::string& value);  ///< named by its type
  void wall(double inclination);                                    ///< "Wall", to the west [Deg]
  /// "Surface", at a side of the cell of 20 C; what lies to its left is cut away.
  void boundary(const std::string& type, const std::string& kind, const std::string& lines,
                const std::string& location = "LEFT");
  void source(const std::string& name, const std::string& type, const std::string& lines, int first,
              int last);
  /// An output of single values of all cells, or of a side of the cell of 20 C, named by its quantity.
  void fieldOutput(const std::string& quantity, const std::string& unit);
  void fluxOutput(const std::string& quantity, const std::string& unit, const std::string& location = "LEFT");

  std::string text() const;
  ProcessResult run() const;
  /// Values of the last record of an output, after a run.
  std::vector<double> values(const std::string& quantity) const;

 private:
  TKL::TempFolder folder_;
  std::string climates_, walls_, boundaries_, sources_, formats_, files_, assignments_;
};

}  // namespace VELMORA_TEST
