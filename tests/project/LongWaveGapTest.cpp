#include "project/LongWaveGap.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "project/ElementGrid.h"
#include "project/GridBuilder.h"

using namespace VELMORA;

namespace {

/// A grid drawn with one letter for each cell: "B" brick, "a" air, "." void.
class Picture {
 public:
  explicit Picture(const std::vector<std::string>& rows)
      : brick(makeMaterial("Brick")),
        air(makeMaterial("Air", true)),
        indexMatrix(static_cast<int>(rows[0].size()), static_cast<int>(rows.size())) {
    for (int j = 0; j < indexMatrix.rows(); ++j) {
      for (int i = 0; i < indexMatrix.columns(); ++i) {
        indexMatrix.set(i, j, rows[static_cast<std::size_t>(j)][static_cast<std::size_t>(i)] == '.' ? -1 : 1);
      }
    }
    numberElements(indexMatrix, elements);
    for (Element& element : elements) {
      const char letter = rows[static_cast<std::size_t>(element.j)][static_cast<std::size_t>(element.i)];
      element.material = letter == 'a' ? &air.material : &brick.material;
    }
  }

  Element& at(int i, int j) { return elements[static_cast<std::size_t>(indexMatrix.at(i, j))]; }

  /// Prepares a condition with these flags for the whole picture, or for a part of it.
  std::string prepare(std::vector<VelFieldCond::flag_t> flags) {
    return prepare(std::move(flags), {0, 0, indexMatrix.columns() - 1, indexMatrix.rows() - 1});
  }

