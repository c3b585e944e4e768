#include "project/VelDisc.h"

#include <gtest/gtest.h>

#include "foundation/Exception.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

using TKL::Thrown;
using TKL::thrownBy;
using VELMORA::SectionText;
using VELMORA::VelDisc;

namespace {

VelDisc discFrom(const std::string& text) {
  VelDisc disc;
  disc.read(SectionText(text));
  return disc;
}

}  // namespace

TEST(VelDisc, withoutText_isPlaneAndEmpty) {
  const VelDisc disc = discFrom("");
  EXPECT_EQ(disc.geometry, VelDisc::G_PLANE2D);
  EXPECT_TRUE(disc.dx.data.empty());
  EXPECT_TRUE(disc.dy.data.empty());
  EXPECT_TRUE(disc.dz.data.empty());
  EXPECT_EQ(disc.thetaZ, 0.0);
  EXPECT_EQ(disc.pieSliceAngle, 0.0);
  EXPECT_EQ(disc.width, 0.0);
  EXPECT_EQ(disc.height, 0.0);
}

TEST(VelDisc, steps_areConvertedToMetres) {
  const VelDisc disc = discFrom("X_STEPS = 10 25 mm\nY_STEPS = 1 2 m\nZ_STEPS = 50 cm");
  ASSERT_EQ(disc.dx.data.size(), 2u);
  EXPECT_DOUBLE_EQ(disc.dx.data[1], 0.025);
  EXPECT_DOUBLE_EQ(disc.dy.data[1], 2.0);
  EXPECT_DOUBLE_EQ(disc.dz.data[0], 0.5);
}

TEST(VelDisc, widthAndHeight_areSumsOfTheSteps) {
  const VelDisc disc = discFrom("X_STEPS = 10 25 mm\nY_STEPS = 1 2 m");
  EXPECT_DOUBLE_EQ(disc.width, 0.035);
  EXPECT_DOUBLE_EQ(disc.height, 3.0);
}

TEST(VelDisc, secondStepsLine_replacesTheFirst) {
  const VelDisc disc = discFrom("X_STEPS = 1 2 m\nX_STEPS = 5 m");
  EXPECT_EQ(disc.dx.data, std::vector<double>{5.0});
  EXPECT_DOUBLE_EQ(disc.width, 5.0);
}

TEST(VelDisc, geometry_isReadByKeyword) {
  EXPECT_EQ(discFrom("GEOMETRY = RSYM").geometry, VelDisc::G_RSYM);
}

TEST(VelDisc, allKeywordsTogether_areRead) {
  const VelDisc disc = discFrom(
      "GEOMETRY = PLANE2D\nX_STEPS = 1 2 m\nY_STEPS = 3 cm\nZ_STEPS = 4 5 m\nTHETA_Z = 6\nPIE_SLICE_ANGLE = "
      "7\n");
  EXPECT_EQ(disc.geometry, VelDisc::G_PLANE2D);
  EXPECT_EQ(disc.dx.data, (std::vector<double>{1.0, 2.0}));
  ASSERT_EQ(disc.dy.data.size(), 1u);
  EXPECT_DOUBLE_EQ(disc.dy.data[0], 0.03);
  EXPECT_EQ(disc.dz.data, (std::vector<double>{4.0, 5.0}));
  EXPECT_EQ(disc.thetaZ, 6.0);
  EXPECT_EQ(disc.pieSliceAngle, 7.0);
}

TEST(VelDisc, unknownGeometry_fails) {
  EXPECT_EQ(thrownBy([] { discFrom("GEOMETRY = PLANE3D"); }),
            (Thrown{"Cannot determine enumeration value for enumeration type 'VelDisc::geometry_t' and "
                    "keyword 'PLANE3D'.",
                    "[KeywordList::Enumeration]"}));
}

TEST(VelDisc, angles_arePlainNumbers) {
  const VelDisc disc = discFrom("THETA_Z = 30.5\nPIE_SLICE_ANGLE = 90");
  EXPECT_DOUBLE_EQ(disc.thetaZ, 30.5);
  EXPECT_DOUBLE_EQ(disc.pieSliceAngle, 90.0);
}

TEST(VelDisc, angleThatIsNoNumber_fails) {
  EXPECT_EQ(thrownBy([] { discFrom("THETA_Z = steep"); }),
            (Thrown{"Could not convert 'steep' into value.", "[string2val]"}));
}

TEST(VelDisc, unknownKeyword_isWarnedAboutAndSkipped) {
  TKL::MessageCapture capture;
  const VelDisc disc = discFrom("W_STEPS = 1 m\nX_STEPS = 1 m");
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'W_STEPS' in this section!", TKL::MSG_WARNING,
                          "[VelDisc::read]", 3));
  EXPECT_EQ(disc.dx.data.size(), 1u);
}

TEST(VelDisc, lineWithoutEqualSign_fails) {
  EXPECT_EQ(thrownBy([] { discFrom("X_STEPS 1 m"); }),
            (Thrown{"Expected keyword, got 'X_STEPS 1 m'!", "[VelDisc::read]"}));
}

TEST(VelDisc, missingValue_fails) {
  EXPECT_EQ(thrownBy([] { discFrom("X_STEPS ="); }),
            (Thrown{"Missing value for keyword 'X_STEPS'!", "[VelDisc::read]"}));
}

TEST(VelDisc, failure_knowsItsLine) {
  try {
    discFrom("X_STEPS = 1 m\nY_STEPS = many m");
    FAIL() << "the second line cannot be read";
  } catch (const TKL::Exception& error) {
    EXPECT_EQ(error.inputLine(), 2);
  }
}

TEST(VelDisc, thickness_isOneMetreUnlessGiven) {
  EXPECT_EQ(discFrom("").thickness(), 1.0);
  EXPECT_DOUBLE_EQ(discFrom("Z_STEPS = 20 40 cm").thickness(), 0.2);
}
