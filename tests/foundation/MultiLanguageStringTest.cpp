#include "foundation/MultiLanguageString.h"

#include <gtest/gtest.h>

#include "support/Thrown.h"

namespace TKL {
namespace {

TEST(MultiLanguageString, encodedText_givesEachLanguage) {
  const MultiLanguageString text("en:Brick|de:Ziegel");
  EXPECT_EQ(text.string("de"), "Ziegel");
  EXPECT_EQ(text.string("en"), "Brick");
}

TEST(MultiLanguageString, missingLanguage_takesTheFallback) {
  EXPECT_EQ(MultiLanguageString("en:Brick|de:Ziegel").string("fr", "en"), "Brick");
}

TEST(MultiLanguageString, missingFallback_takesTheCommonText) {
  EXPECT_EQ(MultiLanguageString("Stone|de:Ziegel").string("fr", "en"), "Stone");
}

TEST(MultiLanguageString, fallback_comesBeforeTheCommonText) {
  EXPECT_EQ(MultiLanguageString("Stone|de:Ziegel").string("fr", "de"), "Ziegel");
}

TEST(MultiLanguageString, nothingFits_isEmpty) {
  EXPECT_EQ(MultiLanguageString("de:Ziegel").string("fr", "en"), "");
  EXPECT_EQ(MultiLanguageString().string("en"), "");
}

TEST(MultiLanguageString, bothSides_areTrimmed) {
  EXPECT_EQ(MultiLanguageString(" de \t:  Ziegel rot \r| en:Brick").string("de"), "Ziegel rot");
}

TEST(MultiLanguageString, secondColon_belongsToTheText) {
  EXPECT_EQ(MultiLanguageString("en:a:b").string("en"), "a:b");
}

TEST(MultiLanguageString, emptyParts_areSkipped) {
  EXPECT_EQ(MultiLanguageString("Stone||  |").string("en"), "Stone");
}

TEST(MultiLanguageString, setEncodedString_replacesTheContent) {
  MultiLanguageString text("en:Brick");
  text.setEncodedString("de:Ziegel");
  EXPECT_EQ(text.string("en"), "");
}

TEST(MultiLanguageString, setString_addsALanguage) {
  MultiLanguageString text;
  EXPECT_TRUE(text.empty());
  text.setString("Brique", "fr");
  EXPECT_EQ(text.string("fr"), "Brique");
  EXPECT_FALSE(text.empty());
}

TEST(MultiLanguageString, all_isNoLanguageToSet) {
  MultiLanguageString text;
  EXPECT_EQ(thrownBy([&] { text.setString("x", "all"); }),
            (Thrown{"Cannot use 'all' as language ID for MultiLanguageString.",
                    "[MultiLanguageString::setString]"}));
}

TEST(MultiLanguageString, all_isNoLanguageToAskFor) {
  const MultiLanguageString text("Stone");
  const Thrown expected{"Cannot use 'all' as language ID for MultiLanguageString.",
                        "[MultiLanguageString::string]"};
  EXPECT_EQ(thrownBy([&] { text.string("all"); }), expected);
  EXPECT_EQ(thrownBy([&] { text.string("en", "all"); }), expected);
}

}  // namespace
}  // namespace TKL
