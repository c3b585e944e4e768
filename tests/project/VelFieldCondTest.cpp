#include "project/VelFieldCond.h"

#include <gtest/gtest.h>

#include "ConditionTexts.h"
#include "grid/IndexMatrix.h"
#include "project/VelSelection.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

using FC = VelFieldCond;
const char* const FIELDCOND_READ = "[VelFieldCond::read]";

FC readFieldCond(const std::string& text) {
  return readRecord<FC>(text);
}

const std::vector<std::string> FIELDCOND_PARAMETERS = {
    "WATTRANSFCOEFF",           "ENETRANSFCOEFF",      "PCM_MELT_TEMP",       "PCM_DEL_TEMP",
    "FLUID_CAPACITY",           "LIM_SATDEGREE",       "LIM_SNK_TEMPERATURE", "WATTRANS_EXPONENT",
    "LEFT_EMISS_COEFF",         "RIGHT_EMISS_COEFF",   "TOP_EMISS_COEFF",     "BOTTOM_EMISS_COEFF",
    "GAS2SOLID_TRANSFER_COEFF", "CHEMISORPTION_CONST", "GC_GASTYPE",          "GC_GASPROPORTION",
    "GC_INCLINATION",           "MAX_WATCONT",         "MIN_WATCONT",         "FLOW_DIRECTION"};

const std::string LEAKAGE =
    "CMC_INDOOR_TEMPER = room air\nNAME = leak\nTYPE = CONVECTIVE_SOURCE\nCMC_OUTDOOR_TEMPER = outside air\n"
    "CMC_INDOOR_RELHUM = room humidity\nCMP_Q50 = 3 m3/m2h";

/// A pair of conditions over elements of given volumes [m3].
class RemotePair {
 public:
  RemotePair(FC::condition_t condition, const std::vector<double>& own, const std::vector<double>& other) {
    near.condition = condition;
    near.remote = &far;
    fill(near, own);
    fill(far, other);
  }
  RemotePair(const RemotePair&) = delete;
  RemotePair& operator=(const RemotePair&) = delete;

  bool match() {
    near.matchRemoteElements(elements);
    return near.matchingVolumes;
  }

  FC near, far;
  std::vector<Element> elements;

 private:
  void fill(FC& fc, const std::vector<double>& volumes) {
    for (const double volume : volumes) {
      fc.elements.push_back(static_cast<int>(elements.size()));
      elements.emplace_back().volume = volume;
    }
  }
};

}  // namespace

TEST(VelFieldCond, everyParameter_isRead) {
  const FC fc = readFieldCond("TYPE = WATSOURCE\n" + numberedParameters(FIELDCOND_PARAMETERS, "K"));
  EXPECT_TRUE(areNumbered(fc.para, FIELDCOND_PARAMETERS, "K"));
}

TEST(VelFieldCond, everyClimateName_isRead) {
  EXPECT_TRUE(areClimateNames(readFieldCond("TYPE = WATSOURCE\n" + climateLines()).climateNames));
}

TEST(VelFieldCond, everyOtherKeyword_isRead) {
  const FC fc = readFieldCond(
      "TYPE = REMENESOUR\nNAME = near end\nSTART_TIME = 2 h\nEND_TIME = 3 d\nFLAGS = LW_RADIATION_Y\n"
      "REMOTE_COND = far end");
  EXPECT_EQ(fc.condition, FC::C_REMENESOUR);
  EXPECT_EQ(fc.name, "near end");
  EXPECT_DOUBLE_EQ(fc.startTime.value, 7200.0);
  EXPECT_DOUBLE_EQ(fc.endTime.value, 259200.0);
  EXPECT_EQ(fc.endTime.name, "END_TIME");
  EXPECT_EQ(fc.flags.to_ulong(), 4u);
  EXPECT_EQ(fc.remoteName, "far end");
}

TEST(VelFieldCond, allKeywordsTogether_areRead) {
  const FC fc =
      readFieldCond(numberedParameters(FIELDCOND_PARAMETERS, "K") + climateLines() +
                    "REMOTE_COND = far\nFLAGS = USE_FLOWRATE\nSTART_TIME = 1 s\nEND_TIME = 2 s\nNAME = "
                    "all\nTYPE = AIRFLOW");
  EXPECT_TRUE(areNumbered(fc.para, FIELDCOND_PARAMETERS, "K"));
  EXPECT_TRUE(areClimateNames(fc.climateNames));
  EXPECT_EQ(fc.condition, FC::C_AIRFLOW);
  EXPECT_EQ(fc.name + fc.remoteName, "allfar");
  EXPECT_EQ(fc.startTime.value, 1.0);
  EXPECT_EQ(fc.endTime.value, 2.0);
  EXPECT_EQ(fc.flags.to_ulong(), 1u);
}

