#include <gtest/gtest.h>

#include "pollutant/VocData.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace POLLUTANT_LIB {

namespace {

const std::string GOOD_ENTRY =
    "ENTITY toluene\nToluene\nCAS 108-88-3\n0.092138\n867\n"
    "280 300\n0.1 0.2\n"
    "270 290 310\n7e-6 8e-6 9e-6\n";

/// The entry with its line `number`, counted from 0, replaced.
std::string withLine(std::size_t number, const std::string& text) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i < number; ++i) begin = GOOD_ENTRY.find('\n', begin) + 1;
  return GOOD_ENTRY.substr(0, begin) + text + GOOD_ENTRY.substr(GOOD_ENTRY.find('\n', begin));
}

/// What reading says; empty on success.
std::string readingOf(const std::string& entry) {
  const TKL::MessageCapture quiet;
  VocData compound;
  std::string errmsg;
  const bool succeeded = compound.read(entry, errmsg);
  EXPECT_EQ(succeeded, errmsg.empty());
  return errmsg;
}

VocData compoundOf(const std::string& entry) {
  VocData compound;
  std::string errmsg;
  EXPECT_TRUE(compound.read(entry, errmsg)) << errmsg;
  return compound;
}

}  // namespace

TEST(VocData, startsWithTinyNegativeNumbers) {
  const VocData compound;
  EXPECT_EQ(compound.M, -1e-100);
  EXPECT_EQ(compound.rhoLiquid, -1e-100);
  EXPECT_TRUE(compound.rhosat.empty());
  EXPECT_TRUE(compound.Dair.empty());
}

TEST(VocData, entry_isReadLineByLine) {
  const VocData compound = compoundOf(GOOD_ENTRY);
  EXPECT_EQ(compound.id, "toluene");
  EXPECT_EQ(compound.text1, "Toluene");
  EXPECT_EQ(compound.text2, "CAS 108-88-3");
  EXPECT_EQ(compound.M, 0.092138);
  EXPECT_EQ(compound.rhoLiquid, 867.0);
  EXPECT_EQ(compound.rhosat.x, (std::vector<double>{280.0, 300.0}));
  EXPECT_EQ(compound.rhosat.y, (std::vector<double>{0.1, 0.2}));
  EXPECT_EQ(compound.Dair.x, (std::vector<double>{270.0, 290.0, 310.0}));
  EXPECT_EQ(compound.Dair.y, (std::vector<double>{7e-6, 8e-6, 9e-6}));
}

TEST(VocData, curves_areReadyForUseAndLinear) {
  const VocData compound = compoundOf(GOOD_ENTRY);
  EXPECT_DOUBLE_EQ(compound.rhosat(285.0), 0.125);
  EXPECT_DOUBLE_EQ(compound.Dair(300.0), 8.5e-6);
}

TEST(VocData, curves_holdTheirEndValuesOutsideTheTable) {
  const VocData compound = compoundOf(GOOD_ENTRY);
  EXPECT_EQ(compound.rhosat(200.0), 0.1);
  EXPECT_EQ(compound.rhosat(400.0), 0.2);
}

TEST(VocData, curvesOfASinglePoint_areConstant) {
  const std::string entry = "ENTITY x\na\nb\n0.1\n900\n300\n0.25\n300\n1e-5\n";
  const VocData compound = compoundOf(entry);
  for (const double T : {1.0, 300.0, 1000.0}) {
    EXPECT_EQ(compound.rhosat(T), 0.25);
    EXPECT_EQ(compound.Dair(T), 1e-5);
  }
}

TEST(VocData, copy_keepsItsCurves) {
  const VocData compound = compoundOf(GOOD_ENTRY);
  const VocData copy = compound;
  EXPECT_DOUBLE_EQ(copy.rhosat(285.0), 0.125);
}

TEST(VocData, wordUndefined_leavesTheRemarksEmpty) {
  EXPECT_EQ(compoundOf(withLine(1, "undefined")).text1, "");
  EXPECT_EQ(compoundOf(withLine(2, " undefined\t\r")).text2, "");
  EXPECT_EQ(compoundOf(withLine(1, "undefined name")).text1, "undefined name");
  EXPECT_EQ(compoundOf(withLine(1, "Undefined")).text1, "Undefined");
}

TEST(VocData, remarks_areTrimmed) {
  EXPECT_EQ(compoundOf(withLine(1, "  \tmethyl benzene \t\r")).text1, "methyl benzene");
}

TEST(VocData, identifier_isTheWordBehindTheKeyword) {
  EXPECT_EQ(compoundOf(withLine(0, "ENTITY\t toluene of coal")).id, "toluene");
  EXPECT_EQ(compoundOf(withLine(0, "  an ENTITY toluene")).id, "toluene");
}

TEST(VocData, entryWithLineEndsOfDos_isRead) {
  std::string entry;
  for (const char c : GOOD_ENTRY) entry += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(compoundOf(entry).id, "toluene");
  EXPECT_EQ(compoundOf(entry).text1, "Toluene");
}

