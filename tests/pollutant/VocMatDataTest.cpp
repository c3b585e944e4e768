#include <gtest/gtest.h>

#include "pollutant/VocMatData.h"

namespace POLLUTANT_LIB {

namespace {

/// What reading a pair says; empty on success.
std::string pairReadingOf(const std::string& entry) {
  VocMatData pair;
  std::string errmsg;
  const bool succeeded = pair.read(entry, errmsg);
  EXPECT_EQ(succeeded, errmsg.empty());
  return errmsg;
}

}  // namespace

TEST(VocMatData, startsWithTinyNegativeNumbers) {
  const VocMatData pair;
  EXPECT_EQ(pair.muFactor, -1e-100);
  EXPECT_EQ(pair.partCoeff, -1e-100);
}

TEST(VocMatData, entry_isReadLineByLine) {
  VocMatData pair;
  std::string errmsg;
  ASSERT_TRUE(pair.read("ENTITY\n toluene \r\n\tGypsum board\n 1.5\n30\n", errmsg)) << errmsg;
  EXPECT_EQ(pair.vocId, "toluene");
  EXPECT_EQ(pair.materialId, "Gypsum board");
  EXPECT_EQ(pair.muFactor, 1.5);
  EXPECT_EQ(pair.partCoeff, 30.0);
}

TEST(VocMatData, firstLine_mayHoldAnything) {
  EXPECT_EQ(pairReadingOf("ENTITY number 7\na\nb\n1\n2"), "");
}

TEST(VocMatData, factorThatIsNoNumber_isRefused) {
  const std::string text =
      "[VocMatData::read]  Error reading diffusion resistance correction factor in VOC-Material-Data entry: "
      "\n  ";
  for (const std::string entry : {"ENTITY\na\nb\nhigh\n2\n", "ENTITY\na\nb\n", "ENTITY\n", ""})
    EXPECT_EQ(pairReadingOf(entry), text + entry);
}

TEST(VocMatData, partitionCoefficientThatIsNoNumber_isRefused) {
  const std::string text =
      "[VocMatData::read]  Error reading partition coefficient in VOC-Material-Data entry: \n  ";
  for (const std::string entry : {"ENTITY\na\nb\n1\nlow\n", "ENTITY\na\nb\n1\n"})
    EXPECT_EQ(pairReadingOf(entry), text + entry);
}

TEST(VocMatData, pairWithoutNames_isRefused) {
  const std::string text = "[VocMatData::read]  Missing data in VOC-Material-Data entry: \n  ";
  for (const std::string entry : {"ENTITY\n\nb\n1\n2\n", "ENTITY\na\n \t\n1\n2\n"})
    EXPECT_EQ(pairReadingOf(entry), text + entry);
}

TEST(VocMatData, numbersOutOfTheirRange_areRead) {
  EXPECT_EQ(pairReadingOf("ENTITY\na\nb\n-1\n0\n"), "");
}

}  // namespace POLLUTANT_LIB