TEST(VelFieldCond, everyType_hasItsIndex) {
  const std::vector<std::string> types = {
      "WATSOURCE",         "VOCSOURCE",        "ENESOURCE",     "LW_RADIATION",     "REMWATSOUR",
      "REMWATSINK",        "REMENESOUR",       "REMENESINK",    "PCMENESOUR",       "PCMENESINK",
      "AIRCHANGE",         "WATERFLOW",        "VOCADSORPTION", "VOCCHEMISORPTION", "GAS_CONVECTION",
      "CONVECTIVE_SOURCE", "AMBIENTRADIATION", "AIRFLOW",       "MEDIAFLOW"};
  ASSERT_EQ(types.size(), static_cast<std::size_t>(FC::NUM_C));
  for (std::size_t k = 0; k < types.size(); ++k) {
    EXPECT_EQ(readFieldCond("TYPE = " + types[k]).condition, static_cast<FC::condition_t>(k)) << types[k];
  }
}

TEST(VelFieldCond, everyFlag_hasItsIndex) {
  const FC fc = readFieldCond("TYPE = WATSOURCE\nFLAGS = USE_FLOWRATE CONVECTION_X");
  EXPECT_TRUE(fc.flags.test(0));
  EXPECT_FALSE(fc.flags.test(1));
  EXPECT_FALSE(fc.flags.test(2));
  EXPECT_TRUE(fc.flags.test(3));
}

TEST(VelFieldCond, allElse_isEmptyByDefault) {
  const FC fc;
  EXPECT_EQ(fc.condition, 19);
  EXPECT_FALSE(fc.startTime.isSet());
  EXPECT_FALSE(fc.endTime.isSet());
  for (const TKL::Parameter& parameter : fc.para) EXPECT_FALSE(parameter.isSet());
  for (const std::string& name : fc.climateNames) EXPECT_TRUE(name.empty());
  EXPECT_TRUE(fc.remoteName.empty());
  EXPECT_TRUE(fc.flags.none());
  EXPECT_FALSE(fc.used);
  EXPECT_EQ(fc.volume, 0.0);
  EXPECT_TRUE(fc.elements.empty());
  EXPECT_FALSE(fc.matchingVolumes);
  EXPECT_FALSE(fc.wtaModel.has_value());
}

TEST(VelFieldCond, typeAfterOtherKeywords_counts) {
  const FC fc = readFieldCond("NAME = n\nMAX_WATCONT = 0.2 m3/m3\nTYPE = WATSOURCE");
  EXPECT_EQ(fc.condition, FC::C_WATSOURCE);
  EXPECT_EQ(fc.para[FC::P_MAX_WATCONT].value, 0.2);
}

TEST(VelFieldCond, blockWithoutType_fails) {
  TKL::MessageCapture capture;
  EXPECT_EQ(thrownByReading<FC>("NAME = n"), (Thrown{"No condition found", FIELDCOND_READ}));
  EXPECT_TRUE(capture.has("Error reading condition type!", TKL::MSG_ERROR, FIELDCOND_READ, -1));
}

TEST(VelFieldCond, emptyType_fails) {
  EXPECT_EQ(thrownByReading<FC>("TYPE ="), (Thrown{"Missing value for keyword 'TYPE'!", FIELDCOND_READ}));
}

TEST(VelFieldCond, unknownType_fails) {
  EXPECT_EQ(
      thrownByReading<FC>("TYPE = MAGIC"),
      (Thrown{
          "Cannot determine enumeration value for enumeration type 'VelFieldCond::condition_t' and keyword "
          "'MAGIC'.",
          "[KeywordList::Enumeration]"}));
}

TEST(VelFieldCond, unreadableParameter_isReportedAndReadingGoesOn) {
  TKL::MessageCapture capture;
  const FC fc =
      readFieldCond("TYPE = WATSOURCE\nMAX_WATCONT = lots\nSTART_TIME = now\nEND_TIME = 5\nNAME = after");
  EXPECT_EQ(fc.name, "after");
  EXPECT_FALSE(fc.para[FC::P_MAX_WATCONT].isSet());
  EXPECT_FALSE(fc.startTime.isSet());
  EXPECT_FALSE(fc.endTime.isSet());
  for (const char* text : {"Invalid parameter value 'lots' for keyword 'MAX_WATCONT'!",
                           "Invalid parameter value 'now' for keyword 'START_TIME'!",
                           "Invalid parameter value '5' for keyword 'END_TIME'!"}) {
    EXPECT_TRUE(capture.has(text, TKL::MSG_ERROR, FIELDCOND_READ, -1)) << text;
  }
}

