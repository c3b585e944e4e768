#pragma once

#include <vector>

#include "climate/VelClimateCond.h"
#include "foundation/Parameter.h"
#include "keywords/SectionText.h"
#include "project/VelBoundaryCond.h"
#include "project/VelContactCond.h"
#include "project/VelFieldCond.h"
#include "project/VelInitialCond.h"
#include "project/VelSolutionDefinition.h"
#include "project/VelWallData.h"

namespace VELMORA {

/// The conditions of a project: seven lists of named records, each in file order, and two default values.
class VelConditions {
 public:
  /// Indices of the keywords of "VelConditions::conditionList_t".
  enum conditionList_t {
    L_WALLS,
    L_CLIMATE_CONDITIONS,
    L_BOUNDARY_CONDITIONS,
    L_INITIAL_CONDITIONS,
    L_FIELD_CONDITIONS,
    L_CONTACT_CONDITIONS,
    L_SOLUTION_DEFINITIONS,
    L_DEFAULT_CONDITIONS,
    NUM_L
  };

  /// Indices of the keywords of "VelConditions::conditionType_t".
  enum conditionType_t {
    T_WALL_DATA,
    T_CLIMATE_COND,
    T_BOUND_COND,
    T_INIT_COND,
    T_FIELD_COND,
    T_CONTACT_COND,
    T_SOLUTION_DEFINITION,
    NUM_T
  };

  /// Indices of the keywords of "VelConditions::defaultInitialCond_t".
  enum defaultInitialCond_t { D_DEFAULT_TEMPERATURE, D_DEFAULT_RELHUM, NUM_D };

  VelConditions();

  std::vector<VelWallData> wallData;
  std::vector<VelClimateCond> climateConds;
  std::vector<VelBoundaryCond> boundaryConds;
  std::vector<VelInitialCond> initialConds;
  std::vector<VelFieldCond> fieldConds;
  std::vector<VelContactCond> contactConds;
  std::vector<VelSolutionDefinition> solutionDefinitions;
  TKL::Parameter defaultTemperature;  ///< [K] start value of elements without an initial condition
  TKL::Parameter defaultRelHum;       ///< [-] likewise

  /// Reads the section `CONDITIONS`; records are appended to the lists.
  /// @throws TKL::Exception "Expected keyword indicating a new condition list, got '%1'!" for a line before
  /// the first list, and what the records throw
  void read(const SectionText& text);

  /// Cuts the text of a list into its records. A record begins with the keyword of `type`, with or without
  /// brackets; the keyword itself and empty lines are left out.
  /// @throws TKL::Exception "Expected condition '%1' but got '%2'!" for a line before the first record
  static void explodeList(conditionType_t type, const SectionText& text, std::vector<SectionText>& blocks);

 private:
  void readDefaults(const SectionText& text);
};

}  // namespace VELMORA
