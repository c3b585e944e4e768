#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "foundation/Path.h"
#include "pollutant/PollutantLibrary.h"
#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

constexpr double VOC_M = 0.05;                    ///< [kg/mol] molar mass of the compound "Vapour"
constexpr double VOC_RV = 8.314472 / VOC_M;       ///< [J/kgK]
constexpr double VOC_POROSITY = 0.4;              ///< [m3/m3] of all materials here
constexpr double VOC_MEW = 10.0;                  ///< [-] resistance of all materials to water vapour
constexpr double BOARD_K = 50.0, BOARD_MU = 2.0;  ///< [-] partition coefficient and factor of "Board"
constexpr double SCREED_K = 8.0, SCREED_MU = 0.5;

/// Saturation density [kg/m3] and diffusion coefficient in air [m2/s] of the compound: straight lines.
inline double vocSaturation(double T) {
  return 1.0 + (T - 280.0) * 0.1;
}
inline double vocDiffusion(double T) {
  return 1e-5 * (1.0 + (T - 280.0) / 40.0);
}
/// Partition coefficient at T [K] from that at 23 C.
inline double vocPartition(double K, double T) {
  return K * vocSaturation(296.15) / vocSaturation(T);
}
/// Permeability [s] at T [K] and a moisture content.
inline double vocPermeability(double muFactor, double T, double Theta = 0.0) {
  return vocDiffusion(T) / (muFactor * VOC_MEW * VOC_RV * T) * (VOC_POROSITY - Theta) / VOC_POROSITY;
}

/// The database of these compounds and materials, as a file.
class PollutantFile {
 public:
  PollutantFile() : path_(folder_.file("voc.txt")) { std::ofstream(path_) << text(); }

  const std::string& path() const { return path_; }

  /// Reads it for a list of materials.
  void read(POLLUTANT_LIB::PollutantLibrary& library, const std::vector<std::string>& materials) const {
    std::string reason;
    ASSERT_TRUE(library.readDatabase(TKL::Path(path_), reason)) << reason;
    const std::vector<double> mu(materials.size(), VOC_MEW), porosity(materials.size(), VOC_POROSITY);
    ASSERT_TRUE(library.init({"Vapour"}, materials, mu, porosity, reason)) << reason;
  }

  static std::string text() {
    return "# for tests\nTABLE VOC_DATA\n" + compound("Vapour") + compound("Other") +
           "TABLE VOC_MATERIAL_DATA\n" + pair("Vapour", "Board", BOARD_MU, BOARD_K) +
           pair("Vapour", "Screed", SCREED_MU, SCREED_K) + pair("Vapour", "Cavity", 0.1, 1.0) +
           pair("Vapour", "Block", BOARD_MU, BOARD_K) + pair("Other", "Board", 1.0, 7.0);
  }
  static std::string compound(const std::string& id) {
    return "ENTITY " + id + "\nundefined\nundefined\n" + number(VOC_M) +
           "\n800\n280 320\n1 5\n280 320\n1e-5 2e-5\n";
  }
  static std::string pair(const std::string& voc, const std::string& material, double muFactor, double K) {
    return "ENTITY pair\n" + voc + "\n" + material + "\n" + number(muFactor) + "\n" + number(K) + "\n";
  }

 private:
  ProjectFolder folder_;
  std::string path_;
};

/// A construction with a pollutant, of "Board" unless a test says otherwise.
class PollutantProblem : public WallProblem {
 public:
  explicit PollutantProblem(std::vector<double> dx, std::vector<double> dy = {1.0},
                            const std::string& equations = "ENERGY POLLUTANT")
      : WallProblem(std::move(dx), std::move(dy)) {
    balances = equations;
    general = "VOC_DATABASE = " + database().path() + "\nVOC_IDS = Vapour\n";
    settings = "ABS_TOL_POLLUTANT = 1e-15\nABS_TOL_MOISTURE = 1e-9\n";
  }

  /// A dry material of this name in the database.
  static std::string dry(const std::string& name, const std::string& more = "") {
    return "RHO = 1000 kg/m3\nCE = 1000 J/kgK\nLAMBDA = 0.5 W/mK\nTHETA_POR = " + number(VOC_POROSITY) +
           " m3/m3\nMEW = " + number(VOC_MEW) + " -\n" + more + "[IDENTIFICATION]\nNAME = en:" + name + "\n";
  }
  /// A material of this name that holds moisture.
  static std::string porous(const std::string& name, const std::string& more = "") {
    PorousMaterial material;
    material.thetaEff = VOC_POROSITY;
    material.flags = "WATER_TIGHT";
    return more + material.text(name);
  }
  bool hasMoisture() const { return balances.find("MOISTURE") != std::string::npos; }
  void board(const Range& range, const std::string& more = "") { layer(range, "Board", more); }
  void layer(const Range& range, const std::string& name, const std::string& more = "") {
    materialText(range, name, hasMoisture() ? porous(name, more) : dry(name, more));
  }
  void mass(const Range& range, double density) { initial(range, "VOCMASS", number(density) + " kg/m3"); }

  const PollutantFile& database() const { return *file_; }

 private:
  std::shared_ptr<const PollutantFile> file_ = std::make_shared<PollutantFile>();
};

/// Pollutant in gas and solid of all elements [kg].
inline double pollutantMass(const WallRun& run) {
  double sum = 0.0;
  for (const VELMORA::Element& e : run.solver.data().elements) {
    const auto n = static_cast<std::size_t>(e.number);
    sum += (run.solver.state().mVOC1[n] + run.solver.state().mVOC2[n]) * e.volume;
  }
  return sum;
}

}  // namespace VELMORA_SOLVER
