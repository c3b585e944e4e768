#pragma once

#include <bitset>
#include <cstdint>
#include <string>

#include "foundation/Parameter.h"
#include "foundation/Path.h"
#include "keywords/SectionText.h"
#include "project/VelSaltSettings.h"
#include "project/VelSolverSettings.h"

namespace VELMORA {

/// The section `INIT`: what is calculated, for how long and how accurately.
class VelInit {
 public:
  /// Indices of the keywords of "VelInit::sections_t".
  enum sections_t { S_GENERAL, S_SOLVER_SETTINGS, S_SALT_SETTINGS, NUM_S };
  /// Indices of the keywords of "VelInit::balance_equations_t", the bits of `balanceEquations`.
  enum balance_equations_t { B_ENERGY, B_MOISTURE, B_ICE, B_AIR, B_SALT, B_POLLUTANT, NUM_B };

  std::bitset<NUM_B> balanceEquations;
  bool useKirchhoff;                           ///< liquid water moves by the Kirchhoff potential
  bool useGravity;                             ///< weight of liquid water
  bool useBuoyancy;                            ///< weight of air
  bool useHydrostatic;                         ///< hydrostatic pressure profile at the boundaries
  TKL::Parameter pressureUpdateInterval;       ///< [s]
  TKL::Parameter externalModelUpdateInterval;  ///< [s]
  TKL::Parameter duration;                     ///< [s] simulated time
  std::uint32_t startYear;
  std::uint32_t startTime;        ///< [s] from the beginning of the year
  TKL::Parameter isothermalTRef;  ///< [K] temperature where no energy balance is solved
  VelSaltSettings saltSettings;
  VelSolverSettings solverSettings;
  TKL::Path vocDatabase;
  std::string vocIds;  ///< identifiers as written

  VelInit() { clear(); }

  /// Sets every field to its default.
  void clear();

  /// Cuts the section into its subsections and reads each of them: general, salt, solver settings.
  /// @throws TKL::Exception "Expected subsection header, got: '%1'!" for a line before the first header,
  /// and what the readers of the subsections throw
  void read(const SectionText& text);

  /// Reads the subsection `GENERAL`.
  /// @throws TKL::Exception for a line that is no keyword line or a value that cannot be read
  void readGeneralParameters(const SectionText& text);

 private:
  bool readSwitch(const KeywordLine& line);
  bool readValue(const KeywordLine& line, const char* functionId);
  void readDeprecated(const KeywordLine& line);
  void readBalanceEquations(const std::string& value);
};

}  // namespace VELMORA
