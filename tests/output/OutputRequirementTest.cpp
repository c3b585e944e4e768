#include "output/OutputRequirement.h"

#include <gtest/gtest.h>

#include <set>

namespace VELMORA {
namespace {

VelOutputFormat requirementFormat(VelOutputFormat::type_t type, int quantity) {
  VelOutputFormat format;
  format.type = type;
  format.quantity = quantity;
  return format;
}

std::set<int> quantitiesThatNeed(requirement_t requirement, VelOutputFormat::type_t type) {
  std::set<int> quantities;
  for (int quantity = -2; quantity < 60; ++quantity) {
    if (outputRequirement(requirementFormat(type, quantity)) == requirement) quantities.insert(quantity);
  }
  return quantities;
}

TEST(OutputRequirement, fields_needTheirBalanceEquations) {
  const auto type = VelOutputFormat::T_FIELD;
  EXPECT_EQ((std::set<int>{0, 1, 23, 26, 34, 35, 39, 44, 45, 46}), quantitiesThatNeed(REQ_ENERGY, type));
  EXPECT_EQ((std::set<int>{2, 3, 4, 5, 6, 7, 8, 9, 12, 13, 14, 24, 27, 36, 37, 38, 47}),
            quantitiesThatNeed(REQ_MOISTURE, type));
  EXPECT_EQ((std::set<int>{10, 11, 40, 41, 42, 43}), quantitiesThatNeed(REQ_AIR, type));
  EXPECT_EQ((std::set<int>{15, 16, 17, 18}), quantitiesThatNeed(REQ_SALT, type));
  EXPECT_EQ((std::set<int>{19, 20, 21, 22, 28}), quantitiesThatNeed(REQ_POLLUTANT, type));
  EXPECT_EQ((std::set<int>{31, 32, 33}), quantitiesThatNeed(REQ_ICE, type));
}

TEST(OutputRequirement, fluxes_needTheirBalanceEquations) {
  const auto type = VelOutputFormat::T_FLUX;
  EXPECT_EQ((std::set<int>{0, 10, 11}), quantitiesThatNeed(REQ_ENERGY, type));
  EXPECT_EQ((std::set<int>{1, 2, 3, 4, 9, 13, 14, 15}), quantitiesThatNeed(REQ_MOISTURE, type));
  EXPECT_EQ((std::set<int>{5, 12}), quantitiesThatNeed(REQ_AIR, type));
  EXPECT_EQ((std::set<int>{6, 7, 8}), quantitiesThatNeed(REQ_POLLUTANT, type));
}

TEST(OutputRequirement, fieldsWithoutStream_areNeverMet) {
  std::bitset<VelInit::NUM_B> all;
  all.set();
  for (const int quantity : {25, 29, 30, 48, -1}) {
    EXPECT_EQ(REQ_NEVER, outputRequirement(requirementFormat(VelOutputFormat::T_FIELD, quantity)))
        << quantity;
  }
  EXPECT_EQ(REQ_NEVER, outputRequirement(requirementFormat(VelOutputFormat::T_FLUX, 16)));
  EXPECT_EQ(REQ_NEVER, outputRequirement(requirementFormat(VelOutputFormat::NUM_T, 0)));
  EXPECT_FALSE(isMet(REQ_NEVER, all));
}

TEST(OutputRequirement, eachEquation_isMetByItsOwnBitOnly) {
  const std::pair<requirement_t, VelInit::balance_equations_t> PAIRS[] = {
      {REQ_ENERGY, VelInit::B_ENERGY},
      {REQ_MOISTURE, VelInit::B_MOISTURE},
      {REQ_AIR, VelInit::B_AIR},
      {REQ_SALT, VelInit::B_SALT},
      {REQ_POLLUTANT, VelInit::B_POLLUTANT}};
  for (const auto& [requirement, bit] : PAIRS) {
    std::bitset<VelInit::NUM_B> only;
    only.set(bit);
    EXPECT_TRUE(isMet(requirement, only));
    EXPECT_FALSE(isMet(requirement, ~only));
  }
}

TEST(OutputRequirement, ice_needsMoistureToo) {
  std::bitset<VelInit::NUM_B> balances;
  balances.set(VelInit::B_ICE);
  EXPECT_FALSE(isMet(REQ_ICE, balances));
  balances.set(VelInit::B_MOISTURE);
  EXPECT_TRUE(isMet(REQ_ICE, balances));
  balances.reset(VelInit::B_ICE);
  EXPECT_FALSE(isMet(REQ_ICE, balances));
}

}  // namespace
}  // namespace VELMORA
