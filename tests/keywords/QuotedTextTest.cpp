#include "keywords/QuotedText.h"

#include <gtest/gtest.h>

namespace VELMORA {
namespace {

TEST(QuotedText, thousandBytes_standWhole) {
  const std::string text(1000, 'a');
  EXPECT_EQ(quotedText(text), text);
}

TEST(QuotedText, moreThanThousandBytes_becomeTwoHundredAndDots) {
  EXPECT_EQ(quotedText(std::string(1001, 'a')), std::string(200, 'a') + "...");
}

TEST(QuotedText, characterAcrossTheCut_isLeftOut) {
  const std::string text = std::string(199, 'a') + "\xC3\xA4" + std::string(1000, 'b');
  EXPECT_EQ(quotedText(text), std::string(199, 'a') + "...");
}

TEST(QuotedText, onlyContinuationBytes_areCutAllTheSame) {
  EXPECT_LE(quotedText(std::string(2000, '\x80')).size(), 203U);
  EXPECT_GE(quotedText(std::string(2000, '\x80')).size(), 190U);
}

TEST(QuotedText, controlBytes_becomeQuestionMarks) {
  EXPECT_EQ(quotedText(std::string("a\0b\x1b[2J\x7f", 8)), "a?b?[2J?");
}

TEST(QuotedText, layoutAndForeignCharacters_stand) {
  const std::string text = "a\tb\r\n\xC3\xA4\xFF";
  EXPECT_EQ(quotedText(text), text);
}

}  // namespace
}  // namespace VELMORA
