#include "material/KeywordList.h"
#include "material/KeywordTables.h"
#include "material/MaterialTestSupport.h"

namespace MM {

TEST(MaterialKeywordList, keyword_givesTheCurrentOneOfAliases) {
  EXPECT_EQ(KeywordList::Keyword("Material::ParaStorage", 2), "THETA_POR");
  EXPECT_EQ(KeywordList::Keyword("MoistureStorage::Functions", 2), "Theta_l(RH)");
  EXPECT_EQ(KeywordList::Keyword("MoistureTransport::ModelTypes", 0), "SERIAL_PARALLEL");
}

TEST(MaterialKeywordList, enumeration_tellsAliases) {
  bool deprecated = false;
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaStorage", "OPOR", &deprecated), 2);
  EXPECT_TRUE(deprecated);
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaStorage", "THETA_POR", &deprecated), 2);
  EXPECT_FALSE(deprecated);
  EXPECT_EQ(KeywordList::Enumeration("MoistureStorage::Functions", "Ol(RH)", &deprecated), 2);
  EXPECT_TRUE(deprecated);
}

TEST(MaterialKeywordList, enumeration_leavesTheFlagAloneOnFailure) {
  bool deprecated = true;
  EXPECT_TRUE(
      has(thrown([&] { KeywordList::Enumeration("Material::ParaStorage", "FOO", &deprecated); }),
          "Cannot determine enumeration value for enumeration type 'Material::ParaStorage' and keyword "
          "'FOO'.",
          "[KeywordList::Enumeration]"));
  EXPECT_TRUE(deprecated);
}

TEST(MaterialKeywordList, flagValues_areBits) {
  const char* const CATEGORY = "MaterialIdentification::Flags";
  EXPECT_EQ(KeywordList::Enumeration(CATEGORY, "AIR"), 1);
  EXPECT_EQ(KeywordList::Enumeration(CATEGORY, "AIR_TIGHT"), 2);
  EXPECT_EQ(KeywordList::Enumeration(CATEGORY, "VAPOR_TIGHT"), 4);
  EXPECT_EQ(KeywordList::Enumeration(CATEGORY, "WATER_TIGHT"), 8);
  EXPECT_EQ(KeywordList::Enumeration(CATEGORY, "FOILS"), 64);
  EXPECT_EQ(KeywordList::MaxIndex(CATEGORY), 64);
  EXPECT_EQ(KeywordList::MaxIndex("MaterialIdentification::FlagsPreV6"), 64);
  EXPECT_EQ(KeywordList::Keyword(CATEGORY, 8), "WATER_TIGHT");
}

TEST(MaterialKeywordList, flagCategory_hasNoKeywordForANumberThatIsNoBit) {
  EXPECT_TRUE(
      has(thrown([] { KeywordList::Keyword("MaterialIdentification::Flags", 3); }),
          "Cannot determine keyword for enumeration type 'MaterialIdentification::Flags' and index '3'.",
          "[KeywordList::Keyword]"));
}

TEST(MaterialKeywordList, unknownCategory_isRefused) {
  EXPECT_TRUE(has(thrown([] { KeywordList::MaxIndex("Foo"); }), "Invalid enumeration type 'Foo'.",
                  "[KeywordList::MaxIndex]"));
  EXPECT_TRUE(has(thrown([] { KeywordList::KeywordExists("Foo", "BAR"); }), "Invalid enumeration type 'Foo'.",
                  "[KeywordList::MaxIndex]"));
  EXPECT_TRUE(has(thrown([] { KeywordList::Enumeration("Foo", "BAR"); }), "Invalid enumeration type 'Foo'.",
                  "[KeywordList::MaxIndex]"));
}

TEST(MaterialKeywordList, keywordsOfTheProject_areUnknownHere) {
  EXPECT_THROW(KeywordList::MaxIndex("VelClimateCond::kind_t"), TKL::Exception);
}

TEST(MaterialKeywordList, tables_haveTheLengthOfTheirEnumerations) {
  EXPECT_EQ(KeywordList::MaxIndex("Material::Sections"), Material::NUM_S - 1);
  EXPECT_EQ(KeywordList::MaxIndex("Material::SectionsPreV6"), Material::NUM_SP - 1);
  EXPECT_EQ(KeywordList::MaxIndex("Material::ParaStorage"), 6);
  EXPECT_EQ(KeywordList::MaxIndex("Material::ParaTransport"), 21);
  EXPECT_EQ(KeywordList::MaxIndex("Material::ParaMechanical"), 8);
  EXPECT_EQ(KeywordList::MaxIndex("MaterialIdentification::Ident"), 25);
  EXPECT_EQ(KeywordList::MaxIndex("MaterialIdentification::HatchingType"),
            MaterialIdentification::NUM_HT - 1);
  EXPECT_EQ(KeywordList::MaxIndex("MaterialCategory::CategoryID"), MaterialCategory::NUM_MC - 1);
  EXPECT_EQ(KeywordList::MaxIndex("Foils::Param"), 8);
  EXPECT_EQ(KeywordList::MaxIndex("VaporContactResistanceModel::Param"), 7);
  EXPECT_EQ(KeywordList::MaxIndex("MeasuredData::ExperimentKeys"), 29);
}

TEST(MaterialKeywordList, everyKeyword_isFoundUnderItsIndex) {
  for (const KeywordTable& table : keywordTables()) {
    for (std::size_t i = 0; i < table.entries.size(); ++i) {
      const std::uint32_t index = table.isFlags ? 1U << i : static_cast<std::uint32_t>(i);
      const std::string keyword = KeywordList::Keyword(table.category, index);
      EXPECT_EQ(KeywordList::Enumeration(table.category, keyword), static_cast<std::int32_t>(index))
          << keyword;
    }
  }
}

TEST(MaterialKeywordList, enumerators_matchTheirKeywords) {
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaTransport", "LAMBDA_DESIGN"), Material::PT_LAMBDA_DESIGN);
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaTransport", "KLSAT"), Material::PT_KLEFF);
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaTransport", "KG_V"), Material::PT_KG_V);
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaTransport", "MEW_W"), Material::PT_MEW_W);
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaStorage", "CET"), Material::PS_CE);
  EXPECT_EQ(KeywordList::Enumeration("Material::ParaStorage", "O80"), Material::PS_THETA_80);
  EXPECT_EQ(KeywordList::Enumeration("Material::Sections", "VAPOR_CONTACT_RESISTANCE"),
            Material::S_VAPOR_CONTACT_RESISTANCE);
  EXPECT_EQ(KeywordList::Enumeration("Material::SectionsPreV6", "PCMMATERIAL"), Material::SP_PCMMATERIAL);
}

}  // namespace MM
