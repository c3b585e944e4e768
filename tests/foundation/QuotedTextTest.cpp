#include "foundation/QuotedText.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/Color.h"
#include "foundation/Message.h"
#include "foundation/Parameter.h"
#include "foundation/Path.h"
#include "foundation/StringUtilities.h"
#include "foundation/Unit.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace TKL {
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

TEST(PrintableMessage, fourThousandBytes_standWhole) {
  const std::string text(4000, 'a');
  EXPECT_EQ(printableMessage(text), text);
}

TEST(PrintableMessage, moreThanFourThousandBytes_becomeOneThousandAndDots) {
  EXPECT_EQ(printableMessage(std::string(4001, 'a')), std::string(1000, 'a') + "...");
}

TEST(PrintableMessage, everyMessage_isOne) {
  const MessageCapture capture;
  message("\x1b[31m" + std::string(5000, 'a'), MSG_WARNING, "[id]", 2);
  EXPECT_EQ(capture.messages.at(0).text, "?[31m" + std::string(995, 'a') + "...");
}

TEST(QuotedText, failuresOfConversions_quoteBadInput) {
  const std::string bad = "\x1b" + std::string(100000, 'a');
  const std::string quoted = "'?" + std::string(199, 'a') + "...'";
  const std::map<std::string, Path> places{{"DIR", "/db"}};
  std::string parameterText;
  Parameter().set("P", bad, &parameterText);
  std::vector<std::string> sections;
  std::istringstream lines(bad);
  const std::pair<std::string, std::string> texts[] = {
      {parameterText, "Error reading parameter from string " + quoted + "."},
      {thrownBy([&] { string2val<double>(bad); }).text, "Could not convert " + quoted + " into value."},
      {thrownBy([&] { Unit unit(bad); }).text, "Unit " + quoted + " not found."},
      {thrownBy([&] { Color::fromHtml(bad); }).text, "Invalid colour " + quoted + "!"},
      {thrownBy([&] { explode_sections(lines, {"A"}, sections, ";"); }).text,
       "Expected section header in first non-empty line:\n" + quoted},
      {thrownBy([&] { Path("$(" + bad + ")").withReplacedPlaceholders(places); }).text,
       "Unknown or undefined path placeholder " + quoted + ". Known placeholders are:\n$(DIR) = /db\n"}};
  for (const auto& [text, expected] : texts) EXPECT_EQ(text, expected);
}

}  // namespace
}  // namespace TKL