TEST(VelFieldCond, parameterWithUnknownUnit_isReportedAndReadingGoesOn) {
  TKL::MessageCapture capture;
  const FC fc = readFieldCond("TYPE = WATSOURCE\nMAX_WATCONT = 1 Q\nNAME = after");
  EXPECT_EQ(fc.name, "after");
  EXPECT_TRUE(capture.has("Invalid parameter value '1 Q' for keyword 'MAX_WATCONT'!", TKL::MSG_ERROR,
                          FIELDCOND_READ, -1));
}

TEST(VelFieldCond, leakageBlock_isReadByItsDefinition) {
  const FC fc = readFieldCond(LEAKAGE);
  ASSERT_TRUE(fc.wtaModel.has_value());
  EXPECT_DOUBLE_EQ(fc.wtaModel->leakCoefficient, 3.0 / 3600.0 / 750.0);
}

TEST(VelFieldCond, timesAndFlagsOfALeakageBlock_areThoseOfTheCondition) {
  const FC fc = readFieldCond(LEAKAGE + "\nSTART_TIME = 1 h\nEND_TIME = 2 h\nFLAGS = CONVECTION_X");
  EXPECT_DOUBLE_EQ(fc.startTime.value, 3600.0);
  EXPECT_DOUBLE_EQ(fc.endTime.value, 7200.0);
  EXPECT_TRUE(fc.flags[FC::F_CONVECTION_X]);
}

TEST(VelFieldCond, leakageBlock_givesNameAndClimateNames) {
  const FC fc = readFieldCond(LEAKAGE);
  EXPECT_EQ(fc.name, "leak");
  EXPECT_EQ(fc.wtaModel->climateNames,
            (std::array<std::string, 3>{"room air", "outside air", "room humidity"}));
}

TEST(VelFieldCond, leakageBlock_isNotReadByTheOtherKeywords) {
  TKL::MessageCapture capture;
  const FC fc = readFieldCond("TYPE = CONVECTIVE_SOURCE\nTEMPER = air\nMAX_WATCONT = 1 m3/m3\nCOLOUR = red");
  EXPECT_TRUE(fc.climateNames[VelClimateCond::C_TEMPER].empty());
  EXPECT_FALSE(fc.para[FC::P_MAX_WATCONT].isSet());
  for (const char* keyword : {"TEMPER", "MAX_WATCONT", "COLOUR"})
    EXPECT_TRUE(capture.has("Invalid or deprecated keyword '" + std::string(keyword) + "' in this section!",
                            TKL::MSG_WARNING, "[WTAConvectionModel::read]", 3))
        << keyword;
}

TEST(VelFieldCond, climateCondition_isFoundByName) {
  std::vector<VelClimateCond> climates(1);
  climates[0].name = "air";
  climates[0].condition = VelClimateCond::C_TEMPER;
  FC fc = readFieldCond("TYPE = AIRCHANGE\nTEMPER = air");
  fc.assignClimateCond(climates);
  EXPECT_EQ(fc.climate[VelClimateCond::C_TEMPER], &climates[0]);
}

TEST(VelFieldCond, missingClimate_isReportedAndFails) {
  TKL::MessageCapture capture;
  FC fc = readFieldCond("TYPE = AIRCHANGE\nAIRCHANGE = rate");
  EXPECT_EQ(TKL::thrownBy([&] { fc.assignClimateCond({}); }),
            (Thrown{"Error linking climate conditions to boundary condtions!",
                    "[VelFieldCond::assignClimateCond]"}));
  EXPECT_TRUE(capture.has("Could not find climate condition with type 'AIRCHANGERATE' and name 'rate'!",
                          TKL::MSG_ERROR, "[VelFieldCond::assignClimateCond]", -1));
}

TEST(VelFieldCond, climateOfAnotherType_fails) {
  std::vector<VelClimateCond> climates(1);
  climates[0].name = "air";
  climates[0].condition = VelClimateCond::C_TEMPER;
  FC fc = readFieldCond("TYPE = AIRCHANGE\nRELHUM = air");
  EXPECT_EQ(TKL::thrownBy([&] { fc.assignClimateCond(climates); }),
            (Thrown{"Invalid climate condition assignment with name 'air', should be of type 'RELHUM'",
                    "[VelFieldCond::assignClimateCond]"}));
}

TEST(VelFieldCond, remoteCondition_isFoundByName) {
  const std::vector<FC> conditions = {readFieldCond("TYPE = REMENESINK\nNAME = far"),
                                      readFieldCond("TYPE = REMENESOUR\nNAME = near\nREMOTE_COND = far")};
  FC near = conditions[1];
  near.assignRemoteFieldCond(conditions);
  EXPECT_EQ(near.remote, &conditions[0]);
}

