#include <gtest/gtest.h>

#include <chrono>
#include <iostream>

#include "pollutant/PollutantSupport.h"
#include "support/StreamCapture.h"

namespace POLLUTANT_LIB {

TEST(PollutantDatabase, bothTables_areReadInTheOrderOfTheFile) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, twoByTwoDatabase()), "");
  ASSERT_EQ(library.vocData.size(), 2U);
  EXPECT_EQ(library.vocData[0].id, "A");
  EXPECT_EQ(library.vocData[1].id, "B");
  ASSERT_EQ(library.vocMatData.size(), 4U);
  EXPECT_EQ(library.vocMatData[1].vocId, "B");
  EXPECT_EQ(library.vocMatData[1].materialId, "Board");
  EXPECT_EQ(library.vocMatData[3].partCoeff, 80.0);
}

TEST(PollutantDatabase, fileThatIsNotThere_isRefused) {
  PollutantLibrary library;
  std::string errmsg;
  EXPECT_FALSE(library.readDatabase(TKL::Path("/nowhere/at.voc"), errmsg));
  EXPECT_EQ(errmsg, "[PollutantLibrary::readDatabase]  Couldn't open database '/nowhere/at.voc'!");
}

TEST(PollutantDatabase, folder_isRefused) {
  const TKL::TempFolder folder;
  PollutantLibrary library;
  std::string errmsg;
  EXPECT_FALSE(library.readDatabase(TKL::Path(folder.path().string()), errmsg));
  EXPECT_EQ(errmsg,
            "[PollutantLibrary::readDatabase]  Couldn't open database '" + folder.path().string() + "'!");
}

TEST(PollutantDatabase, lineInFrontOfTheTables_isRefused) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, "# comment\nENTITY A \nTABLE VOC_DATA\n"),
            "[PollutantLibrary::readDatabase]  Expected table keyword 'TABLE', got line 'ENTITY A '");
}

TEST(PollutantDatabase, emptyFile_isAnEmptyDatabase) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, ""), "");
  EXPECT_TRUE(library.vocData.empty());
}

TEST(PollutantDatabase, secondReading_replacesTheFirst) {
  PollutantLibrary library;
  std::string errmsg;
  EXPECT_EQ(readText(library, twoByTwoDatabase()), "");
  ASSERT_TRUE(library.init({"A"}, {"Board"}, {10.0}, {0.5}, errmsg)) << errmsg;
  EXPECT_EQ(readText(library, "TABLE VOC_DATA\n" + compoundEntry("C")), "");
  ASSERT_EQ(library.vocData.size(), 1U);
  EXPECT_EQ(library.vocData[0].id, "C");
  EXPECT_TRUE(library.vocMatData.empty());
  EXPECT_TRUE(library.vocs.empty());
  EXPECT_TRUE(library.table.empty());
}

TEST(PollutantDatabase, failedOpening_clearsTheLibrary) {
  PollutantLibrary library;
  std::string errmsg;
  EXPECT_EQ(readText(library, twoByTwoDatabase()), "");
  EXPECT_FALSE(library.readDatabase(TKL::Path("/nowhere/at.voc"), errmsg));
  EXPECT_TRUE(library.vocData.empty());
}

TEST(PollutantDatabase, blankLinesAndComments_areSkippedEverywhere) {
  PollutantLibrary library;
  EXPECT_EQ(
      readText(library,
               "\n \t \n\r\n#TABLE NONE\nTABLE VOC_DATA\n\n# ENTITY B\nENTITY A\n#\nname\n\t\nundefined\n"
               "0.1\n900\n# x\n280\n0.2\n\n280\n1e-5\n"),
      "");
  ASSERT_EQ(library.vocData.size(), 1U);
  EXPECT_EQ(library.vocData[0].text1, "name");
}

TEST(PollutantDatabase, commentSignBehindABlank_isNoComment) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, " # comment\nTABLE VOC_DATA\n"),
            "[PollutantLibrary::readDatabase]  Expected table keyword 'TABLE', got line ' # comment'");
}

TEST(PollutantDatabase, wordTableAnywhereInALine_opensATable) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, "the TABLE \t VOC_DATA \t\r\n" + compoundEntry("A")), "");
  EXPECT_EQ(library.vocData.size(), 1U);
}

TEST(PollutantDatabase, nameThatHoldsTheWordTable_cutsItsEntry) {
  const TKL::StreamCapture capture(std::cout);
  PollutantLibrary library;
  const std::string entry = "ENTITY A\n";
  EXPECT_EQ(
      readText(library, "TABLE VOC_DATA\nENTITY A\nVEGETABLE OIL\nundefined\n0.1\n900\n280\n1\n280\n1\n"),
      "[VocData::read]  Error reading molar mass in VOC entry: \n  ENTITY A\n"
      "\n[POLLUTANT_LIB::read_table]  Error reading entry from in data base table: 'VOC_DATA'. Entry was:\n"
      "ENTITY A\n");
}

