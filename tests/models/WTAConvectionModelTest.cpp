#include "models/WTAConvectionModel.h"

#include <cmath>
#include <sstream>

#include "foundation/PhysicalConstants.h"
#include "models/ModelBench.h"

namespace VELMORA {

namespace {

const char* const LEAK_TEXT =
    "TYPE = CONVECTIVE_SOURCE\nNAME = leak\nSTART_TIME = 1 d\nEND_TIME = 2 d\nFLAGS = CONVECTION_X\n"
    "CMC_INDOOR_TEMPER = room\nCMC_OUTDOOR_TEMPER = outside\nCMC_INDOOR_RELHUM = humidity\n"
    "CMP_Q50 = 3 m3/m2h\nCMP_HEIGHT = 5 m\nCMP_DIFFPRESSURE_MECH = 2 Pa\n";

/// Two rows and three columns of brick between a room of 20 C, 50 % and -5 C outside.
class WTAModel : public ModelBench {
 protected:
  WTAModel() : climates(3) {
    draw({"BBB", "BBB"});
    condition.name = "leak";
    condition.condition = VelFieldCond::C_CONVECTIVE_SOURCE;
    climate(0, "room", VelClimateCond::C_TEMPER, Ti);
    climate(1, "outside", VelClimateCond::C_TEMPER, To);
    climate(2, "humidity", VelClimateCond::C_RELHUM, RHi);
    model.read(SectionText(LEAK_TEXT));
    model.assignClimateCond("leak", climates);
    model.prepare(condition, all(), indexMatrix, elements);
    for (std::size_t e = 0; e < T.size(); ++e) T[e] = 275.0 + static_cast<double>(e);
  }
  void climate(std::size_t n, const char* name, VelClimateCond::condition_t type, double value) {
    climates[n].name = name;
    climates[n].condition = type;
    climates[n].currentValue = value;
  }
  void calculate() { model.calculate(0.0, condition, elements, T); }
  TKL::Thrown failure() {
    return TKL::thrownBy([this] { calculate(); });
  }
  static double rhoSat(double temperature) { return TKL::pSat(temperature) / (461.89 * temperature); }

