#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "project/VelProject.h"
#include "support/TempFolder.h"

namespace VELMORA_SOLVER {

/// A small heat conduction project as text files in a folder of its own. As it stands, two equal cells
/// between two heated surfaces: without inner flows they warm by 1 K in 1000 s from 20 C on.
class SolverProject {
 public:
  std::string balances = "BALANCE_EQUATIONS = ENERGY\n";
  std::string general = "DURATION = 1 h\n";
  std::string settings;  ///< lines of the integrator's settings
  std::string material = storage("RHO = 1000 kg/m3\nCE = 1000 J/kgK\n") + transport("LAMBDA = 1 W/mK\n");
  std::string climate = constantClimate("Heating", "HEATFLUXDENS", "100 W/m2");
  std::string boundary = heatConduction("Heated", "KIND = IMPFLUX\nHEATFLUXDENS = Heating\n");
  std::string field;  ///< field conditions
  std::string disc = "X_STEPS = 0.1 0.1 m\nY_STEPS = 1 m\n";
  std::string grids = grid("Grid", "0 d 10 min");
  std::string formats = fieldFormat("Temperature", "NONE");
  std::string files = outputFile("T.out", "Grid", "Temperature");
  std::string assignments = assign("MATERIAL", "0 0 1 0", "Block", "ELEMENT") +
                            assign("BOUNDARYCOND", "0 0 0 0", "Heated", "LEFT") +
                            assign("BOUNDARYCOND", "1 0 1 0", "Heated", "RIGHT") +
                            assign("FIELDOUTPUT", "0 0 1 0", "T.out", "ELEMENT");

  static std::string storage(const std::string& lines) { return "[STORAGE_BASE_PARAMETERS]\n" + lines; }
  static std::string transport(const std::string& lines) { return "[TRANSPORT_BASE_PARAMETERS]\n" + lines; }
  static std::string constantClimate(const std::string& name, const std::string& type,
                                     const std::string& value) {
    return "[CLIMATE_COND]\nNAME = " + name + "\nTYPE = " + type +
           "\nKIND = CONSTANT\nCONSTVALUE = " + value + "\n";
  }
  static std::string heatConduction(const std::string& name, const std::string& lines) {
    return "[BOUND_COND]\nNAME = " + name + "\nTYPE = HEATCOND\n" + lines;
  }
  static std::string grid(const std::string& name, const std::string& interval) {
    return "[OUTPUT_GRID]\nNAME = " + name + "\nINTERVAL = " + interval + "\n";
  }
  static std::string fieldFormat(const std::string& name, const std::string& timeType) {
    return "[OUTPUT_FORMAT]\nNAME = " + name +
           "\nTYPE = FIELD\nFIELD_TYPE = TEMPER\nSPACE_TYPE = SINGLE\nTIME_TYPE = " + timeType +
           "\nTIME_UNIT = s\nVALUE_UNIT = C\nPRECISION = 8\n";
  }
  static std::string fluxFormat(const std::string& name, const std::string& timeType, const char* unit) {
    return "[OUTPUT_FORMAT]\nNAME = " + name +
           "\nTYPE = FLUX\nFLUX_TYPE = HEATFLUX\nSPACE_TYPE = MEAN\nTIME_TYPE = " + timeType +
           "\nTIME_UNIT = s\nVALUE_UNIT = " + unit + "\nPRECISION = 8\n";
  }
  static std::string outputFile(const std::string& name, const std::string& grid, const std::string& format) {
    return "[OUTPUT_FILE]\nNAME = " + name + "\nOUTPUT_GRID = " + grid + "\nOUTPUT_FORMAT = " + format + "\n";
  }
  static std::string assign(const std::string& type, const std::string& range, const std::string& name,
                            const std::string& location) {
    return "[SELECTION]\nTYPE = " + type + "\nRANGE = " + range + "\nNAME = " + name +
           "\nLOCATION = " + location + "\n";
  }

  std::string text() const {
    return "[PROJECT_INFO]\nFILE_VERSION = 5.9\n\n[INIT]\n[GENERAL]\n" + balances + general +
           "[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\n" + settings +
           "\n[MATERIALS]\n[MATERIAL]\nNAME = Block\nFILENAME = Block_1.m6\n" + moreMaterials +
           "\n[CONDITIONS]\n[CLIMATE_CONDITIONS]\n" + climate + "[BOUNDARY_CONDITIONS]\n" + boundary +
           "[FIELD_CONDITIONS]\n" + field + "\n[DISCRETISATION]\nGEOMETRY = PLANE2D\n" + disc +
           "\n[OUTPUTS]\n[GRIDS]\n" + grids + "[FORMATS]\n" + formats + "[FILES]\n" + files +
           "\n[ASSIGNMENTS]\n" + assignments;
  }

  /// One more material with a conductivity of its own.
  void addMaterial(const std::string& name, const std::string& lambda) {
    moreMaterials += "[MATERIAL]\nNAME = " + name + "\nFILENAME = " + name + "_2.m6\n";
    writeMaterial(name + "_2.m6", name,
                  storage("RHO = 1000 kg/m3\nCE = 1000 J/kgK\n") + transport("LAMBDA = " + lambda + "\n"));
  }

  /// Writes the files and reads them into a project.
  void read(VELMORA::VelProject& project) const {
    writeMaterial("Block_1.m6", "Block", material);
    std::string errorText;
    ASSERT_EQ(project.read(TKL::Path(folder.write("wall.vel", text())), errorText), 0) << errorText;
  }

  std::string resultFile(const std::string& name) const { return "wall.results/" + name; }
  std::string result(const std::string& name) const { return folder.read(resultFile(name)); }

  /// The records of an output file as rows of numbers, the time first.
  std::vector<std::vector<double>> records(const std::string& name) const {
    std::istringstream stream(result(name));
    std::vector<std::vector<double>> rows;
    for (std::string line; std::getline(stream, line);) {
      if (line.empty()) rows.clear();  // the records follow the last empty line
      std::istringstream numbers(line);
      std::vector<double> row;
      for (double value = 0.0; numbers >> value;) row.push_back(value);
      if (!row.empty()) rows.push_back(row);
    }
    return rows;
  }

  std::vector<double> times(const std::string& name) const {
    std::vector<double> result;
    for (const auto& row : records(name)) result.push_back(row.front());
    return result;
  }

  TKL::TempFolder folder;

 private:
  void writeMaterial(const std::string& file, const std::string& name, const std::string& lines) const {
    folder.write(file, "V6MARLZ! 006.000\n\n[IDENTIFICATION]\nNAME = " + name + "\n" + lines);
  }

  std::string moreMaterials;
};

}  // namespace VELMORA_SOLVER