TEST(PollutantDatabase, unknownTable_isNamedAndTheOthersAreRead) {
  PollutantLibrary library;
  const TKL::StreamCapture capture(std::cout);
  EXPECT_EQ(readText(library, "TABLE VOC_DATA\n" + compoundEntry("A") + "TABLE SALT_DATA\nENTITY salt\n" +
                                  "TABLE VOC_MATERIAL_DATA\n" + pairEntry("A", "Board")),
            "");
  EXPECT_EQ(capture.text(), "Unknown table id 'SALT_DATA'! Ignoring table...\n");
  EXPECT_EQ(library.vocData.size(), 1U);
  EXPECT_EQ(library.vocMatData.size(), 1U);
}

TEST(PollutantDatabase, knownTables_areNotNamed) {
  PollutantLibrary library;
  const TKL::StreamCapture capture(std::cout);
  EXPECT_EQ(readText(library, twoByTwoDatabase()), "");
  EXPECT_EQ(capture.text(), "");
}

TEST(PollutantDatabase, identifierOfATable_distinguishesCase) {
  PollutantLibrary library;
  const TKL::StreamCapture capture(std::cout);
  EXPECT_EQ(readText(library, "TABLE voc_data\n"), "");
  EXPECT_EQ(capture.text(), "Unknown table id 'voc_data'! Ignoring table...\n");
}

TEST(PollutantDatabase, severalTablesOfAKind_addUp) {
  PollutantLibrary library;
  EXPECT_EQ(
      readText(library, "TABLE VOC_DATA\n" + compoundEntry("A") + "TABLE VOC_DATA\n" + compoundEntry("B")),
      "");
  EXPECT_EQ(library.vocData.size(), 2U);
}

TEST(PollutantDatabase, tableWithoutEntry_isRefused) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, "TABLE VOC_DATA\nA\nB\n"),
            "[POLLUTANT_LIB::read_table]  Error in data base table: 'VOC_DATA', missing keyword 'ENTITY'");
  EXPECT_EQ(readText(library, "TABLE VOC_MATERIAL_DATA\n"),
            "[POLLUTANT_LIB::read_table]  Error in data base table: 'VOC_MATERIAL_DATA', missing keyword "
            "'ENTITY'");
}

TEST(PollutantDatabase, linesInFrontOfTheFirstEntry_areLeftOut) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, "TABLE VOC_DATA\nheading\n" + compoundEntry("A")), "");
  EXPECT_EQ(library.vocData.size(), 1U);
}

TEST(PollutantDatabase, faultOfAnEntry_comesBehindThatOfTheRecord) {
  PollutantLibrary library;
  const std::string entry = "ENTITY\nA\nBoard\n1\nmuch\n";
  EXPECT_EQ(readText(library,
                     "TABLE VOC_MATERIAL_DATA\n" + pairEntry("A", "Stone") + entry + pairEntry("B", "Stone")),
            "[VocMatData::read]  Error reading partition coefficient in VOC-Material-Data entry: \n  " +
                entry +
                "\n[POLLUTANT_LIB::read_table]  Error reading entry from in data base table: "
                "'VOC_MATERIAL_DATA'. Entry was:\n" +
                entry);
}

TEST(PollutantDatabase, recordsInFrontOfAFault_areKept) {
  PollutantLibrary library;
  EXPECT_NE(readText(library, "TABLE VOC_DATA\n" + compoundEntry("A") + "ENTITY B\n"), "");
  ASSERT_EQ(library.vocData.size(), 1U);
  EXPECT_EQ(library.vocData[0].id, "A");
}

TEST(PollutantDatabase, lastLineWithoutLineFeed_isRead) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, "TABLE VOC_MATERIAL_DATA\nENTITY\nA\nBoard\n1\n25"), "");
  EXPECT_EQ(library.vocMatData.at(0).partCoeff, 25.0);
}

TEST(PollutantDatabase, byteOrderMark_isSkipped) {
  PollutantLibrary library;
  EXPECT_EQ(readText(library, "\xEF\xBB\xBF# comment\nTABLE VOC_DATA\n" + compoundEntry("A")), "");
  EXPECT_EQ(library.vocData.size(), 1U);
}

TEST(PollutantDatabase, tenMegabytesOfOneLine_areRefusedInShort) {
  PollutantLibrary library;
  const auto start = std::chrono::steady_clock::now();
  const std::string errmsg = readText(library, std::string(10000000, 'x'));
  EXPECT_LT(errmsg.size(), 400U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(PollutantDatabase, hundredThousandEntries_areReadInLinearTime) {
  std::string text = "TABLE VOC_MATERIAL_DATA\n";
  for (int i = 0; i < 100000; ++i) text += pairEntry("A", "Board" + std::to_string(i));
  PollutantLibrary library;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(readText(library, text), "");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_EQ(library.vocMatData.size(), 100000U);
}

}  // namespace POLLUTANT_LIB
