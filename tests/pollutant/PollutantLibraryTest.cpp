#include <gtest/gtest.h>

#include <stdexcept>

#include "pollutant/PollutantSupport.h"
#include "support/AllocationCounter.h"

namespace POLLUTANT_LIB {

namespace {

/// A chosen library: compounds B and A, materials Stone and Board.
class ChosenLibrary : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string errmsg;
    ASSERT_EQ(readText(library, twoByTwoDatabase()), "");
    ASSERT_TRUE(library.init({"B", "A"}, {"Stone", "Board"}, {20.0, 10.0}, {0.25, 0.5}, errmsg)) << errmsg;
  }

  PollutantLibrary library;
};

/// What choosing one compound of a database for materials of equal values says; empty on success.
std::string choiceOf(const std::string& database, const std::vector<std::string>& vocIds,
                     const std::vector<std::string>& materials) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, database), "");
  const std::vector<double> values(materials.size(), 0.5);
  std::string errmsg;
  const bool succeeded = library.init(vocIds, materials, values, values, errmsg);
  EXPECT_EQ(succeeded, errmsg.empty());
  return errmsg;
}

/// The one pair with the given numbers.
std::string onePair(double muFactor, double partCoeff) {
  return "TABLE VOC_DATA\n" + compoundEntry("A") + "TABLE VOC_MATERIAL_DATA\n" +
         pairEntry("A", "Board", muFactor, partCoeff);
}

/// The text of a runtime error; empty for any other outcome.
template <typename Call>
std::string runtimeErrorOf(Call call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  } catch (...) {
  }
  return "";
}

}  // namespace

TEST_F(ChosenLibrary, keepsTheOrderOfTheLists) {
  EXPECT_EQ(library.vocNames, (std::vector<std::string>{"B", "A"}));
  EXPECT_EQ(library.materialNames, (std::vector<std::string>{"Stone", "Board"}));
  EXPECT_EQ(library.mu, (std::vector<double>{20.0, 10.0}));
  EXPECT_EQ(library.Opor, (std::vector<double>{0.25, 0.5}));
  ASSERT_EQ(library.vocs.size(), 2U);
  EXPECT_EQ(library.vocs[0], &library.vocData[1]);
  EXPECT_EQ(library.vocs[1], &library.vocData[0]);
}

TEST_F(ChosenLibrary, tableHasRowsByMaterialAndColumnsByCompound) {
  ASSERT_EQ(library.table.rows(), 2U);
  ASSERT_EQ(library.table.cols(), 2U);
  EXPECT_EQ(library.table(0, 0), &library.vocMatData[3]);
  EXPECT_EQ(library.table(0, 1), &library.vocMatData[2]);
  EXPECT_EQ(library.table(1, 0), &library.vocMatData[1]);
  EXPECT_EQ(library.table(1, 1), &library.vocMatData[0]);
}

TEST_F(ChosenLibrary, gasConstant_isTheUniversalOneOverTheMolarMass) {
  EXPECT_DOUBLE_EQ(library.Rv(0), 83.14472);
}

TEST_F(ChosenLibrary, saturationDensity_followsTheTemperature) {
  EXPECT_DOUBLE_EQ(library.rhoSat(0, 290.0), 0.3);
  EXPECT_DOUBLE_EQ(library.rhoSat(1, 300.0), 0.4);
}

TEST_F(ChosenLibrary, pairs_giveTheirNumbers) {
  EXPECT_EQ(library.partC(0, 0), 80.0);
  EXPECT_EQ(library.partC(1, 0), 70.0);
  EXPECT_EQ(library.muFactor(0, 1), 3.0);
  EXPECT_EQ(library.muFactor(1, 1), 2.0);
}

TEST_F(ChosenLibrary, permeability_isThatOfTheFreePores) {
  // D / (factor mu Rv T), with D = 1.1e-5 m2/s at 290 K, times the share 0.2 / 0.25 of free pores
  const double expected = 1.1e-5 / (5.0 * 20.0 * 83.14472 * 290.0) * 0.8;
  EXPECT_NEAR(library.logKVOC(0, 0, 290.0, 0.05), expected, 1e-14 * expected);
}

TEST_F(ChosenLibrary, permeabilityOfFullPores_isZero) {
  EXPECT_EQ(library.logKVOC(0, 0, 290.0, 0.25), 0.0);
}

TEST_F(ChosenLibrary, permeabilityBeyondThePores_isNegative) {
  EXPECT_LT(library.logKVOC(0, 0, 290.0, 0.3), 0.0);
}

TEST_F(ChosenLibrary, values_takeNoMemory) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP() << "this build does not count";
  const std::size_t before = allocationCount();
  double sum = 0.0;
  for (std::uint32_t v = 0; v < 2; ++v)
    for (std::uint32_t m = 0; m < 2; ++m)
      sum += library.Rv(v) + library.rhoSat(v, 285.0) + library.partC(v, m) + library.muFactor(v, m) +
             library.logKVOC(v, m, 285.0, 0.1);
  EXPECT_EQ(allocationCount(), before);
  EXPECT_GT(sum, 0.0);
}