TEST(VocData, lastLineWithoutLineFeed_isRead) {
  EXPECT_EQ(readingOf(GOOD_ENTRY.substr(0, GOOD_ENTRY.size() - 1)), "");
}

TEST(VocData, textBehindANumber_isLeftOut) {
  EXPECT_EQ(compoundOf(withLine(3, "0.092138 kg/mol")).M, 0.092138);
}

TEST(VocData, noIdentifier_isRefused) {
  for (const char* const line : {"ENTITY", "ENTITY \t", "toluene"}) {
    const std::string entry = withLine(0, line);
    EXPECT_EQ(readingOf(entry), "[VocData::read]  Undefined or invalid VOC entry: \n  " + entry);
  }
}

TEST(VocData, emptyEntry_isRefused) {
  EXPECT_EQ(readingOf(""), "[VocData::read]  Undefined or invalid VOC entry: \n  ");
}

TEST(VocData, molarMassThatIsNoPositiveNumber_isRefused) {
  for (const char* const line : {"heavy", "", "-", "nan", "inf", "1e999", "1.#QNAN", "0,092", "0", "-0.03"}) {
    const std::string entry = withLine(3, line);
    EXPECT_EQ(readingOf(entry), "[VocData::read]  Error reading molar mass in VOC entry: \n  " + entry);
  }
}

TEST(VocData, liquidDensityThatIsNoNumber_isRefused) {
  const std::string entry = withLine(4, "dense");
  EXPECT_EQ(readingOf(entry), "[VocData::read]  Error reading liquid density in VOC entry: \n  " + entry);
}

TEST(VocData, saturationDensityThatIsNoTable_isRefused) {
  const std::string text = "[VocData::read]  Error reading saturation density rhosat(T) of VOC entry: \n  ";
  for (const char* const line : {"", "280", "280 290 300", "300 280", "warm"}) {
    const std::string entry = withLine(5, line);
    EXPECT_EQ(readingOf(entry), text + entry);
  }
}

TEST(VocData, saturationDensityThatIsNotPositive_isRefused) {
  for (const char* const line : {"-0.1 0.2", "0 0.2", "0.1 0"}) {
    const std::string entry = withLine(6, line);
    EXPECT_EQ(readingOf(entry),
              "[VocData::read]  Invalid saturation density rhosat(T) spline of VOC entry: \n  " + entry);
  }
}

TEST(VocData, diffusionCoefficientThatIsNoTable_isRefused) {
  const std::string text = "[VocData::read]  Error reading diffusion coefficient Dair(T) of VOC entry: \n  ";
  for (const char* const line : {"", "280", "310 290 270"}) {
    const std::string entry = withLine(7, line);
    EXPECT_EQ(readingOf(entry), text + entry);
  }
}

TEST(VocData, entryThatEndsTooEarly_isRefused) {
  const std::string entry = GOOD_ENTRY.substr(0, GOOD_ENTRY.rfind('\n', GOOD_ENTRY.size() - 2) + 1);
  EXPECT_EQ(readingOf(entry),
            "[VocData::read]  Error reading diffusion coefficient Dair(T) of VOC entry: \n  " + entry);
}

TEST(VocData, negativeDiffusionCoefficient_isRefused) {
  const std::string entry = withLine(8, "7e-6 8e-6 -9e-6");
  EXPECT_EQ(readingOf(entry),
            "[VocData::read]  Invalid diffusion coefficient Dair(T) spline of VOC entry: \n  " + entry);
}

TEST(VocData, emptyRemark_isRefused) {
  for (const std::size_t line : {1U, 2U}) {
    const std::string entry = withLine(line, " ");
    EXPECT_EQ(readingOf(entry), "[VocData::read]  Missing data in VOC entry: \n  " + entry);
  }
}

TEST(VocData, compoundThatDoesNotDiffuse_isRead) {
  EXPECT_EQ(compoundOf(withLine(8, "0 0 0")).Dair(290.0), 0.0);
}

TEST(VocData, longEntry_isShortenedInItsMessage) {
  const std::string text = "[VocData::read]  Error reading molar mass in VOC entry: \n  ";
  EXPECT_EQ(readingOf(withLine(3, std::string(100000, 'x'))).size(), text.size() + 203);
}

TEST(VocData, saturationDensityWithoutPoints_throws) {
  const TKL::Thrown thrown = TKL::thrownBy([] { VocData().rhosat(300.0); });
  EXPECT_EQ(thrown.text, "[VocData::rhosat]  Missing saturation density spline data!");
}

TEST(VocData, diffusionCoefficientWithoutPoints_throws) {
  const TKL::Thrown thrown = TKL::thrownBy([] { VocData().Dair(300.0); });
  EXPECT_EQ(thrown.text, "[VocData::Dair]  Missing diffusion coefficient spline data!");
}

}  // namespace POLLUTANT_LIB
