#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "project/VelBoundaryCond.h"
#include "project/VelContactCond.h"
#include "project/VelFieldCond.h"
#include "project/VelInitialCond.h"
#include "project/VelSolutionDefinition.h"
#include "project/VelWallData.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

template <class Record>
struct Traits;

template <>
struct Traits<VelWallData> {
  static constexpr const char* TAG = "[VelWallData::read]";
  static constexpr const char* START = "NAME = n\n";
};
template <>
struct Traits<VelBoundaryCond> {
  static constexpr const char* TAG = "[VelBoundaryCond::read]";
  static constexpr const char* START = "NAME = n\n";
};
template <>
struct Traits<VelFieldCond> {
  static constexpr const char* TAG = "[VelFieldCond::read]";
  static constexpr const char* START = "TYPE = WATSOURCE\n";
};
template <>
struct Traits<VelInitialCond> {
  static constexpr const char* TAG = "[VelInitialCond::read]";
  static constexpr const char* START = "NAME = n\n";
};
template <>
struct Traits<VelContactCond> {
  static constexpr const char* TAG = "[VelContactCond::read]";
  static constexpr const char* START = "NAME = n\n";
};
template <>
struct Traits<VelSolutionDefinition> {
  static constexpr const char* TAG = "[VelSolutionDefinition::read]";
  static constexpr const char* START = "NAME = n\n";
};

template <class Record>
class ConditionReaders : public testing::Test {
 protected:
  static Thrown thrownBy(const std::string& line) {
    return thrownByReading<Record>(Traits<Record>::START + line);
  }
};

using Records = testing::Types<VelWallData, VelBoundaryCond, VelFieldCond, VelInitialCond, VelContactCond,
                               VelSolutionDefinition>;
TYPED_TEST_SUITE(ConditionReaders, Records);

}  // namespace

TYPED_TEST(ConditionReaders, lineWithoutEqualSign_fails) {
  EXPECT_EQ(this->thrownBy("loose words"),
            (Thrown{"Expected keyword, got 'loose words'!", Traits<TypeParam>::TAG}));
}

TYPED_TEST(ConditionReaders, keywordWithoutValue_fails) {
  EXPECT_EQ(this->thrownBy("NAME ="), (Thrown{"Missing value for keyword 'NAME'!", Traits<TypeParam>::TAG}));
}

TYPED_TEST(ConditionReaders, secondEqualSign_staysInTheName) {
  const std::string text = std::string(Traits<TypeParam>::START) + "NAME = a = b";
  EXPECT_EQ(readRecord<TypeParam>(text).name, "a = b");
}

TYPED_TEST(ConditionReaders, failure_knowsItsLine) {
  try {
    TypeParam record;
    record.read(SectionText(std::string(Traits<TypeParam>::START) + "loose words", 41));
    FAIL() << "nothing thrown";
  } catch (const TKL::Exception& exception) {
    EXPECT_EQ(exception.inputLine(), 42);
  }
}

TYPED_TEST(ConditionReaders, emptyKeyword_isNotAccepted) {
  // "= 5" has an empty keyword, which no list has
  if constexpr (std::is_same_v<TypeParam, VelContactCond>) {
    EXPECT_EQ(this->thrownBy("= 5"), (Thrown{"Invalid keyword '' in this section!", Traits<TypeParam>::TAG}));
  } else {
    TKL::MessageCapture capture;
    EXPECT_EQ(this->thrownBy("= 5"), nothingThrown());
    EXPECT_TRUE(capture.has("Invalid or deprecated keyword '' in this section!", TKL::MSG_WARNING,
                            Traits<TypeParam>::TAG, 3));
  }
}

TYPED_TEST(ConditionReaders, unknownKeyword_isWarnedAboutAndPassedOver) {
  if constexpr (!std::is_same_v<TypeParam, VelContactCond>) {
    TKL::MessageCapture capture;
    const std::string text = std::string(Traits<TypeParam>::START) + "COLOUR = red\nNAME = after";
    EXPECT_EQ(readRecord<TypeParam>(text).name, "after");
    EXPECT_TRUE(capture.has(UNKNOWN_KEYWORD, TKL::MSG_WARNING, Traits<TypeParam>::TAG, 3));
    EXPECT_EQ(capture.messages.size(), 1u);
  }
}

TYPED_TEST(ConditionReaders, keywordInLowerCase_isUnknown) {
  if constexpr (!std::is_same_v<TypeParam, VelContactCond>) {
    TKL::MessageCapture capture;
    readRecord<TypeParam>(std::string(Traits<TypeParam>::START) + "name = other");
    EXPECT_EQ(capture.count("Invalid or deprecated keyword 'name' in this section!"), 1);
  }
}

TEST(VelContactCond, unknownKeyword_fails) {
  EXPECT_EQ(thrownByReading<VelContactCond>("COLOUR = red"),
            (Thrown{"Invalid keyword 'COLOUR' in this section!", "[VelContactCond::read]"}));
}
