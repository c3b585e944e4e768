#include "foundation/Color.h"

#include <gtest/gtest.h>

#include "support/Thrown.h"

namespace TKL {
namespace {

constexpr Color ORANGE{0xFF, 0xA5, 0x00, 255};

TEST(Color, unset_isBlack) {
  EXPECT_EQ(Color(), Color::fromHtml("#000000"));
}

TEST(Color, sixDigitsInAnyCase) {
  EXPECT_EQ(Color::fromHtml("#FFA500"), ORANGE);
  EXPECT_EQ(Color::fromHtml("#ffa500"), ORANGE);
}

TEST(Color, signMayBeMissing) {
  EXPECT_EQ(Color::fromHtml("ffa500"), ORANGE);
}

TEST(Color, eightDigits_alphaIsReadOver) {
  EXPECT_EQ(Color::fromHtml("#12FFA500"), ORANGE);
}

TEST(Color, read_trimsTheText) {
  Color color;
  color.read(" #FFA500\r");
  EXPECT_EQ(color, ORANGE);
}

TEST(Color, otherTexts_fail) {
  for (const std::string text : {"", "#", "#12345", "#1234567", "#123456789", "#12345G", "red", "##12345"}) {
    EXPECT_EQ(thrownBy([&] { Color::fromHtml(text); }),
              (Thrown{"Invalid colour '" + text + "'!", "[Color::fromHtml]"}));
  }
}

TEST(Color, failedRead_keepsTheColour) {
  Color color = ORANGE;
  EXPECT_THROW(color.read("x"), Exception);
  EXPECT_EQ(color, ORANGE);
}

TEST(Color, toHtml_comesBackThroughFromHtml) {
  EXPECT_EQ(ORANGE.toHtml(), "#ffa500");
  EXPECT_EQ(Color::fromHtml(ORANGE.toHtml()), ORANGE);
}

}  // namespace
}  // namespace TKL
