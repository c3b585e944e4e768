#include "material/MaterialTestSupport.h"

namespace MM {

namespace {

using Words = std::vector<std::string>;

const Words STORAGE_KEYWORDS = {"RHO",           "CE",      "THETA_POR", "THETA_EFF", "THETA_CAP",
                                "THETA_LIM_HYG", "THETA_80"};
const Words TRANSPORT_KEYWORDS = {"LAMBDA",  "AW",       "MEW",      "SD",           "KLEFF", "DLEFF",
                                  "KG",      "LAMBDA_V", "AW_V",     "MEW_V",        "SD_V",  "KLEFF_V",
                                  "DLEFF_V", "KG_V",     "LAMBDA_W", "AW_W",         "MEW_W", "SD_W",
                                  "KLEFF_W", "DLEFF_W",  "KG_W",     "LAMBDA_DESIGN"};
const Words MECHANICAL_KEYWORDS = {"ALPHA",   "BETA_THETA_L",   "BETA_THETA_L2",
                                   "ALPHA_V", "BETA_THETA_L_V", "BETA_THETA_L2_V",
                                   "ALPHA_W", "BETA_THETA_L_W", "BETA_THETA_L2_W"};

/// Reads one line `<keyword> = <k>.5 m` for each keyword.
template <typename Parameters>
void expectNumbered(const Material& material, const Parameters& parameters, const Words& keywords) {
  ASSERT_EQ(parameters.size(), keywords.size());
  for (std::size_t k = 0; k < keywords.size(); ++k) {
    EXPECT_EQ(parameters[k].name, keywords[k]) << material.name();
    EXPECT_DOUBLE_EQ(parameters[k].value, static_cast<double>(k) + 0.5) << keywords[k];
  }
}

Material numberedMaterial() {
  Material material;
  for (const Words* keywords : {&STORAGE_KEYWORDS, &TRANSPORT_KEYWORDS, &MECHANICAL_KEYWORDS})
    for (std::size_t k = 0; k < keywords->size(); ++k)
      material.readASCIIParameterFromLine((*keywords)[k] + " = " + std::to_string(k) + ".5 m");
  return material;
}

/// Reads a table with the points (0, k) and (1, k + 1) under each name, and finds it in the slot k.
template <typename Group>
void expectSlots(const Words& names) {
  Group group;
  ASSERT_EQ(group.functions.size(), names.size());
  for (std::size_t k = 0; k < names.size(); ++k)
    group.read(linesOf("FUNCTION = " + names[k] + "\n0 1\n" + std::to_string(k) + " " +
                       std::to_string(k + 1) + "\n"));
  for (std::size_t k = 0; k < names.size(); ++k)
    EXPECT_DOUBLE_EQ(group.functions[k].value(0.0), static_cast<double>(k)) << names[k];
}

MaterialIdentification identificationOf(const std::string& line) {
  MaterialIdentification identification;
  identification.read({line});
  return identification;
}

}  // namespace

TEST(MaterialRoundTrip, everyBaseParameter_isReadIntoItsPlace) {
  const Material material = numberedMaterial();
  expectNumbered(material, material.paraStorage, STORAGE_KEYWORDS);
  expectNumbered(material, material.paraTransport, TRANSPORT_KEYWORDS);
  expectNumbered(material, material.paraMechanical, MECHANICAL_KEYWORDS);
}

TEST(MaterialRoundTrip, everyAliasOfABaseParameter_setsTheCurrentOne) {
  const std::pair<std::string, std::string> ALIASES[] = {
      {"CET", "CE"},       {"OPOR", "THETA_POR"}, {"OEFF", "THETA_EFF"}, {"OCAP", "THETA_CAP"},
      {"O80", "THETA_80"}, {"KLSAT", "KLEFF"},    {"KGDRY", "KG"}};
  for (const auto& [alias, keyword] : ALIASES) {
    const TKL::MessageCapture capture;
    Material material;
    material.readASCIIParameterFromLine(alias + " = 0.5 m3/m3");
    EXPECT_TRUE(capture.has("Keyword '" + alias + "' is deprecated (new -> '" + keyword + "').",
                            TKL::MSG_WARNING, "[Material::readASCIIParameterFromLine]", 2));
    const auto isSet = [&](const TKL::Parameter& parameter) { return parameter.name == keyword; };
    EXPECT_EQ(std::count_if(material.paraStorage.begin(), material.paraStorage.end(), isSet) +
                  std::count_if(material.paraTransport.begin(), material.paraTransport.end(), isSet),
              1)
        << alias;
  }
}

TEST(MaterialRoundTrip, everyFunction_isReadIntoItsSlot) {
  expectSlots<ThermalStorage>({"u(T)"});
  expectSlots<MoistureStorage>(
      {"Theta_l(pC)_de", "pC(Theta_l)_de", "Theta_l(RH)", "Theta_l(pC)_ad", "pC(Theta_l)_ad", "mwu(T)"});
  expectSlots<MoistureTransport>({"lgKl(Theta_l)", "lgDl(Theta_l)", "lgKv(Theta_l)", "mew(RH)"});
  expectSlots<ThermalTransport>({"lambda(Theta_l)", "lambda(T)"});
  expectSlots<AirTransport>({"Kg(Theta_l)"});
  expectSlots<VaporContactResistanceModel>({"sd+(rh)", "sd-(rh)"});
}

TEST(MaterialRoundTrip, everyOldFunctionName_isReadIntoItsSlot) {
  expectSlots<MoistureStorage>({"Ol(pC)", "pC(Ol)", "Ol(RH)", "Theta_l(pC)_ad", "pC(Theta_l)_ad", "mwu(T)"});
  expectSlots<MoistureStorage>(
      {"Ol(pC)", "pC(Ol)", "Theta_l(RH)_de", "Theta_l(pC)_ad", "pC(Theta_l)_ad", "mwu(T)"});
  expectSlots<MoistureTransport>({"lgKl(Ol)", "lgDl(Ol)", "lgKv(Ol)", "My(Phi)"});
  expectSlots<ThermalTransport>({"lambda(Ol)", "lambda(T)"});
  expectSlots<AirTransport>({"Kg(Ol)"});
}

TEST(MaterialRoundTrip, everyParameterOfAContactResistance_isRead) {
  VaporContactResistanceModel model;
  model.read(
      linesOf("WEIGHT_FACTOR_POS = 1.5\nWEIGHT_FACTOR_NEG = 2.5\nSCALING_A_POS = 3.5\nSCALING_B_POS = 4.5\n"
              "SCALING_C_POS = 5.5\nSCALING_A_NEG = 6.5\nSCALING_B_NEG = 7.5\nSCALING_C_NEG = 8.5\n"));
  EXPECT_EQ(model.parameters, (std::array<double, 8>{1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, 8.5}));
}

TEST(MaterialRoundTrip, everyFlag_hasItsBit) {
  const Words flags = {"AIR", "AIR_TIGHT", "VAPOR_TIGHT", "WATER_TIGHT", "WOOD", "WOOD_BASED", "FOILS"};
  for (std::size_t k = 0; k < flags.size(); ++k)
    EXPECT_EQ(identificationOf("FLAGS = " + flags[k]).flags, 1U << k) << flags[k];
}

TEST(MaterialRoundTrip, everyOldFlag_hasItsBit) {
  const Words flags = {"AIR", "AIRTIGHT", "VAPORTIGHT", "WATERTIGHT", "WOOD", "WOODBASED"};
  for (std::size_t k = 0; k < flags.size(); ++k) {
    MaterialIdentification identification;
    identification.readPreV6({"FLAGS = " + flags[k]});
    EXPECT_EQ(identification.flags, 1U << k) << flags[k];
  }
}

TEST(MaterialRoundTrip, everySamplingMethod_hasItsIndex) {
  const Words methods = {"S_CAST_CUT_PRODUCER", "S_CAST_PRODUCER", "S_CAST_CUT_TKL", "S_CAST_TKL"};
  for (std::size_t k = 0; k < methods.size(); ++k)
    EXPECT_EQ(static_cast<std::size_t>(identificationOf("SAMPLING_METHOD = " + methods[k]).samplingMethod),
              k);
}

TEST(MaterialRoundTrip, everyHatching_hasItsIndex) {
  const Words types = {"Ground",
                       "Gravel",
                       "Sand",
                       "ConcreteNotReinforced",
                       "ConcreteReinforced",
                       "Masonry",
                       "WoodTransverseToFibre",
                       "WoodLongitudinal",
                       "Metal",
                       "MortarPlaster",
                       "Insulation",
                       "SealingFoil",
                       "Sealant",
                       "None"};
  for (std::size_t k = 0; k < types.size(); ++k)
    EXPECT_EQ(static_cast<std::size_t>(identificationOf("HATCHING = " + types[k]).hatching), k) << types[k];
}

TEST(MaterialRoundTrip, everyCategory_hasItsIndex) {
  const Words categories = {"INVALID",  "COATING",    "PLASTER",         "BRICK",  "NATURAL_STONES",
                            "CONCRETE", "INSULATION", "BUILDING_BOARDS", "TIMBER", "NATURAL_MATERIALS",
                            "SOIL",     "CLADDING",   "FOILS",           "MISC"};
  for (std::size_t k = 0; k < categories.size(); ++k) {
    const MaterialIdentification identification = identificationOf("CATEGORY = " + categories[k]);
    EXPECT_EQ(static_cast<std::size_t>(identification.category.ids.at(0)), k) << categories[k];
  }
}

TEST(MaterialRoundTrip, everyDatabaseTypeOfTheOlderGeneration_isKept) {
  Words types = {"Standard", "Demo",         "Nassregister", "Haacke",
                 "Knauf",    "Xelator-Demo", "Xelator-Pro",  "Xelator-Standard"};
  for (const char* group :
       {"Bauplatten", "Betone", "Daemmstoffe", "Folien", "Haacke_Cellco", "HolzDaemmPlatten", "Mauersteine",
        "MineralDaemmPlatten", "Natursteine", "Naturstoffe", "Putze_1", "Putze_2", "Sonstiges", "Ziegel"})
    types.push_back(std::string("Xelator-Standard::") + group);
  for (const std::string& type : types) {
    MaterialIdentification identification;
    identification.readPreV6({"DBTYPE = " + type});
    EXPECT_EQ(identification.dbType, type);
  }
}

}  // namespace MM
