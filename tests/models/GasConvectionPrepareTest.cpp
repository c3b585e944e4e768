#include "models/GasConvectionModel.h"
#include "models/ModelBench.h"

namespace VELMORA {

namespace {

class GasConvectionPrepare : public ModelBench {
 protected:
  GasConvectionPrepare() {
    condition.name = "Gap";
    set(VelFieldCond::P_GC_GASTYPE, 0.0, "-");
    set(VelFieldCond::P_GC_GASPROPORTION, 100.0, "%");
    set(VelFieldCond::P_GC_INCLINATION, 90.0, "Deg");
    along(true);
  }
  void along(bool x) { condition.flags.set(VelFieldCond::F_CONVECTION_X, x); }
  TKL::Thrown refusal(const VelSelection::Range& range) {
    return TKL::thrownBy([&] { model.prepare(condition, range, indexMatrix, elements); });
  }
  static TKL::Thrown refused(const std::string& text) { return {text, "[GasConvectionModel::prepare]"}; }
  GasConvectionModel::ElementPair pair(int i1, int j1, int i2, int j2) const {
    return {number(i1, j1), number(i2, j2)};
  }
  const TKL::Thrown passes{"nothing thrown", ""};

  GasConvectionModel model;
};

using Pairs = std::vector<GasConvectionModel::ElementPair>;
using Numbers = std::vector<std::int32_t>;

}  // namespace

TEST_F(GasConvectionPrepare, row_hasItsFacesAtTheEndsAndTheGasBetween) {
  draw({"BaaB", "BaaB"});
  EXPECT_EQ(refusal(all()), passes);
  EXPECT_EQ(model.elementPairs, (Pairs{pair(0, 0, 3, 0), pair(0, 1, 3, 1)}));
  EXPECT_EQ(model.gapElements, (Numbers{number(1, 0), number(2, 0), number(1, 1), number(2, 1)}));
  EXPECT_NEAR(model.gapWidth, 0.02 + 0.03, 1e-15);
}

TEST_F(GasConvectionPrepare, column_hasItsFacesAtTopAndBottom) {
  draw({"BB", "aa", "BB"});
  along(false);
  EXPECT_EQ(refusal(all()), passes);
  EXPECT_EQ(model.elementPairs, (Pairs{pair(0, 0, 0, 2), pair(1, 0, 1, 2)}));
  EXPECT_EQ(model.gapElements, (Numbers{number(0, 1), number(1, 1)}));
  EXPECT_NEAR(model.gapWidth, 0.2, 1e-15);
}

TEST_F(GasConvectionPrepare, gasAlone_takesTheCellsBesideItAsFaces) {
  draw({"BaaB", "BaaB"});
  EXPECT_EQ(refusal({1, 0, 2, 1}), passes);
  EXPECT_EQ(model.elementPairs, (Pairs{pair(0, 0, 3, 0), pair(0, 1, 3, 1)}));
}

TEST_F(GasConvectionPrepare, linesWithoutGas_areDroppedAtTheEnds) {
  draw({"BBB", "BaB", "BBB"});
  EXPECT_EQ(refusal(all()), passes);
  EXPECT_EQ(model.elementPairs, (Pairs{pair(0, 1, 2, 1)}));
}

TEST_F(GasConvectionPrepare, lineWithoutGasInTheMiddle_isRefused) {
  draw({"BaB", "BBB", "BaB"});
  EXPECT_EQ(refusal(all()), refused("Material of inner area must be air for 'Gap' for element 1:1"));
}

TEST_F(GasConvectionPrepare, secondAssignment_isRefused) {
  draw({"BaB", "BaB"});
  refusal(all());
  EXPECT_EQ(refusal(all()), refused("Field condition 'Gap' is already used. This field condition can only be "
                                    "assigned once. Please create a new field condition."));
}

TEST_F(GasConvectionPrepare, clearedModel_canBePreparedAgain) {
  draw({"BaB", "BaB"});
  refusal(all());
  model.clear();
  EXPECT_EQ(refusal(all()), passes);
}

TEST_F(GasConvectionPrepare, voidInTheRectangle_isRefused) {
  draw({"Ba.B", "BaaB"});
  EXPECT_EQ(refusal(all()), refused("Element without material found in assignment x=2, y=0 for 'Gap'"));
}

TEST_F(GasConvectionPrepare, gasAtTheEdgeOfTheGrid_isRefused) {
  draw({"BaB", "aaB"});
  EXPECT_EQ(refusal(all()), refused("Air as boundary is not valid for 'Gap' for element 0:1"));
  draw({"Baa", "BaB"});
  EXPECT_EQ(refusal(all()), refused("Air as boundary is not valid for 'Gap' for element 2:0"));
  along(false);
  draw({"Ba", "aa", "BB"});
  EXPECT_EQ(refusal(all()), refused("Air as boundary is not valid for 'Gap' for element 1:0"));
  draw({"BB", "aa", "Ba"});
  EXPECT_EQ(refusal(all()), refused("Air as boundary is not valid for 'Gap' for element 1:2"));
}

TEST_F(GasConvectionPrepare, rectangleWithoutGas_isRefused) {
  draw({"BBB", "BaB"});
  EXPECT_EQ(refusal({0, 0, 2, 0}), refused("No air in selected area for 'Gap'"));
}

TEST_F(GasConvectionPrepare, gasAtOneEndOfAPair_growsToThree) {
  draw({"BaB", "BaB"});
  EXPECT_EQ(refusal({0, 0, 1, 1}), passes);
  EXPECT_EQ(model.elementPairs.size(), 2u);
}

TEST_F(GasConvectionPrepare, wideGasWithAFarFace_isRefused) {
  draw({"BaaaB", "BaaaB"});
  EXPECT_EQ(refusal({2, 0, 4, 1}), refused("Material of left boundary area must not be air for 'Gap' for "
                                           "element 1:0"));
  EXPECT_EQ(refusal({0, 0, 2, 1}), refused("Material of right boundary area must not be air for 'Gap' for "
                                           "element 3:0"));
  along(false);
  draw({"BB", "aa", "aa", "aa", "BB"});
  EXPECT_EQ(refusal({0, 2, 1, 4}), refused("Material of top boundary area must not be air for 'Gap' for "
                                           "element 0:1"));
  EXPECT_EQ(refusal({0, 0, 1, 2}), refused("Material of bottom boundary area must not be air for 'Gap' for "
                                           "element 0:3"));
}

TEST_F(GasConvectionPrepare, solidInTheGas_isRefused) {
  draw({"BaaaB", "BaBaB"});
  EXPECT_EQ(refusal(all()), refused("Material of inner area must be air for 'Gap' for element 2:1"));
}

TEST_F(GasConvectionPrepare, directionX_isCorrectedInAConstructionOfOneColumn) {
  draw({"B", "a", "B"});
  EXPECT_EQ(refusal(all()), passes);
  EXPECT_FALSE(condition.flags[VelFieldCond::F_CONVECTION_X]);
  EXPECT_TRUE(
      capture.has("Gas convection flow is set to x-diection but construction is 1D and "
                  "y-direction!Flow direction will be corrected",
                  TKL::MSG_ERROR, "[GasConvectionModel::prepare]", -1));
  EXPECT_EQ(model.elementPairs, (Pairs{pair(0, 0, 0, 2)}));
}

TEST_F(GasConvectionPrepare, directionY_isCorrectedInAConstructionOfOneRow) {
  draw({"BaB"});
  along(false);
  EXPECT_EQ(refusal(all()), passes);
  EXPECT_TRUE(condition.flags[VelFieldCond::F_CONVECTION_X]);
  EXPECT_TRUE(
      capture.has("Gas convection flow is set to y-diection but construction is 1D and "
                  "x-direction!Flow direction will be corrected",
                  TKL::MSG_ERROR, "[GasConvectionModel::prepare]", -1));
}

TEST_F(GasConvectionPrepare, directionOfATwoDimensionalConstruction_stays) {
  draw({"BaB", "BaB"});
  refusal(all());
  EXPECT_TRUE(condition.flags[VelFieldCond::F_CONVECTION_X]);
  EXPECT_TRUE(capture.messages.empty());
}

}  // namespace VELMORA