TEST_F(ChosenLibrary, compoundOutOfBounds_isARuntimeErrorOfEachFunction) {
  EXPECT_EQ(runtimeErrorOf([&] { library.Rv(2); }), "[PollutantLibrary::Rv]  Index out of bounds");
  EXPECT_EQ(runtimeErrorOf([&] { library.rhoSat(2, 290.0); }),
            "[PollutantLibrary::rhoSat]  Index out of bounds");
  EXPECT_EQ(runtimeErrorOf([&] { library.partC(2, 0); }),
            "[PollutantLibrary::partC]  VOC index out of bounds");
  EXPECT_EQ(runtimeErrorOf([&] { library.muFactor(2, 0); }),
            "[PollutantLibrary::muFactor]  VOC index out of bounds");
  EXPECT_EQ(runtimeErrorOf([&] { library.logKVOC(2, 0, 290.0, 0.0); }),
            "[PollutantLibrary::logKVOC]  VOC index out of bounds");
}

TEST_F(ChosenLibrary, materialOutOfBounds_isARuntimeErrorOfEachFunction) {
  EXPECT_EQ(runtimeErrorOf([&] { library.partC(0, 2); }),
            "[PollutantLibrary::partC]  Material index out of bounds");
  EXPECT_EQ(runtimeErrorOf([&] { library.muFactor(0, 2); }),
            "[PollutantLibrary::muFactor]  Material index out of bounds");
  EXPECT_EQ(runtimeErrorOf([&] { library.logKVOC(0, 2, 290.0, 0.0); }),
            "[PollutantLibrary::logKVOC]  Material index out of bounds");
}

TEST_F(ChosenLibrary, compound_isCheckedBeforeTheMaterial) {
  EXPECT_EQ(runtimeErrorOf([&] { library.partC(2, 2); }),
            "[PollutantLibrary::partC]  VOC index out of bounds");
}

TEST_F(ChosenLibrary, permeabilityWithoutPorosities_isARuntimeError) {
  library.Opor.clear();
  library.mu.clear();
  EXPECT_EQ(runtimeErrorOf([&] { library.logKVOC(0, 0, 290.0, 0.0); }),
            "[PollutantLibrary::logKVOC]  Opor-vector not initialized");
}

TEST_F(ChosenLibrary, permeabilityWithoutResistances_isARuntimeError) {
  library.mu.clear();
  EXPECT_EQ(runtimeErrorOf([&] { library.logKVOC(0, 0, 290.0, 0.0); }),
            "[PollutantLibrary::logKVOC]  mu-vector not initialized");
}

TEST_F(ChosenLibrary, failedChoice_leavesNothingChosen) {
  std::string errmsg;
  EXPECT_FALSE(library.init({"A"}, {"Board", "Glass"}, {1.0, 1.0}, {0.5, 0.5}, errmsg));
  EXPECT_EQ(runtimeErrorOf([&] { library.Rv(0); }), "[PollutantLibrary::Rv]  Index out of bounds");
}

TEST(PollutantLibrary, beforeAnyChoice_allIndicesAreOutOfBounds) {
  const PollutantLibrary library;
  EXPECT_EQ(runtimeErrorOf([&] { library.Rv(0); }), "[PollutantLibrary::Rv]  Index out of bounds");
}

TEST(PollutantLibrary, listsOfDifferentLengths_areRefused) {
  const std::string text =
      "[PollutantLibrary::init]  Invalid input, different sizes of material related vectors!";
  PollutantLibrary library;
  ASSERT_EQ(readText(library, twoByTwoDatabase()), "");
  std::string errmsg;
  EXPECT_FALSE(library.init({"A"}, {"Board"}, {1.0, 1.0}, {0.5}, errmsg));
  EXPECT_EQ(errmsg, text);
  EXPECT_FALSE(library.init({"A"}, {"Board"}, {1.0}, {}, errmsg = ""));
  EXPECT_EQ(errmsg, text);
  EXPECT_FALSE(library.init({}, {}, {1.0}, {}, errmsg = ""));
  EXPECT_EQ(errmsg, text);
}

TEST(PollutantLibrary, emptyLists_areRefused) {
  const std::string text = "[PollutantLibrary::init]  Invalid input (vector is empty)!";
  EXPECT_EQ(choiceOf(twoByTwoDatabase(), {}, {"Board"}), text);
  EXPECT_EQ(choiceOf(twoByTwoDatabase(), {"A"}, {}), text);
}

TEST(PollutantLibrary, unknownCompound_isRefused) {
  EXPECT_EQ(choiceOf(twoByTwoDatabase(), {"A", "C"}, {"Board"}),
            "[PollutantLibrary::init]  VOCData 'C' not in database!");
}

TEST(PollutantLibrary, compound_isSoughtWithItsCase) {
  EXPECT_EQ(choiceOf(twoByTwoDatabase(), {"a"}, {"Board"}),
            "[PollutantLibrary::init]  VOCData 'a' not in database!");
}

