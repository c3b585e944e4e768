#include "foundation/UnitList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "foundation/Unit.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace TKL {
namespace {

double converted(double value, const char* source, const char* target) {
  UnitList::instance().convert(Unit(source), Unit(target), value);
  return value;
}

double special(double value, const char* source, const char* target) {
  UnitList::instance().convert_special(Unit(source), Unit(target), value);
  return value;
}

struct Relation {
  double factor = -99.0;
  int operation = -99;
};

Relation related(const UnitData& source, const UnitData& target) {
  Relation relation;
  UnitList::relate(source, target, relation.factor, relation.operation);
  return relation;
}

// One group with every kind of relation to the base.
const UnitData BASE{0, "base", 0, 1.0, UnitData::OP_NONE};
const UnitData PLUS{1, "plus", 0, 3.0, UnitData::OP_ADD};
const UnitData PLUS7{2, "plus7", 0, 7.0, UnitData::OP_ADD};
const UnitData MINUS{3, "minus", 0, 2.0, UnitData::OP_SUBTRACT};
const UnitData MINUS9{4, "minus9", 0, 9.0, UnitData::OP_SUBTRACT};
const UnitData TIMES{5, "times", 0, 4.0, UnitData::OP_MULTIPLY};
const UnitData OVER{6, "over", 0, 8.0, UnitData::OP_DIVIDE};
const UnitData ROOT{7, "root", 0, 0.0, UnitData::OP_SPECIAL};
const UnitData TIMES0{8, "times0", 0, 0.0, UnitData::OP_MULTIPLY};
const UnitData OVER0{9, "over0", 0, 0.0, UnitData::OP_DIVIDE};

void expectRelation(const UnitData& source, const UnitData& target, int operation, double factor) {
  const Relation relation = related(source, target);
  EXPECT_EQ(relation.operation, operation) << source.name << " to " << target.name;
  EXPECT_EQ(relation.factor, factor) << source.name << " to " << target.name;
}

Thrown relateError(const UnitData& source, const UnitData& target) {
  return thrownBy([&] { related(source, target); });
}

TEST(Thrown, callThatReturns_isToldApart) {
  EXPECT_EQ(thrownBy([] {}), (Thrown{"nothing thrown", ""}));
}

TEST(Thrown, otherText_isNotEqual) {
  EXPECT_FALSE(thrownBy([] { throw Exception("a", "[b]"); }) == (Thrown{"A", "[b]"}));
}

TEST(Unit, defaultIsUndefined) {
  EXPECT_EQ(Unit().id(), 0U);
  EXPECT_EQ(Unit().name(), "undefined");
}

TEST(Unit, isBuiltFromNameAndIndex) {
  EXPECT_EQ(Unit(Unit("mm").id()), Unit("mm"));
}

TEST(Unit, unitsOfOneGroupAreNotEqual) {
  EXPECT_NE(Unit("mm"), Unit("cm"));
}

TEST(Unit, baseOfMillimetreIsMetre) {
  EXPECT_EQ(Unit("mm").base(), Unit("m"));
  EXPECT_EQ(Unit("mm").base_id(), Unit("m").id());
}

TEST(Unit, baseUnitIsItsOwnBase) {
  EXPECT_EQ(Unit("K").base(), Unit("K"));
}

TEST(Unit, namesAreCaseSensitive) {
  EXPECT_EQ(thrownBy([] { Unit unit("c"); }), (Thrown{"Unit 'c' not found.", "[Unit::Unit]"}));
}

TEST(Unit, setWithUnknownName_throwsAndKeepsTheUnit) {
  Unit unit("mm");
  EXPECT_EQ(thrownBy([&] { unit.set("no such"); }), (Thrown{"Unit 'no such' not found.", "[Unit::set]"}));
  EXPECT_EQ(unit, Unit("mm"));
}

TEST(Unit, indexBehindTheLast_throws) {
  EXPECT_EQ(thrownBy([] { Unit unit(249U); }),
            (Thrown{"Unit index 249 out of range 0..248.", "[Unit::Unit]"}));
}

TEST(Unit, setWithIndexBehindTheLast_throwsAndKeepsTheUnit) {
  Unit unit("mm");
  EXPECT_EQ(thrownBy([&] { unit.set(4000000000U); }),
            (Thrown{"Unit index 4000000000 out of range 0..248.", "[Unit::set]"}));
  EXPECT_EQ(unit, Unit("mm"));
}

TEST(Unit, setTakesTheLastIndex) {
  Unit unit;
  unit.set(248U);
  EXPECT_EQ(unit.name(), "m2/m3");
}

TEST(UnitList, unknownName_givesNothing) {
  EXPECT_EQ(UnitList::instance().retrieve(std::string("mm/mK")), nullptr);
}

TEST(UnitList, indexOutOfRange_namesTheRange) {
  EXPECT_EQ(thrownBy([] { UnitList::instance().retrieve(249U); }),
            (Thrown{"[UnitList::retrieve]  Unit index 249 out of range 0..248!", "[UnitList::retrieve]"}));
}

TEST(UnitList, sameUnit_nothingToDo) {
  expectRelation(TIMES, TIMES, UnitData::OP_NONE, 1.0);
}

TEST(UnitList, baseToOffset_addsTheSignedOffset) {
  expectRelation(BASE, PLUS, UnitData::OP_ADD, 3.0);
  expectRelation(BASE, MINUS, UnitData::OP_ADD, -2.0);
}

TEST(UnitList, baseToFactor_multiplies) {
  expectRelation(BASE, TIMES, UnitData::OP_MULTIPLY, 4.0);
  expectRelation(BASE, OVER, UnitData::OP_MULTIPLY, 1.0 / 8.0);
}

TEST(UnitList, baseToBaseOfTheSameGroup_nothingToDo) {
  const UnitData secondBase{20, "second", 0, 1.0, UnitData::OP_NONE};
  expectRelation(BASE, secondBase, UnitData::OP_NONE, 1.0);
}

TEST(UnitList, plusToOffset_takesItsOwnOffsetAway) {
  expectRelation(PLUS, PLUS7, UnitData::OP_ADD, -3.0 + 7.0);
  expectRelation(PLUS, MINUS, UnitData::OP_ADD, -3.0 - 2.0);
}

TEST(UnitList, minusToOffset_addsItsOwnOffset) {
  expectRelation(MINUS, PLUS, UnitData::OP_ADD, 2.0 + 3.0);
  expectRelation(MINUS, MINUS9, UnitData::OP_ADD, 2.0 - 9.0);
}

TEST(UnitList, minusToBase_addsTheOffset) {
  expectRelation(MINUS, BASE, UnitData::OP_ADD, 2.0);
}

TEST(UnitList, plusToBase_addsTheOffsetToo) {
  expectRelation(PLUS, BASE, UnitData::OP_ADD, 3.0);
}

TEST(UnitList, timesToOthers_dividesFirst) {
  const UnitData times16{21, "times16", 0, 16.0, UnitData::OP_MULTIPLY};
  expectRelation(TIMES, times16, UnitData::OP_MULTIPLY, 0.25 * 16.0);
  expectRelation(TIMES, OVER, UnitData::OP_MULTIPLY, 0.25 / 8.0);
  expectRelation(TIMES, BASE, UnitData::OP_MULTIPLY, 0.25);
}

TEST(UnitList, overToOthers_multipliesFirst) {
  const UnitData over2{22, "over2", 0, 2.0, UnitData::OP_DIVIDE};
  expectRelation(OVER, TIMES, UnitData::OP_MULTIPLY, 8.0 * 4.0);
  expectRelation(OVER, over2, UnitData::OP_MULTIPLY, 8.0 / 2.0);
  expectRelation(OVER, BASE, UnitData::OP_MULTIPLY, 8.0);
}

TEST(UnitList, specialOnEitherSide_takesTheSpecialPath) {
  expectRelation(ROOT, OVER, UnitData::OP_SPECIAL, 1.0);
  expectRelation(BASE, ROOT, UnitData::OP_SPECIAL, 1.0);
}

TEST(UnitList, differentBases_cannotBeRelated) {
  EXPECT_EQ(thrownBy([] { converted(20.0, "C", "1/K"); }),
            (Thrown{"Can't relate unit [C] to [1/K]!", "[UnitList::relate_units]"}));
}

TEST(UnitList, offsetToFactor_isRefused) {
  const char* const text =
      "* and / operations not allowed when using + and - operations! (tried to convert [minus] to [over] )!";
  EXPECT_EQ(relateError(MINUS, OVER), (Thrown{text, "[UnitList::relate_units]"}));
}

TEST(UnitList, factorToOffset_isRefused) {
  const char* const text =
      "+ and - operations not allowed when using * and / operations! (tried to convert [times] to [plus] )!";
  EXPECT_EQ(relateError(TIMES, PLUS), (Thrown{text, "[UnitList::relate_units]"}));
}

TEST(UnitList, divisionByFactorZero_isRefused) {
  const auto divByZero = [](const char* names) {
    return Thrown{"Div by zero! (tried to convert " + std::string(names) + " )!", "[UnitList::relate_units]"};
  };
  EXPECT_EQ(relateError(BASE, OVER0), divByZero("[base] to [over0]"));
  EXPECT_EQ(relateError(TIMES0, BASE), divByZero("[times0] to [base]"));
  EXPECT_EQ(relateError(OVER, OVER0), divByZero("[over] to [over0]"));
}

TEST(UnitList, multiplicationWithFactorZero_isAllowed) {
  expectRelation(OVER0, BASE, UnitData::OP_MULTIPLY, 0.0);
}

TEST(UnitList, celsiusAndKelvin) {
  EXPECT_DOUBLE_EQ(converted(20.0, "C", "K"), 293.15);
  EXPECT_NEAR(converted(293.15, "K", "C"), 20.0, 1e-12);
}

TEST(UnitList, millimetreToCentimetre_isOneMultiplication) {
  double factor = 0.0;
  int operation = 0;
  UnitList::instance().relate_units(Unit("mm"), Unit("cm"), factor, operation);
  EXPECT_EQ(operation, 3);
  EXPECT_EQ(factor, (1.0 / 1e+03) * 1e+02);
}

TEST(UnitList, hourToMinute) {
  EXPECT_EQ(converted(1.0, "h", "min"), 60.0);
}

TEST(UnitList, minuteIsSixtySeconds) {
  EXPECT_EQ(converted(1.0, "min", "s"), 60.0);
}

TEST(UnitList, metreIsThousandMillimetres) {
  EXPECT_EQ(converted(1.0, "m", "mm"), 1000.0);
}

TEST(UnitList, failedConversion_keepsTheValue) {
  double value = 20.0;
  EXPECT_THROW(UnitList::instance().convert(Unit("C"), Unit("m"), value), Exception);
  EXPECT_THROW(UnitList::instance().convert(Unit("kg/m3"), Unit("log(kg/m3)"), value = -1.0), Exception);
  EXPECT_EQ(value, -1.0);
}

TEST(UnitList, logUnitsToBase_raiseTen) {
  EXPECT_DOUBLE_EQ(converted(0.0, "log(g/m3)", "g/m3"), 1.0);
  EXPECT_DOUBLE_EQ(converted(2.0, "log(kg/m3)", "kg/m3"), 100.0);
  EXPECT_DOUBLE_EQ(converted(2.0, "log(g/m3)", "kg/m3"), 100.0 / 1e3);
  EXPECT_DOUBLE_EQ(converted(2.0, "log(mg/m3)", "kg/m3"), 100.0 / 1e6);
  EXPECT_DOUBLE_EQ(converted(2.0, "log(µg/m3)", "kg/m3"), 100.0 / 1e9);
}

TEST(UnitList, baseToLogUnits_takesTheLogarithm) {
  EXPECT_EQ(converted(1.0, "kg/m3", "log(kg/m3)"), 0.0);
  EXPECT_DOUBLE_EQ(converted(10.0, "kg/m3", "log(g/m3)"), 4.0);
  EXPECT_DOUBLE_EQ(converted(10.0, "kg/m3", "log(mg/m3)"), 7.0);
  EXPECT_DOUBLE_EQ(converted(10.0, "kg/m3", "log(µg/m3)"), 10.0);
}

TEST(UnitList, rootUnits) {
  EXPECT_EQ(converted(3.0, "sqrt(s)", "s"), 9.0);
  EXPECT_EQ(converted(2.0, "sqrt(h)", "s"), 4.0 * 3600.0);
  EXPECT_EQ(converted(2.0, "sqrt(h)", "min"), 4.0 * 60.0);
  EXPECT_EQ(converted(9.0, "s", "sqrt(s)"), 3.0);
  EXPECT_EQ(converted(4.0, "h", "sqrt(h)"), 2.0);
  EXPECT_EQ(converted(1.0, "sqrt(h)", "sqrt(s)"), 60.0);
}

TEST(UnitList, rootOfNegative_throws) {
  const Thrown expected{"Trying to take square root of negative number!", "[UnitList::convert_special]"};
  EXPECT_EQ(thrownBy([] { converted(-1e-9, "s", "sqrt(s)"); }), expected);
  EXPECT_EQ(thrownBy([] { converted(-1e-9, "s", "sqrt(h)"); }), expected);
}

TEST(UnitList, rootOfZero_isZero) {
  EXPECT_EQ(converted(0.0, "s", "sqrt(h)"), 0.0);
}

TEST(UnitList, logarithmOfZeroOrNegative_throws) {
  const Thrown expected{"Trying to take logarithm of zero or negative number!",
                        "[UnitList::convert_special]"};
  for (const char* target : {"log(kg/m3)", "log(g/m3)", "log(mg/m3)", "log(µg/m3)"}) {
    EXPECT_EQ(thrownBy([&] { converted(0.0, "kg/m3", target); }), expected) << target;
    EXPECT_EQ(thrownBy([&] { converted(-1.0, "kg/m3", target); }), expected) << target;
  }
}

TEST(UnitList, specialPathServesPlainUnitsToo) {
  EXPECT_EQ(special(2.0, "h", "min"), 120.0);
}

TEST(UnitList, specialPathBetweenGroups_isRefused) {
  EXPECT_EQ(thrownBy([] { special(4.0, "sqrt(s)", "log(kg/m3)"); }),
            (Thrown{"Can't relate unit [s] to [kg/m3]!", "[UnitList::relate_units]"}));
}

TEST(UnitList, thereAndBack_isTheSameNumber_forAllPairsOfAGroup) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> numbers(0.5, 40.0);
  const UnitList& list = UnitList::instance();
  for (const auto& a : list) {
    for (const auto& b : list) {
      if (a->base_id != b->base_id) {
        continue;
      }
      const double start = numbers(random);
      double value = start;
      list.convert(Unit(a->id), Unit(b->id), value);
      list.convert(Unit(b->id), Unit(a->id), value);
      EXPECT_NEAR(value, start, 1e-11 * start) << a->name << " " << b->name;
    }
  }
}

