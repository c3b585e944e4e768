#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

MaterialIdentification read(const std::string& text) {
  MaterialIdentification identification;
  identification.read(linesOf(text));
  return identification;
}

MaterialIdentification readPreV6(const std::string& text) {
  MaterialIdentification identification;
  identification.readPreV6(linesOf(text));
  return identification;
}

Records identificationFailure(const std::string& text) {
  return thrown([&] { read(text); });
}

Records failurePreV6(const std::string& text) {
  return thrown([&] { readPreV6(text); });
}

const char* const CONTEXT = "Error reading material identification section!";
const char* const READ_LINE = "[MaterialIdentification::readLine]";

}  // namespace

TEST(MaterialIdentification, texts_areReadInAllTheirForms) {
  const MaterialIdentification m = read(
      "NAME = en:Brick|de:Ziegel\nPRODUCER = en:A\nPRODUCT_ID = P1\nINVESTIGATOR = I\nLABORATORY = en:L\n"
      "DATE = d1\nSAMPLING_DATE = d2\nPRODUCTION_DATE = d3\nSAMPLE_ID = s\nCOUNTRY = c\nUSE_INSTEAD = 17\n"
      "COPYRIGHT = (c)\nCOMMENTS = en:x = y\nU_DIRECTION = u\nV_DIRECTION = v\nW_DIRECTION = w\nDBTYPE = t\n"
      "SIGNATURE_SOURCE = ss\nQUALITY_FLAGS = q\nDATA_SHEET_SOURCE = ds\nAQUISITION_ID = a\n");
  EXPECT_EQ(m.englishName(), "Brick");
  EXPECT_EQ(m.producer.string("en"), "A");
  EXPECT_EQ(m.productId.string("en"), "P1");
  EXPECT_EQ(m.investigator.string("de"), "I");
  EXPECT_EQ(m.laboratory.string("en"), "L");
  EXPECT_EQ(m.date + m.samplingDate + m.productionDate, "d1d2d3");
  EXPECT_EQ(m.sampleId + m.country + m.copyright, "sc(c)");
  EXPECT_EQ(m.useInstead, 17);
  EXPECT_EQ(m.comments.string("en"), "x = y");
  EXPECT_EQ(m.uDirection + m.vDirection + m.wDirection + m.dbType, "uvwt");
  EXPECT_EQ(m.signatureSource + m.qualityFlags + m.dataSheetSource + m.aquisitionId, "ssqdsa");
}

TEST(MaterialIdentification, enumerations_areReadByKeyword) {
  const MaterialIdentification m =
      read("SAMPLING_METHOD = S_CAST_CUT_TKL\nHATCHING = Masonry\nCATEGORY = BRICK MISC\n");
  EXPECT_EQ(m.samplingMethod, MaterialIdentification::SM_S_CAST_CUT_TKL);
  EXPECT_EQ(m.hatching, MaterialIdentification::HT_Masonry);
  ASSERT_EQ(m.category.ids.size(), 2U);
  EXPECT_EQ(m.category.ids[0], MaterialCategory::MC_BRICK);
  EXPECT_EQ(m.category.ids[1], MaterialCategory::MC_MISC);
}

TEST(MaterialIdentification, flags_areBlankSeparatedBits) {
  EXPECT_EQ(read("FLAGS = AIR \t WATER_TIGHT\n").flags, 9U);
}

TEST(MaterialIdentification, aliases_areKnown) {
  const MaterialIdentification m = read("SOURCE = en:Lab\nCOLOR = #0a0b0c\n");
  EXPECT_EQ(m.laboratory.string("en"), "Lab");
  EXPECT_EQ(m.colour.blue, 12);
}

TEST(MaterialIdentification, badColour_isReported) {
  const Records records = identificationFailure("COLOUR = reddish\n");
  EXPECT_TRUE(has(records, "Invalid parameter value 'reddish' for keyword 'COLOUR'!", READ_LINE));
  EXPECT_TRUE(has(records, CONTEXT, "[MaterialIdentification::read]"));
}

TEST(MaterialIdentification, lineWithoutEqualSign_isRefused) {
  const Records records = identificationFailure("NAME Brick\n");
  EXPECT_TRUE(has(records, "Expected keyword, got 'NAME Brick'!", READ_LINE));
  EXPECT_TRUE(has(records, CONTEXT, "[MaterialIdentification::read]"));
}

TEST(MaterialIdentification, keywordWithoutValue_isRefused) {
  EXPECT_TRUE(has(identificationFailure("NAME =\n"), "Missing value for keyword 'NAME'!", READ_LINE));
}

TEST(MaterialIdentification, unknownKeyword_isOnlyWarnedAbout) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(read("FOO = 1\nNAME = en:A\n").englishName(), "A");
  EXPECT_TRUE(
      capture.has("Invalid keyword found in identification section 'FOO'.", TKL::MSG_WARNING, READ_LINE, 3));
}

TEST(MaterialIdentification, fourCategories_areRefused) {
  EXPECT_TRUE(has(identificationFailure("CATEGORY = BRICK MISC SOIL FOILS\n"),
                  "Invalid parameter value 'BRICK MISC SOIL FOILS' for keyword 'CATEGORY'!",
                  "[MaterialCategory::read]"));
  EXPECT_EQ(read("CATEGORY = BRICK MISC SOIL\n").category.ids.size(), 3U);
}

