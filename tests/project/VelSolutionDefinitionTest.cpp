#include "project/VelSolutionDefinition.h"

#include <gtest/gtest.h>

#include "ConditionTexts.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

VelSolutionDefinition readSolution(const std::string& text) {
  return readRecord<VelSolutionDefinition>(text);
}

}  // namespace

TEST(VelSolutionDefinition, everyKeyword_isRead) {
  const VelSolutionDefinition solution = readSolution(
      "NAME = sea water\nCONCENTRATION_TYPE = MOLALITY\nSPECIES_NAMES = Na+ Cl-\nSPECIES_CONCENTRATIONS = "
      "0.5 0.6\n"
      "PERCENTAGE = tide");
  EXPECT_EQ(solution.name, "sea water");
  EXPECT_EQ(solution.concentrationType, VelSolutionDefinition::CT_MOLALITY);
  EXPECT_EQ(solution.speciesNames, (std::vector<std::string>{"Na+", "Cl-"}));
  EXPECT_EQ(solution.speciesConcentrations, (std::vector<double>{0.5, 0.6}));
  EXPECT_EQ(solution.percentage, "tide");
}

TEST(VelSolutionDefinition, isEmptyByDefault) {
  const VelSolutionDefinition solution;
  EXPECT_EQ(solution.concentrationType, 2);
  EXPECT_TRUE(solution.speciesNames.empty());
  EXPECT_TRUE(solution.percentage.empty());
}

TEST(VelSolutionDefinition, massFraction_isTheFirstType) {
  EXPECT_EQ(readSolution("CONCENTRATION_TYPE = MASSFRAC").concentrationType, 0);
}

TEST(VelSolutionDefinition, speciesLists_areSplitAtWhiteSpace) {
  const VelSolutionDefinition solution =
      readSolution("SPECIES_NAMES = Na+ \t Cl-   SO4--\nSPECIES_CONCENTRATIONS = 1e-3\t2   3");
  EXPECT_EQ(solution.speciesNames, (std::vector<std::string>{"Na+", "Cl-", "SO4--"}));
  EXPECT_EQ(solution.speciesConcentrations, (std::vector<double>{1e-3, 2.0, 3.0}));
}

TEST(VelSolutionDefinition, repeatedList_replacesTheOneBefore) {
  const VelSolutionDefinition solution = readSolution(
      "SPECIES_NAMES = a b\nSPECIES_NAMES = c\nSPECIES_CONCENTRATIONS = 1 2\n"
      "SPECIES_CONCENTRATIONS = 3");
  EXPECT_EQ(solution.speciesNames, (std::vector<std::string>{"c"}));
  EXPECT_EQ(solution.speciesConcentrations, (std::vector<double>{3.0}));
}

TEST(VelSolutionDefinition, unknownConcentrationType_fails) {
  EXPECT_EQ(thrownByReading<VelSolutionDefinition>("CONCENTRATION_TYPE = MAGIC"),
            (Thrown{"Cannot determine enumeration value for enumeration type "
                    "'VelSolutionDefinition::concentration_t' and keyword 'MAGIC'.",
                    "[KeywordList::Enumeration]"}));
}
