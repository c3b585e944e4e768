#include "foundation/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace TKL {

namespace {

constexpr auto FIXED = std::chars_format::fixed;
constexpr int MOST_DIGITS = 20;  // more than the short way has

std::string textOf(double value, int precision, std::chars_format form = std::chars_format::general) {
  char text[MAX_NUMBER_TEXT];
  return std::string(text, writeNumber(text, value, {form, precision}));
}

std::string printedText(double value, int precision, const char* format = "%.*g") {
  char text[400];
  std::snprintf(text, sizeof text, format, precision, value);
  return text;
}

/// Compares the text of a number and its neighbours with that of the C library, with up to 20 digits in all
/// and behind the point.
void expectAsPrinted(double value) {
  constexpr double LARGEST = std::numeric_limits<double>::max();
  for (const double x : {value, std::nextafter(value, -LARGEST), std::nextafter(value, LARGEST), -value}) {
    for (int precision = 0; precision <= MOST_DIGITS; ++precision) {
      ASSERT_EQ(textOf(x, precision), printedText(x, precision)) << "precision " << precision;
      ASSERT_EQ(textOf(x, precision, FIXED), printedText(x, precision, "%.*f")) << "decimals " << precision;
    }
  }
}

}  // namespace

TEST(NumberText, powersOfTenAndTheirNeighbours_areThoseOfTheCLibrary) {
  for (int exponent = -30; exponent <= 30; ++exponent) expectAsPrinted(std::pow(10.0, exponent));
}

TEST(NumberText, powersOfTwoAndTheirNeighbours_areThoseOfTheCLibrary) {
  for (int exponent = -60; exponent <= 70; ++exponent) expectAsPrinted(std::ldexp(1.0, exponent));
}

TEST(NumberText, numbersInTheMiddle_areRoundedToTheEvenDigit) {
  EXPECT_EQ(textOf(0.5, 1), "0.5");
  EXPECT_EQ(textOf(2.5, 1), "2");
  EXPECT_EQ(textOf(3.5, 1), "4");
  EXPECT_EQ(textOf(1000.5, 4), "1000");
  EXPECT_EQ(textOf(1001.5, 4), "1002");
  EXPECT_EQ(textOf(250.0, 1), "2e+02");
  EXPECT_EQ(textOf(350.0, 1), "4e+02");
  for (int i = 1; i < 4096; i += 37) expectAsPrinted(i / 64.0);
}

TEST(NumberText, numbersJustBelowAPower_areRoundedUpToIt) {
  EXPECT_EQ(textOf(99999.96, 6), "100000");
  EXPECT_EQ(textOf(999999.6, 6), "1e+06");
  EXPECT_EQ(textOf(0.0000999999996, 6), "0.0001");
}

TEST(NumberText, randomNumbers_areThoseOfTheCLibrary) {
  std::mt19937_64 random(4711);
  std::uniform_real_distribution<double> exponent(-14.0, 18.0);
  for (int i = 0; i < 3000; ++i) {
    const double value = std::pow(10.0, exponent(random));
    const int precision = i % MOST_DIGITS;
    ASSERT_EQ(textOf(value, precision), printedText(value, precision));
    ASSERT_EQ(textOf(value, precision, FIXED), printedText(value, precision, "%.*f"));
  }
}

TEST(NumberText, randomBits_areThoseOfTheCLibrary) {
  std::mt19937_64 random(4712);
  for (int i = 0; i < 3000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (std::isnan(value)) continue;
    const int precision = i % MOST_DIGITS;
    ASSERT_EQ(textOf(value, precision), printedText(value, precision));
    ASSERT_EQ(textOf(value, precision, FIXED), printedText(value, precision, "%.*f"));
  }
}

TEST(NumberText, zeroAndWhatIsNoNumber_areThoseOfTheCLibrary) {
  constexpr double INFINITE = std::numeric_limits<double>::infinity();
  for (const double value : {0.0, -0.0, INFINITE, -INFINITE, std::numeric_limits<double>::denorm_min()}) {
    EXPECT_EQ(textOf(value, 6), printedText(value, 6));
    EXPECT_EQ(textOf(value, 6, FIXED), printedText(value, 6, "%.*f"));
  }
}

TEST(NumberText, otherForms_areThoseOfTheCLibrary) {
  for (const double value : {0.0, 1.0, -3.14159, 2.5, 1e-7, 123456789.0}) {
    EXPECT_EQ(textOf(value, 3, std::chars_format::fixed), printedText(value, 3, "%.*f"));
    EXPECT_EQ(textOf(value, 3, std::chars_format::scientific), printedText(value, 3, "%.*e"));
  }
}

}  // namespace TKL
