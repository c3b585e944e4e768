#include "keywords/KeywordList.h"

#include <gtest/gtest.h>

#include "keywords/KeywordTables.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using TKL::Thrown;
using TKL::thrownBy;

TEST(KeywordList, keyword_isTheCurrentOneOfSeveral) {
  EXPECT_EQ(KeywordList::Keyword("VelBoundaryCond::flag_t", 1), "INCLUDE_RH_CLOUD");
  EXPECT_EQ(KeywordList::Keyword("VelClimateCond::condition_t", 0), "TEMPER");
}

TEST(KeywordList, keyword_mayBeginWithADigit) {
  EXPECT_EQ(KeywordList::Keyword("VelClimateCond::kind_t", 2), "2SINUS");
}

TEST(KeywordList, keyword_highestIndex_isThere) {
  EXPECT_EQ(KeywordList::Keyword("VelOutputFormat::field_t", 47), "DEW_POINT");
}

TEST(KeywordList, keyword_aboveHighestIndex_throws) {
  EXPECT_EQ(
      thrownBy([] { KeywordList::Keyword("VelOutputFormat::field_t", 48); }),
      (Thrown{"Cannot determine keyword for enumeration type 'VelOutputFormat::field_t' and index '48'.",
              "[KeywordList::Keyword]"}));
}

TEST(KeywordList, keyword_negativeIndexAsUnsigned_throws) {
  EXPECT_EQ(thrownBy([] { KeywordList::Keyword("VelDisc::geometry_t", static_cast<std::uint32_t>(-1)); }),
            (Thrown{"Cannot determine keyword for enumeration type 'VelDisc::geometry_t' and index "
                    "'4294967295'.",
                    "[KeywordList::Keyword]"}));
}

TEST(KeywordList, keyword_unknownCategory_throwsItsOwnMessage) {
  EXPECT_EQ(thrownBy([] { KeywordList::Keyword("Nothing::here_t", 0); }),
            (Thrown{"Cannot determine keyword for enumeration type 'Nothing::here_t' and index '0'.",
                    "[KeywordList::Keyword]"}));
}

TEST(KeywordList, category_isCaseSensitive) {
  EXPECT_EQ(thrownBy([] { KeywordList::MaxIndex("veldisc::geometry_t"); }),
            (Thrown{"Invalid enumeration type 'veldisc::geometry_t'.", "[KeywordList::MaxIndex]"}));
}

TEST(KeywordList, enumeration_currentKeyword_clearsDeprecated) {
  bool deprecated = true;
  EXPECT_EQ(KeywordList::Enumeration("VelClimateCond::condition_t", "TEMPER", &deprecated), 0);
  EXPECT_FALSE(deprecated);
}

TEST(KeywordList, enumeration_alias_setsDeprecated) {
  bool deprecated = false;
  EXPECT_EQ(KeywordList::Enumeration("VelClimateCond::condition_t", "Temper", &deprecated), 0);
  EXPECT_TRUE(deprecated);
}

TEST(KeywordList, enumeration_aliasOfTwoRows_isTheLowerIndex) {
  bool deprecated = false;
  EXPECT_EQ(KeywordList::Enumeration("VelSelection::assignment_t", "OUTPUT", &deprecated), 5);
  EXPECT_TRUE(deprecated);
}

TEST(KeywordList, enumeration_withoutFlag_isTheSame) {
  EXPECT_EQ(KeywordList::Enumeration("VelSelection::assignment_t", "FLUXOUTPUT"), 6);
}

TEST(KeywordList, enumeration_categoryDecides) {
  EXPECT_EQ(KeywordList::Enumeration("VelClimateCond::condition_t", "GASPRESS"), 21);
  EXPECT_EQ(KeywordList::Enumeration("VelInitialCond::condition_t", "GASPRESS"), 5);
  EXPECT_EQ(KeywordList::Enumeration("VelOutputFormat::field_t", "GASPRESS"), 10);
}

TEST(KeywordList, enumeration_unknownKeyword_throws) {
  EXPECT_EQ(
      thrownBy([] { KeywordList::Enumeration("VelDisc::geometry_t", "SPHERE"); }),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelDisc::geometry_t' and keyword "
              "'SPHERE'.",
              "[KeywordList::Enumeration]"}));
}

TEST(KeywordList, enumeration_endlessKeyword_isQuotedShort) {
  EXPECT_EQ(thrownBy([] {
              KeywordList::Enumeration("VelDisc::geometry_t", "\x1b" + std::string(100000, 'a'));
            }).text,
            "Cannot determine enumeration value for enumeration type 'VelDisc::geometry_t' and keyword '?" +
                std::string(199, 'a') + "...'.");
}

TEST(KeywordList, enumeration_failure_leavesDeprecatedAlone) {
  for (bool before : {false, true}) {
    bool deprecated = before;
    EXPECT_THROW(KeywordList::Enumeration("VelDisc::geometry_t", "SPHERE", &deprecated), TKL::Exception);
    EXPECT_EQ(deprecated, before);
  }
}

TEST(KeywordList, enumeration_unknownCategory_isAnInvalidType) {
  EXPECT_EQ(thrownBy([] { KeywordList::Enumeration("VelDisc::shape_t", "PLANE2D"); }),
            (Thrown{"Invalid enumeration type 'VelDisc::shape_t'.", "[KeywordList::MaxIndex]"}));
}