TEST(UnitListDefinition, groupGivesBaseAndDerivedUnits) {
  UnitList list;
  list.read("m\t* 1e3 mm  / 60x min; K - 273.15 C");
  ASSERT_EQ(list.size(), 5U);
  EXPECT_EQ(list.retrieve(std::string("min"))->operation, UnitData::OP_DIVIDE);
  EXPECT_EQ(list.retrieve(std::string("min"))->factor, 60.0);
  EXPECT_EQ(list.retrieve(std::string("C"))->base_id, 3U);
}

TEST(UnitListDefinition, onlyFirstCharacterOfTheOperationCounts) {
  UnitList list;
  list.read("m +x 1 a -x 1 b *x 1 c /x 1 d %x 1 e x* 1 f");
  const int operations[] = {0, 1, 2, 3, 4, 5, 0};
  for (std::uint32_t i = 0; i < 7; ++i) {
    EXPECT_EQ(list.retrieve(i).operation, operations[i]) << i;
  }
}

TEST(UnitListDefinition, incompleteTripleEndsTheGroup) {
  UnitList list;
  list.read("- mm/mK; a * 2; b");
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list.retrieve(2U).name, "b");
}

TEST(UnitListDefinition, duplicateName_throws) {
  UnitList list;
  EXPECT_EQ(thrownBy([&] { list.read("m * 2 k; s / 3 m"); }),
            (Thrown{"Duplicate unit 'm' defined.", "[UnitList::read_default]"}));
}

