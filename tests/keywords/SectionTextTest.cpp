#include "keywords/SectionText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "keywords/UnknownKeywords.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using TKL::Thrown;
using TKL::thrownBy;

const char* const ID = "[SectionTextTest]";

std::vector<std::string> textsOf(const SectionText& text) {
  std::vector<std::string> texts;
  for (const TextLine& line : text) {
    texts.push_back(line.text);
  }
  return texts;
}

KeywordLine keywordLine(const TextLine& line) {
  return splitKeywordLine(line, ID);
}

TEST(SectionText, lines_areTrimmedAndNumbered) {
  const SectionText text(" a = 1\r\n\n\tb", 7);
  EXPECT_EQ(textsOf(text), (std::vector<std::string>{"a = 1", "", "b"}));
  EXPECT_EQ(text.begin()->number, 7);
  EXPECT_EQ((text.end() - 1)->number, 9);
}

TEST(SectionText, lastLineFeed_startsNoLine) {
  EXPECT_EQ(SectionText("a\n").size(), 1U);
}

TEST(SectionText, emptyText_hasNoLines) {
  EXPECT_TRUE(SectionText("").empty());
}

TEST(SectionText, append_keepsTheNumber) {
  SectionText text;
  text.append({"a", 42});
  EXPECT_EQ(text.begin()->number, 42);
}

TEST(KeywordLine, cutsAtTheFirstEqualSign) {
  const TextLine line{"NAME = a=b", 3};
  const KeywordLine cut = keywordLine(line);
  EXPECT_EQ(cut.keyword, "NAME");
  EXPECT_EQ(cut.value, "a=b");
  EXPECT_EQ(cut.line, &line);
}

TEST(KeywordLine, withoutEqualSign_fails) {
  EXPECT_EQ(thrownBy([] {
              keywordLine({"some text", 1});
            }),
            (Thrown{"Expected keyword, got 'some text'!", ID}));
}

TEST(KeywordLine, withoutValue_fails) {
  EXPECT_EQ(thrownBy([] {
              keywordLine({"NAME =  ", 1});
            }),
            (Thrown{"Missing value for keyword 'NAME'!", ID}));
}

TEST(ForEachLine, lineNumber_goesAlongWithTheException) {
  const SectionText text("a\nb\nc", 10);
  try {
    forEachLine(text, [](const TextLine& line) {
      if (line.text == "b") {
        throw TKL::Exception("bad", ID);
      }
    });
    FAIL() << "nothing thrown";
  } catch (const TKL::Exception& exception) {
    EXPECT_EQ(exception.inputLine(), 11);
    EXPECT_STREQ(exception.what(), "bad");
  }
}

TEST(ForEachLine, lineNumberOfAnInnerCall_stays) {
  const SectionText outer("a", 10);
  const SectionText inner("x", 99);
  try {
    forEachLine(outer, [&](const TextLine&) {
      forEachLine(inner, [](const TextLine&) { throw TKL::Exception("bad", ID); });
    });
    FAIL() << "nothing thrown";
  } catch (const TKL::Exception& exception) {
    EXPECT_EQ(exception.inputLine(), 99);
  }
}

TEST(ForEachLine, goesThroughAllLinesInOrder) {
  std::string seen;
  forEachLine(SectionText("a\nb\nc"), [&](const TextLine& line) { seen += line.text; });
  EXPECT_EQ(seen, "abc");
}

TEST(ForEachKeywordLine, handsOverKeywordsAndValues) {
  std::string seen;
  forEachKeywordLine(SectionText("A = 1\nB = 2"), ID,
                     [&](const KeywordLine& line) { seen += line.keyword + line.value; });
  EXPECT_EQ(seen, "A1B2");
}

TEST(ForEachKeywordLine, badLine_failsWithItsNumber) {
  try {
    forEachKeywordLine(SectionText("A = 1\nB"), ID, [](const KeywordLine&) {});
    FAIL() << "nothing thrown";
  } catch (const TKL::Exception& exception) {
    EXPECT_EQ(exception.inputLine(), 2);
    EXPECT_STREQ(exception.what(), "Expected keyword, got 'B'!");
    EXPECT_EQ(exception.location(), ID);
  }
}

TEST(UnknownKeyword, isAWarningOfLevelThree) {
  const TKL::MessageCapture capture;
  warnUnknownKeyword({"FOO", "1", nullptr}, ID);
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'FOO' in this section!", TKL::MSG_WARNING, ID, 3));
}

TEST(UnknownKeyword, recordCountsAndKeepsTheFirst) {
  const TKL::MessageCapture capture;
  unknownKeywords() = UnknownKeywords{};
  const TextLine first{"FOO = 1", 12};
  const TextLine second{"BAR = 1", 30};
  warnUnknownKeyword({"FOO", "1", &first}, ID);
  warnUnknownKeyword({"BAR", "1", &second}, ID);
  EXPECT_EQ(unknownKeywords().count, 2);
  EXPECT_EQ(unknownKeywords().firstKeyword, "FOO");
  EXPECT_EQ(unknownKeywords().firstLine, 12);
  unknownKeywords() = UnknownKeywords{};
  EXPECT_EQ(unknownKeywords().count, 0);
}

TEST(IsYes, inAnyCaseAndNothingElse) {
  EXPECT_TRUE(isYes("yes"));
  EXPECT_TRUE(isYes("YES"));
  for (const char* value : {"true", "1", "no", "", "yes "}) {
    EXPECT_FALSE(isYes(value)) << value;
  }
}

TEST(ReadParameter, takesNumberUnitAndName) {
  TKL::Parameter parameter;
  readParameter({"START", "2 h", nullptr}, parameter, ID);
  EXPECT_EQ(parameter.name, "START");
  EXPECT_EQ(parameter.value, 7200.0);
  EXPECT_EQ(parameter.IO_unit.name(), "h");
}

TEST(ReadParameter, badNumberOrUnit_fails) {
  for (const std::string value : {"x h", "2", "2 nounit"}) {
    TKL::Parameter parameter;
    EXPECT_EQ(thrownBy([&] {
                readParameter({"START", value, nullptr}, parameter, ID);
              }),
              (Thrown{"Invalid parameter value '" + value + "' for keyword 'START'!", ID}));
    EXPECT_FALSE(parameter.isSet());
  }
}

}  // namespace
}  // namespace VELMORA