TEST(KeywordList, enumeration_emptyKeyword_matchesNothing) {
  EXPECT_FALSE(KeywordList::KeywordExists("VelClimateCond::condition_t", ""));
}

TEST(KeywordList, enumeration_comparesWholeWords) {
  EXPECT_FALSE(KeywordList::KeywordExists("VelClimateCond::condition_t", "TEMP"));
  EXPECT_FALSE(KeywordList::KeywordExists("VelClimateCond::condition_t", "TEMPERA"));
}

TEST(KeywordList, enumeration_comparesCase) {
  EXPECT_FALSE(KeywordList::KeywordExists("VelClimateCond::condition_t", "temper"));
}

TEST(KeywordList, enumeration_wholeTableEntry_isNoKeyword) {
  EXPECT_FALSE(KeywordList::KeywordExists("VelSelection::assignment_t", "FIELDOUTPUT  OUTPUT"));
}

TEST(KeywordList, description_sentence_clearsFlag) {
  bool noDescription = true;
  EXPECT_EQ(KeywordList::Description("VelDisc::geometry_t", 1, &noDescription),
            "3D construction (rotation symmetric)");
  EXPECT_FALSE(noDescription);
}

TEST(KeywordList, description_keywordItself_setsFlag) {
  bool noDescription = false;
  EXPECT_EQ(KeywordList::Description("VelInit::sections_t", 1, &noDescription), "SOLVER_SETTINGS");
  EXPECT_TRUE(noDescription);
}

TEST(KeywordList, description_keywordItself_inSixCategories) {
  for (const char* category :
       {"VelBoundaryCond::id_name_t", "VelConditions::defaultInitialCond_t", "VelInit::sections_t",
        "VelOutputs::outputSections_t", "VelOutputs::ThawBeginKind", "VelSelection::location_t"}) {
    bool noDescription = false;
    EXPECT_EQ(KeywordList::Description(category, 0, &noDescription), KeywordList::Keyword(category, 0));
    EXPECT_TRUE(noDescription) << category;
  }
}

TEST(KeywordList, description_none_throwsAndClearsFlag) {
  for (const std::string category :
       {"VelConditions::conditionList_t", "VelConditions::conditionType_t",
        "VelConditions::newConditionList_t", "VelInit::balance_equations_t", "VelProject::projectParts_t"}) {
    bool noDescription = true;
    EXPECT_EQ(thrownBy([&] { KeywordList::Description(category, 0, &noDescription); }),
              (Thrown{"Cannot determine description for enumeration type '" + category + "' and index '0'.",
                      "[KeywordList::Description]"}));
    EXPECT_FALSE(noDescription) << category;
  }
}

TEST(KeywordList, description_indexOutOfRange_throwsAndClearsFlag) {
  bool noDescription = true;
  EXPECT_EQ(thrownBy([&] { KeywordList::Description("VelInit::sections_t", 3, &noDescription); }),
            (Thrown{"Cannot determine description for enumeration type 'VelInit::sections_t' and index '3'.",
                    "[KeywordList::Description]"}));
  EXPECT_FALSE(noDescription);
}

TEST(KeywordList, description_unknownCategory_throwsItsOwnMessage) {
  EXPECT_EQ(thrownBy([] { KeywordList::Description("Nothing::here_t", 7); }),
            (Thrown{"Cannot determine description for enumeration type 'Nothing::here_t' and index '7'.",
                    "[KeywordList::Description]"}));
}

TEST(KeywordList, maxIndex_isTheHighestIndexAndNotTheCount) {
  EXPECT_EQ(KeywordList::MaxIndex("VelDisc::geometry_t"), 1);
  EXPECT_EQ(KeywordList::MaxIndex("VelOutputFormat::field_t"), 47);
}

TEST(KeywordList, keywordExists_aliasCounts) {
  EXPECT_TRUE(KeywordList::KeywordExists("VelClimateCond::condition_t", "VertRain"));
}

TEST(KeywordList, keywordExists_unknownCategory_throws) {
  EXPECT_EQ(thrownBy([] { KeywordList::KeywordExists("Nothing::here_t", "X"); }),
            (Thrown{"Invalid enumeration type 'Nothing::here_t'.", "[KeywordList::MaxIndex]"}));
}

TEST(KeywordTables, errorString_hasFortyCharacters) {
  EXPECT_EQ(KEYWORD_ERROR_STRING, "KEYWORD_ERROR_STRING: Invalid type index");
  EXPECT_EQ(KEYWORD_ERROR_STRING.size(), 40U);
}

TEST(KeywordTables, categoryNumber_isThePositionInTheList) {
  EXPECT_EQ(categoryNumber("Interface::type_t"), 0);
  EXPECT_EQ(categoryNumber("VelClimateCond::condition_t"), 14);
  EXPECT_EQ(categoryNumber("VelWallData::para_t"), 46);
  EXPECT_EQ(categoryNumber("VelWallData"), -1);
}

TEST(KeywordTables, outOfRange_givesErrorString) {
  EXPECT_EQ(keywordString(25, 2), KEYWORD_ERROR_STRING);
  EXPECT_EQ(primaryKeyword(25, 2), KEYWORD_ERROR_STRING);
  EXPECT_EQ(keywordString(-1, 0), KEYWORD_ERROR_STRING);
  EXPECT_EQ(primaryKeyword(47, 0), KEYWORD_ERROR_STRING);
}

}  // namespace
}  // namespace VELMORA