TEST(VelFieldCond, absentRemoteCondition_isReportedAndFails) {
  TKL::MessageCapture capture;
  const char* const TAG = "[VelFieldCond::assignRemoteFieldCond]";
  FC fc = readFieldCond("TYPE = REMENESOUR\nREMOTE_COND = far");
  EXPECT_EQ(TKL::thrownBy([&] { fc.assignRemoteFieldCond({}); }),
            (Thrown{"Error linking remote field condition to field condtions!", TAG}));
  EXPECT_TRUE(capture.has("Could not find remote field condition with name 'far'!", TKL::MSG_ERROR, TAG, -1));
}

TEST(VelFieldCond, withoutRemoteName_nothingIsLinked) {
  FC fc = readFieldCond("TYPE = REMENESOUR");
  EXPECT_EQ(TKL::thrownBy([&] { fc.assignRemoteFieldCond({}); }), nothingThrown());
  EXPECT_EQ(fc.remote, nullptr);
}

TEST(VelFieldCond, equalVolumes_match) {
  EXPECT_TRUE(RemotePair(FC::C_REMENESOUR, {1.0, 2.0}, {1.0, 2.0}).match());
  EXPECT_TRUE(RemotePair(FC::C_PCMENESOUR, {1.0, 2.0}, {1.0, 2.0}).match());
}

TEST(VelFieldCond, volumes_matchPairByPairInOrder) {
  EXPECT_FALSE(RemotePair(FC::C_REMENESOUR, {1.0, 2.0}, {2.0, 1.0}).match());
}

TEST(VelFieldCond, volumesWithinTheTolerance_match) {
  EXPECT_TRUE(RemotePair(FC::C_REMENESOUR, {0.0}, {1e-8}).match());
  EXPECT_TRUE(RemotePair(FC::C_REMENESOUR, {1e-8}, {0.0}).match());
  EXPECT_FALSE(RemotePair(FC::C_REMENESOUR, {0.0}, {1.01e-8}).match());
  EXPECT_FALSE(RemotePair(FC::C_REMENESOUR, {1.01e-8}, {0.0}).match());
}

TEST(VelFieldCond, differentCounts_doNotMatch) {
  EXPECT_FALSE(RemotePair(FC::C_REMENESOUR, {1.0}, {1.0, 1.0}).match());
}

TEST(VelFieldCond, emptyLists_match) {
  EXPECT_TRUE(RemotePair(FC::C_PCMENESOUR, {}, {}).match());
}

TEST(VelFieldCond, otherTypes_areNotMatched) {
  EXPECT_FALSE(RemotePair(FC::C_REMENESINK, {1.0}, {1.0}).match());
  EXPECT_FALSE(RemotePair(FC::C_REMWATSOUR, {1.0}, {1.0}).match());
}

TEST(VelFieldCond, withoutRemoteCondition_nothingMatches) {
  RemotePair pair(FC::C_REMENESOUR, {1.0}, {1.0});
  pair.near.remote = nullptr;
  pair.near.matchingVolumes = true;
  EXPECT_FALSE(pair.match());
}

TEST(VelFieldCond, volumeMean_isWeightedWithTheVolumes) {
  const RemotePair pair(FC::C_REMENESOUR, {1.0, 3.0}, {5.0});
  const std::vector<double> values = {10.0, 20.0, 999.0};
  EXPECT_DOUBLE_EQ(pair.near.volumeMean(pair.elements, [&](std::size_t e) { return values[e]; }), 17.5);
}

TEST(VelFieldCond, volumeMeanWithoutElements_isZero) {
  EXPECT_EQ(FC().volumeMean({}, [](std::size_t) { return 1.0; }), 0.0);
}

TEST(VelFieldCond, requiredClimateThatIsMissing_fails) {
  const FC fc = readFieldCond("NAME = lamp\nTYPE = ENESOURCE");
  EXPECT_EQ(TKL::thrownBy([&] { fc.requireClimate(VelClimateCond::C_ENESOURCE, "[caller]"); }),
            (Thrown{"Error in in field condition 'lamp' with type 'ENESOURCE'.\nClimate condition of type "
                    "'ENESOURCE' needs to be specified!",
                    "[caller]"}));
}

TEST(VelFieldCond, requiredRemoteThatIsMissing_fails) {
  const FC fc = readFieldCond("NAME = near\nTYPE = REMENESOUR");
  EXPECT_EQ(
      TKL::thrownBy([&] { fc.requireRemote("[caller]"); }),
      (Thrown{"Error in field condition 'near' with type 'REMENESOUR'.\nRemote field condition needs to be "
              "specified!",
              "[caller]"}));
}

TEST(VelFieldCond, requiredClimateAndRemote_areTheAttachedOnes) {
  const VelClimateCond air;
  const FC far;
  FC fc;
  fc.climate[VelClimateCond::C_TEMPER] = &air;
  fc.remote = &far;
  EXPECT_EQ(&fc.requireClimate(VelClimateCond::C_TEMPER, "[test]"), &air);
  EXPECT_EQ(&fc.requireRemote("[test]"), &far);
}