  std::string prepare(std::vector<VelFieldCond::flag_t> flags, VelSelection::Range range) {
    condition.flags.reset();
    for (const VelFieldCond::flag_t flag : flags) condition.flags.set(static_cast<std::size_t>(flag));
    try {
      prepareLongWaveGap(condition, makeSelection(VelSelection::A_FIELDCOND, "lw", range), indexMatrix,
                         elements);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }

  MaterialDescription brick;
  MaterialDescription air;
  IndexMatrix indexMatrix;
  std::vector<Element> elements;
  VelFieldCond condition;
};

constexpr VelFieldCond::flag_t X = VelFieldCond::F_LW_RADIATION_X;
constexpr VelFieldCond::flag_t Y = VelFieldCond::F_LW_RADIATION_Y;
const std::string INVALID = "Invalid field condition assignment of type LW_RADIATION";

}  // namespace

TEST(LongWaveGap, facesOfARow_areLinked) {
  Picture picture({"BaaB"});
  EXPECT_EQ(picture.prepare({X}), "");
  EXPECT_EQ(picture.at(0, 0).lwPartnerRight, picture.at(3, 0).number);
  EXPECT_EQ(picture.at(3, 0).lwPartnerLeft, picture.at(0, 0).number);
  EXPECT_EQ(picture.at(0, 0).lwPartnerLeft, -1);
  EXPECT_EQ(picture.at(1, 0).lwPartnerRight, -1);
}

TEST(LongWaveGap, facesOfARow_getTheCondition) {
  Picture picture({"BaaB"});
  picture.prepare({X});
  EXPECT_EQ(picture.at(0, 0).fieldConds, std::vector<VelFieldCond*>{&picture.condition});
  EXPECT_EQ(picture.at(3, 0).fieldConds, std::vector<VelFieldCond*>{&picture.condition});
  EXPECT_TRUE(picture.at(1, 0).fieldConds.empty());
}

TEST(LongWaveGap, faceThatHasTheCondition_doesNotGetItTwice) {
  Picture picture({"BaaB"});
  picture.at(0, 0).fieldConds.push_back(&picture.condition);
  picture.prepare({X});
  EXPECT_EQ(picture.at(0, 0).fieldConds.size(), 1u);
}

TEST(LongWaveGap, facesOfAColumn_areLinked) {
  Picture picture({"B", "a", "B"});
  EXPECT_EQ(picture.prepare({Y}), "");
  EXPECT_EQ(picture.at(0, 0).lwPartnerBottom, picture.at(0, 2).number);
  EXPECT_EQ(picture.at(0, 2).lwPartnerTop, picture.at(0, 0).number);
}

TEST(LongWaveGap, bothFlags_linkRowsAndColumns) {
  Picture picture({"BBB", "BaB", "BBB"});
  EXPECT_EQ(picture.prepare({X, Y}), "");
  EXPECT_EQ(picture.at(0, 1).lwPartnerRight, picture.at(2, 1).number);
  EXPECT_EQ(picture.at(1, 0).lwPartnerBottom, picture.at(1, 2).number);
}

TEST(LongWaveGap, noFlag_linksNothing) {
  Picture picture({"BB"});
  EXPECT_EQ(picture.prepare({}), "");
}

TEST(LongWaveGap, twoColumns_fail) {
  Picture picture({"Ba"});
  EXPECT_EQ(picture.prepare({X}), INVALID + ": Range must have at least 3 elements in X-direction.");
}

TEST(LongWaveGap, twoRows_fail) {
  Picture picture({"B", "a"});
  EXPECT_EQ(picture.prepare({Y}), INVALID + ": Range must have at least 3 elements in Y-direction.");
}

TEST(LongWaveGap, voidAtTheEndOfARow_fails) {
  Picture picture({"Baa."});
  EXPECT_EQ(picture.prepare({X}), INVALID + ", X-direction: Selection encloses voids.");
}

TEST(LongWaveGap, voidAtTheEndOfAColumn_fails) {
  Picture picture({".", "a", "B"});
  EXPECT_EQ(picture.prepare({Y}), INVALID + ", Y-direction: Selection encloses voids.");
}

TEST(LongWaveGap, rangeThatBeginsOutsideTheGrid_fails) {
  Picture picture({"BaaB"});
  EXPECT_EQ(picture.prepare({X}, {-2147483647 - 1, 0, 3, 0}),
            INVALID + ", X-direction: Selection encloses voids.");
}

TEST(LongWaveGap, firstAndLastRowWithoutAir_areSkipped) {
  Picture picture({"BBBB", "BaaB", "BBBB"});
  EXPECT_EQ(picture.prepare({X}), "");
  EXPECT_EQ(picture.at(0, 0).lwPartnerRight, -1);
  EXPECT_EQ(picture.at(0, 1).lwPartnerRight, picture.at(3, 1).number);
  EXPECT_EQ(picture.at(0, 2).lwPartnerRight, -1);
}

TEST(LongWaveGap, firstAndLastColumnWithoutAir_areSkipped) {
  Picture picture({"BBB", "BaB", "BaB", "BBB"});
  EXPECT_EQ(picture.prepare({Y}), "");
  EXPECT_EQ(picture.at(0, 0).lwPartnerBottom, -1);
  EXPECT_EQ(picture.at(1, 0).lwPartnerBottom, picture.at(1, 3).number);
  EXPECT_EQ(picture.at(2, 0).lwPartnerBottom, -1);
}

TEST(LongWaveGap, innerRowWithoutAirAtAFace_fails) {
  Picture picture({"BaaB", "BBaB", "BaaB"});
  EXPECT_EQ(picture.prepare({X}),
            INVALID + ", X-direction: Selection must enclose edges of materials with radiation exchange.");
}

TEST(LongWaveGap, innerColumnWithoutAirAtAFace_fails) {
  Picture picture({"BBB", "aaa", "aBa", "BBB"});
  EXPECT_EQ(picture.prepare({Y}),
            INVALID + ", Y-direction: Selection must enclose edges of materials with radiation exchange.");
}

TEST(LongWaveGap, voidInsideTheFace_countsAsNoAir) {
  Picture picture({"BaaB", "B.aB", "BaaB"});
  EXPECT_EQ(picture.prepare({X}),
            INVALID + ", X-direction: Selection must enclose edges of materials with radiation exchange.");
}

TEST(LongWaveGap, materialInTheMiddle_fails) {
  Picture picture({"BaBaB"});
  EXPECT_EQ(picture.prepare({X}), INVALID + ", different internal materials used.");
}

TEST(LongWaveGap, materialInTheMiddleOfAColumn_fails) {
  Picture picture({"B", "a", "B", "a", "B"});
  EXPECT_EQ(picture.prepare({Y}), INVALID + ", different internal materials used.");
}

TEST(LongWaveGap, voidInTheMiddle_passes) {
  Picture picture({"Ba.aB"});
  EXPECT_EQ(picture.prepare({X}), "");
  EXPECT_EQ(picture.at(0, 0).lwPartnerRight, picture.at(4, 0).number);
}