TEST(UnitListDefinition, duplicateBase_throws) {
  UnitList list;
  EXPECT_EQ(thrownBy([&] { list.read("m;m"); }),
            (Thrown{"Duplicate unit 'm' defined.", "[UnitList::read_default]"}));
}

TEST(UnitListDefinition, factorZero_isSkippedWithWarningAndKeepsItsIndex) {
  MessageCapture capture;
  UnitList list;
  list.read("m * 0 a * 2 b");
  EXPECT_TRUE(capture.has("Invalid unit definition: factor = 0, but not a special unit conversion!",
                          MSG_WARNING, "UnitList::read_default", 2));
  EXPECT_EQ(list.retrieve(std::string("a")), nullptr);
  EXPECT_EQ(list.retrieve(std::string("b"))->id, 2U);
}

TEST(UnitListDefinition, factorZeroOfSpecialUnit_isNoWarning) {
  MessageCapture capture;
  UnitList list;
  list.read("m % 0 a");
  EXPECT_TRUE(capture.messages.empty());
  EXPECT_EQ(list.size(), 2U);
}

TEST(UnitListDefinition, factorThatIsNoNumber_throws) {
  UnitList list;
  EXPECT_EQ(thrownBy([&] { list.read("m * x a"); }),
            (Thrown{"Could not convert 'x' into value.", "[string2val]"}));
}

TEST(UnitListDefinition, emptyText_givesNoUnit) {
  UnitList list;
  list.read(" ;; ");
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.highestIndex(), 0U);
}

}  // namespace
}  // namespace TKL
