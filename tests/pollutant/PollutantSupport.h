#pragma once

#include <string>

#include "pollutant/PollutantLibrary.h"
#include "support/TempFolder.h"

namespace POLLUTANT_LIB {

/// An entry of the compounds without faults.
inline std::string compoundEntry(const std::string& id) {
  return "ENTITY " + id + "\nname of " + id +
         "\nundefined\n0.1\n900\n"
         "280 300\n0.2 0.4\n"
         "280 300\n1e-5 1.2e-5\n";
}

/// An entry of the pairs without faults.
inline std::string pairEntry(const std::string& vocId, const std::string& material, double muFactor = 2.0,
                             double partCoeff = 50.0) {
  return "ENTITY\n" + vocId + "\n" + material + "\n" + std::to_string(muFactor) + "\n" +
         std::to_string(partCoeff) + "\n";
}

/// A library with the compounds A and B, and pairs of both with Board and Stone.
inline std::string twoByTwoDatabase() {
  return "TABLE VOC_DATA\n" + compoundEntry("A") + compoundEntry("B") + "TABLE VOC_MATERIAL_DATA\n" +
         pairEntry("A", "Board", 2.0, 50.0) + pairEntry("B", "Board", 3.0, 60.0) +
         pairEntry("A", "Stone", 4.0, 70.0) + pairEntry("B", "Stone", 5.0, 80.0);
}

/// What reading a text as a database says; empty on success.
inline std::string readText(PollutantLibrary& library, const std::string& text) {
  const TKL::TempFolder folder;
  std::string errmsg;
  const bool read = library.readDatabase(TKL::Path(folder.write("test.voc", text)), errmsg);
  EXPECT_EQ(read, errmsg.empty());
  return errmsg;
}

}  // namespace POLLUTANT_LIB
