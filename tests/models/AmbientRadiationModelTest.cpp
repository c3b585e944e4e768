#include "models/FieldModelAmbientRadiation.h"
#include "models/ModelBench.h"

namespace VELMORA {

namespace {

class AmbientRadiationModel : public ModelBench {
 protected:
  using Model = FieldModelAmbientRadiation;

  AmbientRadiationModel() { condition.name = "Roof"; }

  void emit(VelFieldCond::para_t side) { set(side, 0.9, "-"); }
  TKL::Thrown refusal(const VelSelection::Range& range) {
    return TKL::thrownBy([&] { model.prepare(condition, range, indexMatrix, elements); });
  }
  static TKL::Thrown refused(const std::string& text) {
    return {text, "[FieldModelAmbientRadiation::prepare]"};
  }
  const TKL::Thrown passes{"nothing thrown", ""};

  Model model;
};

constexpr auto TO_LEFT = VelFieldCond::P_LEFT_EMISS_COEFF;
constexpr auto TO_RIGHT = VelFieldCond::P_RIGHT_EMISS_COEFF;
constexpr auto TO_TOP = VelFieldCond::P_TOP_EMISS_COEFF;
constexpr auto TO_BOTTOM = VelFieldCond::P_BOTTOM_EMISS_COEFF;

}  // namespace

TEST_F(AmbientRadiationModel, singleCellBesideAir_passes) {
  draw({"aB"});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 1, 0}), passes);
  EXPECT_EQ(model.radiationDirection, Model::D_LEFT);
}

TEST_F(AmbientRadiationModel, lastCoefficientGiven_fixesTheDirection) {
  draw({"aBa"});
  emit(TO_LEFT);
  emit(TO_RIGHT);
  EXPECT_EQ(refusal({1, 0, 1, 0}), passes);
  EXPECT_EQ(model.radiationDirection, Model::D_RIGHT);
  draw({"a", "B", "B"});
  emit(TO_TOP);
  EXPECT_EQ(refusal({0, 1, 0, 2}), passes);
  EXPECT_EQ(model.radiationDirection, Model::D_TOP);
  draw({"B", "a", "B"});
  emit(TO_BOTTOM);
  EXPECT_EQ(refusal({0, 0, 0, 1}), passes);
  EXPECT_EQ(model.radiationDirection, Model::D_BOTTOM);
}

TEST_F(AmbientRadiationModel, clear_unsetsTheDirection) {
  draw({"aB"});
  emit(TO_LEFT);
  refusal({1, 0, 1, 0});
  model.clear();
  EXPECT_EQ(model.radiationDirection, 4);
}

TEST_F(AmbientRadiationModel, row_isTestedAtItsFirstCellOnly) {
  draw({"aBB"});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 2, 0}), passes);
}

TEST_F(AmbientRadiationModel, rectangleOfRowsAndColumns_isRefused) {
  draw({"aBB", "aBB"});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 2, 1}), refused("Assignment must consist in only one row or one column 'Roof'"));
}

TEST_F(AmbientRadiationModel, voidInTheRectangle_isRefused) {
  draw({"aB."});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 2, 0}),
            refused("Element without material found in assignment x=2, y=0 for 'Roof'"));
}

TEST_F(AmbientRadiationModel, elementWithoutMaterial_isRefused) {
  draw({"aB"});
  elements[1].material = nullptr;
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 1, 0}),
            refused("Element without material found in assignment x=1, y=0 for 'Roof'"));
}

TEST_F(AmbientRadiationModel, columnThatRadiatesSideways_isRefused) {
  draw({"aB", "aB"});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 1, 1}),
            refused("Emision coefficient for top or bottom must be set for row selection 'Roof'"));
}

TEST_F(AmbientRadiationModel, cellThatRadiatesUpwards_isRefused) {
  draw({"a", "B"});
  emit(TO_TOP);
  EXPECT_EQ(refusal({0, 1, 0, 1}),
            refused("Emision coefficient for left or right must be set for column selection 'Roof'"));
}

TEST_F(AmbientRadiationModel, rectangleWithoutCoefficient_isRefused) {
  draw({"aB"});
  EXPECT_EQ(refusal({1, 0, 1, 0}),
            refused("Emision coefficient for left or right must be set for column selection 'Roof'"));
}

TEST_F(AmbientRadiationModel, nothingBeforeTheSurface_isRefused) {
  draw({"BB", "BB"});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({0, 1, 0, 1}),
            refused("Element without material found in on left boundary of assignment y=1 for 'Roof'"));
  emit(TO_RIGHT);
  EXPECT_EQ(refusal({1, 1, 1, 1}),
            refused("Element without material found on right boundary of assignment y=1 for 'Roof'"));
  emit(TO_TOP);
  EXPECT_EQ(refusal({1, 0, 1, 1}),
            refused("Element without material found in on top boundary of assignment y=0 for 'Roof'"));
}

TEST_F(AmbientRadiationModel, nothingBelowTheSurface_isRefused) {
  draw({"BB", "BB"});
  emit(TO_BOTTOM);
  // a column is tested below its first cell, so only one that begins in the last row finds nothing there
  EXPECT_EQ(refusal({1, 0, 1, 1}),
            refused("Material of bottom boundary must be air for 'Roof' for element 1:1"));
  EXPECT_EQ(refusal({1, 1, 1, 2}),
            refused("Element without material found in assignment x=1, y=2 for 'Roof'"));
}

TEST_F(AmbientRadiationModel, solidBeforeTheSurface_isRefused) {
  draw({"BBB", "BBB"});
  emit(TO_LEFT);
  EXPECT_EQ(refusal({1, 0, 1, 0}),
            refused("Material of left boundary must be air for 'Roof' for element 0:0"));
  emit(TO_RIGHT);
  EXPECT_EQ(refusal({1, 1, 1, 1}),
            refused("Material of right boundary must be air for 'Roof' for element 2:1"));
  draw({"B", "B", "B"});
  emit(TO_TOP);
  EXPECT_EQ(refusal({0, 1, 0, 2}),
            refused("Material of top boundary must be air for 'Roof' for element 0:0"));
}

}  // namespace VELMORA