TEST(PollutantLibrary, unknownMaterial_isRefused) {
  EXPECT_EQ(choiceOf(twoByTwoDatabase(), {"A"}, {"Board", "Glass"}),
            "[PollutantLibrary::init]  Material 'Glass' unknown/not referenced in database!");
}

TEST(PollutantLibrary, missingPair_isRefused) {
  EXPECT_EQ(choiceOf(twoByTwoDatabase() + pairEntry("A", "Glass"), {"A", "B"}, {"Board", "Glass"}),
            "[PollutantLibrary::init]  Data missing in DB for combination of VOC 'B' and material 'Glass'!");
}

TEST(PollutantLibrary, databaseWithoutPairs_failsOnTheFirst) {
  EXPECT_EQ(choiceOf("TABLE VOC_DATA\n" + compoundEntry("A"), {"A"}, {"Board"}),
            "[PollutantLibrary::init]  Material 'Board' unknown/not referenced in database!");
}

TEST(PollutantLibrary, missingPairOfAnEarlierMaterial_comesFirst) {
  EXPECT_EQ(choiceOf(twoByTwoDatabase() + pairEntry("A", "Glass"), {"A", "B"}, {"Glass", "Sand"}),
            "[PollutantLibrary::init]  Data missing in DB for combination of VOC 'B' and material 'Glass'!");
}

TEST(PollutantLibrary, ofRepeatedPairs_theFirstCounts) {
  PollutantLibrary library;
  ASSERT_EQ(readText(library, onePair(2.0, 50.0) + pairEntry("A", "Board", 3.0, 60.0)), "");
  std::string errmsg;
  ASSERT_TRUE(library.init({"A"}, {"Board"}, {1.0}, {0.5}, errmsg)) << errmsg;
  EXPECT_EQ(library.partC(0, 0), 50.0);
}

TEST(PollutantLibrary, materialThatIsUsedTwice_hasItsDataTwice) {
  EXPECT_EQ(choiceOf(twoByTwoDatabase(), {"A", "A"}, {"Board", "Board"}), "");
}

TEST(PollutantLibrary, partitionCoefficientOfOne_passes) {
  EXPECT_EQ(choiceOf(onePair(1.0, 1.0), {"A"}, {"Board"}), "");
}

TEST(PollutantLibrary, partitionCoefficientBelowOne_isRefused) {
  EXPECT_EQ(choiceOf(onePair(1.0, 0.999), {"A"}, {"Board"}),
            "[PollutantLibrary::checkParameters]  Parameter 'partCoeff' out of range (must be >= 1 ---). "
            "(VOC 'A', material 'Board')");
}

TEST(PollutantLibrary, factorOfZero_isRefused) {
  EXPECT_EQ(choiceOf(onePair(0.0, 1.0), {"A"}, {"Board"}),
            "[PollutantLibrary::checkParameters]  Parameter 'muFactor' out of range (must be > 0 ---). "
            "(VOC 'A', material 'Board')");
}

TEST(PollutantLibrary, smallFactor_passes) {
  EXPECT_EQ(choiceOf(onePair(0.001, 1.0), {"A"}, {"Board"}), "");
}

TEST(PollutantLibrary, badPairThatIsNotChosen_doesNotMatter) {
  EXPECT_EQ(choiceOf(onePair(1.0, 1.0) + pairEntry("A", "Glass", 0.0, 0.0), {"A"}, {"Board"}), "");
}

TEST(PollutantLibrary, curveThatIsNoFunction_isRefused) {
  PollutantLibrary library;
  ASSERT_EQ(readText(library, onePair(1.0, 1.0)), "");
  library.vocData[0].Dair.x = {300.0, 280.0};
  std::string errmsg;
  EXPECT_FALSE(library.init({"A"}, {"Board"}, {1.0}, {0.5}, errmsg));
  EXPECT_EQ(
      errmsg,
      "[PollutantLibrary::init]  X values are not strictly monotonic increasing (at position/index 0).");
}

TEST(SimpleMatrix, isStoredByRows) {
  simple_matrix<int> matrix(2, 3);
  for (std::size_t row = 0; row < 2; ++row)
    for (std::size_t col = 0; col < 3; ++col) matrix(row, col) = static_cast<int>(10 * row + col);
  const simple_matrix<int>& constant = matrix;
  EXPECT_EQ(&constant(0, 0) + 3, &constant(1, 0));
  EXPECT_EQ(constant(1, 2), 12);
  EXPECT_EQ(constant.size(), 6U);
}

TEST(SimpleMatrix, resizing_setsAllToTheDefault) {
  simple_matrix<int> matrix(1, 1);
  matrix(0, 0) = 7;
  matrix.resize(2, 1);
  EXPECT_EQ(matrix(0, 0), 0);
  EXPECT_EQ(matrix.rows(), 2U);
  matrix.clear();
  EXPECT_TRUE(matrix.empty());
  EXPECT_EQ(matrix.cols(), 0U);
}

}  // namespace POLLUTANT_LIB