TEST(MaterialIdentification, wordsThatAreNoKeyword_areRefused) {
  EXPECT_FALSE(identificationFailure("FLAGS = AIR FOO\n").empty());
  EXPECT_FALSE(identificationFailure("HATCHING = Foo\n").empty());
  EXPECT_FALSE(identificationFailure("SAMPLING_METHOD = Foo\n").empty());
  EXPECT_FALSE(identificationFailure("USE_INSTEAD = Foo\n").empty());
}

TEST(MaterialIdentificationPreV6, texts_areRead) {
  const MaterialIdentification m = readPreV6(
      "UNIQUE_ID = 1\nNAME = Old: brick\nCOLOUR = #010203\nPRODUCER = P\nPRODUCT_ID = Q\nSAMPLINGDATE = d1\n"
      "SAMPLINGMETHOD = 2\nSOURCE = S\nINVESTIGATOR = I\nMM_ID = 3\nCATEGORY = BRICK\nCOMMENTS = c\nDATE = "
      "d2\n"
      "COUNTRY = DE\nDEPRICATED_STATE = 0\n");
  EXPECT_EQ(m.englishName(), "Old: brick");
  EXPECT_EQ(m.colour.green, 2);
  EXPECT_EQ(m.producer.string("en") + m.productId.string("en"), "PQ");
  EXPECT_EQ(m.samplingDate + m.date + m.country, "d1d2DE");
  EXPECT_EQ(m.samplingMethod, MaterialIdentification::SM_S_CAST_CUT_TKL);
  EXPECT_EQ(m.laboratory.string("en") + m.investigator.string("en") + m.comments.string("en"), "SIc");
  EXPECT_EQ(m.category.ids.at(0), MaterialCategory::MC_BRICK);
}

TEST(MaterialIdentificationPreV6, keyword_mustBeAWholeWord) {
  const MaterialIdentification m = readPreV6("SAMPLINGDATE = d\n");
  EXPECT_EQ(m.samplingDate, "d");
  EXPECT_TRUE(m.date.empty());
}

TEST(MaterialIdentificationPreV6, keywordWithoutValue_changesNothing) {
  EXPECT_TRUE(readPreV6("NAME =\nDATE\n").name.empty());
}

TEST(MaterialIdentificationPreV6, obsoleteKeywords_areReported) {
  const TKL::MessageCapture capture;
  readPreV6("CLASSIFICATION = 1\nMASTERFORMAT1 = 1\nMASTERFORMAT2 = 1\nMASTERFORMAT3 = 1\n");
  const char* const TAG = "[MaterialIdentification::readLinePreV6]";
  for (const std::string text : {"CLASSIFICATION is obsolete!", "MASTERFORMAT1 is obsolete!",
                                 "MASTERFORMAT2N is obsolete!", "MASTERFORMAT3 is obsolete!"})
    EXPECT_TRUE(capture.has(text, TKL::MSG_WARNING, TAG, 2)) << text;
}

TEST(MaterialIdentificationPreV6, unknownLine_isOnlyWarnedAbout) {
  const TKL::MessageCapture capture;
  readPreV6("FOO = 1\n");
  EXPECT_EQ(capture.count("Invalid keyword found in identification section 'FOO = 1'."), 1);
}

TEST(MaterialIdentificationPreV6, samplingMethod_mustBeANumberOfTheList) {
  const std::string text =
      "An unsigned int must be selected for sampling method! Please check Velmora 6 material file "
      "specification!";
  for (const std::string value : {"S_CAST", "-1", "4"}) {
    const Records records = failurePreV6("SAMPLINGMETHOD = " + value + "\n");
    EXPECT_TRUE(has(records, text, "[MaterialIdentification::readLinePreV6]")) << value;
    EXPECT_TRUE(has(records, CONTEXT, "[MaterialIdentification::read]")) << value;
  }
}

TEST(MaterialIdentificationPreV6, databaseType_isOneOfAList) {
  EXPECT_EQ(readPreV6("DBTYPE = Xelator-Standard::Betone\n").dbType, "Xelator-Standard::Betone");
  EXPECT_EQ(readPreV6("DBTYPE = Foo\n").dbType, "");
}

TEST(MaterialIdentificationPreV6, flags_haveTheOldWordsAndTheNewBits) {
  EXPECT_EQ(readPreV6("FLAGS = AIRTIGHT VAPORTIGHT WATERTIGHT WOODBASED\n").flags, 2U + 4U + 8U + 32U);
}

TEST(MaterialIdentificationPreV6, flagOnlyHygroscopic_isSkippedWithAWarning) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(readPreV6("FLAGS = ONLY_HYGROSCOPIC WOOD\n").flags, 16U);
  EXPECT_TRUE(capture.has("Flag ONLY_HYGROSCOPIC is no longer supported! Skipping it now.", TKL::MSG_WARNING,
                          "[MaterialIdentification::setFlagsPreV6] ", 2));
}

TEST(MaterialIdentificationPreV6, unknownFlag_isSkippedWithAWarning) {
  const TKL::MessageCapture capture;
  EXPECT_EQ(readPreV6("FLAGS = AIR_TIGHT AIR\n").flags, 1U);
  EXPECT_TRUE(capture.has("Unknown flag found! Skipping it for now...", TKL::MSG_WARNING,
                          "[MaterialIdentification::setFlagsPreV6] ", 2));
}

}  // namespace MM