  static constexpr double Ti = 293.15, To = 268.15, RHi = 0.5;
  std::vector<VelClimateCond> climates;
  WTAConvectionModel model;
};

}  // namespace

// ---- calculation

TEST_F(WTAModel, warmHouse_pressesAirThroughTheLeak) {
  calculate();
  const double dp = (Ti - To) / Ti * 9.807 * 5.0 / 2 * 1.3 + 2.0;
  EXPECT_NEAR(model.convectiveAirFlow, dp * 3.0 / 3600 / 750, 1e-18);
}

TEST_F(WTAModel, vapourAboveSaturationAtTheColdestElement_condenses) {
  calculate();
  const double dp = (Ti - To) / Ti * 9.807 * 5.0 / 2 * 1.3 + 2.0;
  const double excess = RHi * rhoSat(Ti) - rhoSat(275.0);
  ASSERT_GT(excess, 0.0);
  const double thickness = 0.1 + 0.2;  // of the rows
  EXPECT_NEAR(model.convectiveMoistureSource, excess * dp * 3.0 / 3600 / 750 / thickness, 1e-20);
  EXPECT_DOUBLE_EQ(model.minTemperature, 275.0);
  EXPECT_DOUBLE_EQ(model.rhoVaporAtMin, rhoSat(275.0));
}

TEST_F(WTAModel, equalTemperaturesWithoutFans_moveNothing) {
  climates[1].currentValue = Ti;
  model.definition.para[LeakageDefinition::CMP_DIFFPRESSURE_MECH].value = 0.0;
  calculate();
  EXPECT_EQ(model.convectiveAirFlow, 0.0);
  EXPECT_EQ(model.convectiveMoistureSource, 0.0);
}

TEST_F(WTAModel, coldHouseWithoutFans_movesNothing) {
  climates[1].currentValue = Ti + 10.0;
  model.definition.para[LeakageDefinition::CMP_DIFFPRESSURE_MECH].value = 0.0;
  calculate();
  EXPECT_EQ(model.convectiveAirFlow, 0.0);
  EXPECT_EQ(model.convectiveMoistureSource, 0.0);
}

TEST_F(WTAModel, dryAir_flowsWithoutCondensate) {
  climates[2].currentValue = 0.2;
  calculate();
  EXPECT_GT(model.convectiveAirFlow, 0.0);
  EXPECT_EQ(model.convectiveMoistureSource, 0.0);
}

TEST_F(WTAModel, flowThatHasEnded_leavesNothingOfItself) {
  calculate();
  ASSERT_GT(model.convectiveMoistureSource, 0.0);
  climates[1].currentValue = 350.0;
  calculate();
  EXPECT_EQ(model.convectiveAirFlow, 0.0);
  EXPECT_EQ(model.convectiveMoistureSource, 0.0);
}

TEST_F(WTAModel, missingClimate_isNamedByItsKeyword) {
  const auto missing = [](const std::string& keyword) {
    return TKL::Thrown{
        "Error in in field condition 'leak' with type 'CONVECTIVE_SOURCE'.\nClimate condition of "
        "type '" +
            keyword + "' needs to be specified!",
        "[WTAConvectionModel::calculate]"};
  };
  model.indoorRelHum = nullptr;
  EXPECT_EQ(failure(), missing("CMC_INDOOR_RELHUM"));
  model.outdoorTemperature = nullptr;
  EXPECT_EQ(failure(), missing("CMC_OUTDOOR_TEMPER"));
  model.indoorTemperature = nullptr;
  EXPECT_EQ(failure(), missing("CMC_INDOOR_TEMPER"));
}

// ---- preparation

TEST_F(WTAModel, elements_areTakenRowByRow) {
  EXPECT_EQ(model.elementIndices, (std::vector<std::int32_t>{0, 1, 2, 3, 4, 5}));
}

TEST_F(WTAModel, thicknessAlongX_isThatOfTheFirstRow) {
  model.clear();
  condition.flags.set(VelFieldCond::F_CONVECTION_X);
  model.prepare(condition, {1, 0, 2, 1}, indexMatrix, elements);
  EXPECT_TRUE(model.flowInX);
  EXPECT_NEAR(model.thickness, 0.02 + 0.03, 1e-15);
}

TEST_F(WTAModel, thicknessOfOneCell_isItsHeight) {
  model.clear();
  model.prepare(condition, {1, 1, 1, 1}, indexMatrix, elements);
  EXPECT_NEAR(model.thickness, 0.2, 1e-15);
}

TEST_F(WTAModel, elementWithoutMaterial_isRefused) {
  const TKL::Thrown refused{
      "Invalid field condition assignment of type FC_CONVECTIVE_SOURCE, no material assigned for 'leak'.",
      "[WTAConvectionModel::prepare]"};
  model.clear();
  elements[4].material = nullptr;
  EXPECT_EQ(TKL::thrownBy([&] { model.prepare(condition, all(), indexMatrix, elements); }), refused);
  draw({".B"});
  model.clear();
  EXPECT_EQ(TKL::thrownBy([&] { model.prepare(condition, all(), indexMatrix, elements); }), refused);
}

// ---- links

TEST_F(WTAModel, climate_isFoundByNameAndType) {
  EXPECT_EQ(model.indoorTemperature, &climates[0]);
  EXPECT_EQ(model.outdoorTemperature, &climates[1]);
  EXPECT_EQ(model.indoorRelHum, &climates[2]);
}

TEST_F(WTAModel, climateOfAnotherType_isRefused) {
  climates[2].condition = VelClimateCond::C_VAPPRESS;
  EXPECT_EQ(
      TKL::thrownBy([&] { model.assignClimateCond("leak", climates); }),
      (TKL::Thrown{"Invalid climate condition assignment with name 'humidity', should be of type 'RELHUM'",
                   "[WTAConvectionModel::assignClimateCond]"}));
  climates[0].name = "elsewhere";
  EXPECT_EQ(TKL::thrownBy([&] { model.assignClimateCond("leak", climates); }),
            (TKL::Thrown{"Invalid climate condition assignment with name 'room', should be of type 'TEMPER'",
                         "[WTAConvectionModel::assignClimateCond]"}));
}

// ---- text

TEST_F(WTAModel, block_isReadWithItsOwnKeywords) {
  const LeakageDefinition& leak = model.definition;
  EXPECT_EQ(leak.name, "leak");
  EXPECT_DOUBLE_EQ(leak.startTime.value, 86400.0);
  EXPECT_DOUBLE_EQ(leak.endTime.value, 2 * 86400.0);
  EXPECT_TRUE(leak.flags[VelFieldCond::F_CONVECTION_X]);
  EXPECT_DOUBLE_EQ(leak.para[LeakageDefinition::CMP_HEIGHT].value, 5.0);
  EXPECT_DOUBLE_EQ(leak.para[LeakageDefinition::CMP_DIFFPRESSURE_MECH].value, 2.0);
  EXPECT_DOUBLE_EQ(leak.leakCoefficient, 3.0 / 3600 / 750);
}

TEST_F(WTAModel, writtenBlock_readsBack) {
  std::ostringstream text;
  model.write(text);
  WTAConvectionModel copy;
  copy.read(SectionText(text.str()));
  std::ostringstream again;
  copy.write(again);
  EXPECT_EQ(again.str(), text.str());
  EXPECT_EQ(copy.definition.climateNames, model.definition.climateNames);
  EXPECT_DOUBLE_EQ(copy.definition.leakCoefficient, model.definition.leakCoefficient);
  EXPECT_EQ(copy.definition.flags, model.definition.flags);
}

TEST_F(WTAModel, streamThatTakesNothing_isReported) {
  std::ostringstream text;
  text.setstate(std::ios::badbit);
  EXPECT_EQ(TKL::thrownBy([&] { model.write(text); }),
            (TKL::Thrown{"Field condition 'leak' cannot be written.", "WTAConvectionModel::write"}));
}

TEST_F(WTAModel, badValue_isReportedAndFails) {
  const TKL::Thrown failed{"Invalid parameter value 'much' for keyword 'CMP_Q50'!",
                           "[WTAConvectionModel::read]"};
  EXPECT_EQ(TKL::thrownBy([&] { model.read(SectionText("CMP_Q50 = much")); }), failed);
  EXPECT_TRUE(capture.has(failed.text, TKL::MSG_ERROR, failed.location, -1));
  EXPECT_EQ(
      TKL::thrownBy([&] { model.read(SectionText("START_TIME = 1 Q")); }),
      (TKL::Thrown{"Invalid parameter value '1 Q' for keyword 'START_TIME'!", "[WTAConvectionModel::read]"}));
}

TEST_F(WTAModel, lineThatIsNoKeywordLine_fails) {
  EXPECT_EQ(TKL::thrownBy([&] { model.read(SectionText("CMP_Q50")); }),
            (TKL::Thrown{"Expected keyword, got 'CMP_Q50'!", "[WTAConvectionModel::read]"}));
  EXPECT_EQ(TKL::thrownBy([&] { model.read(SectionText("CMP_Q50 =")); }),
            (TKL::Thrown{"Missing value for keyword 'CMP_Q50'!", "[WTAConvectionModel::read]"}));
}

TEST_F(WTAModel, flowInAnotherUnit_isRefused) {
  EXPECT_EQ(TKL::thrownBy([&] { model.read(SectionText("CMP_Q50 = 3 m")); }).text,
            "Error converting unit in parameter 'CMP_Q50'.");
}

}  // namespace VELMORA
