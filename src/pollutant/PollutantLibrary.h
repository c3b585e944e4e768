#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/Path.h"
#include "pollutant/SimpleMatrix.h"
#include "pollutant/VocData.h"
#include "pollutant/VocMatData.h"

namespace POLLUTANT_LIB {

/// Data of the volatile organic compounds of a calculation and of its materials.
///
/// `readDatabase`, then `init` with the compounds and materials of the calculation; after that the library
/// is only read. Compounds and materials are then known by their positions in the two lists.
class PollutantLibrary {
 public:
  PollutantLibrary() = default;
  PollutantLibrary(const PollutantLibrary&) = delete;
  PollutantLibrary& operator=(const PollutantLibrary&) = delete;

  /// Reads a database in place of what was read before. Tables of unknown kinds are named on the standard
  /// output and left out.
  /// @return false, with the reason in `errmsg`; some data may have been read
  bool readDatabase(const TKL::Path& path, std::string& errmsg);

  /// Chooses compounds by their identifiers and looks up their data for each material.
  /// @param materialNames  English names
  /// @param mu             [---] resistance of the materials to vapour diffusion
  /// @param Opor           [m3/m3] their porosity
  /// @return false, with the reason in `errmsg`: nothing is chosen then
  bool init(const std::vector<std::string>& vocIds, const std::vector<std::string>& materialNames,
            const std::vector<double>& mu, const std::vector<double>& Opor, std::string& errmsg);

  /// Gas constant [J/kgK].
  /// @throws std::runtime_error for an index out of bounds, as all functions below
  double Rv(std::uint32_t voc) const;
  /// Saturation density [kg/m3] at T [K].
  double rhoSat(std::uint32_t voc, double T) const;
  /// Partition coefficient [---]: density in the solid over that in the pore gas, at 23 C.
  double partC(std::uint32_t voc, std::uint32_t material) const;
  /// Diffusion resistance of the material to the compound over that to water vapour [---].
  double muFactor(std::uint32_t voc, std::uint32_t material) const;
  /// Permeability [s] of the material for the compound at T [K] with the content Theta [m3/m3] of liquid.
  /// Not a logarithm, in spite of the name; negative where Theta exceeds the porosity.
  double logKVOC(std::uint32_t voc, std::uint32_t material, double T, double Theta) const;

  std::vector<VocData> vocData;        ///< all compounds of the database
  std::vector<VocMatData> vocMatData;  ///< all pairs of the database

  std::vector<std::string> materialNames;  ///< of the calculation
  std::vector<std::string> vocNames;       ///< of the calculation
  std::vector<double> mu;                  ///< [---] by material
  std::vector<double> Opor;                ///< [m3/m3] by material
  std::vector<const VocData*> vocs;        ///< by compound, into `vocData`
  simple_matrix<const VocMatData*> table;  ///< by material and compound, into `vocMatData`

 private:
  void clear();
  void clearChoice();
  bool chooseCompounds(std::string& errmsg);
  bool choosePairs(std::string& errmsg);
  bool checkPairs(std::string& errmsg) const;
  /// Requires a partition coefficient of at least 1 and a factor above 0.
  /// @throws TKL::Exception
  void checkParameters(std::uint32_t voc, std::uint32_t material) const;
  void checkIndices(std::uint32_t voc, std::uint32_t material, const char* function) const;
};

}  // namespace POLLUTANT_LIB
