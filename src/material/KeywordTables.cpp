#include "material/KeywordTables.h"

namespace MM {

namespace {

constexpr const char* SECTIONS[] = {"IDENTIFICATION",
                                    "STORAGE_BASE_PARAMETERS",
                                    "TRANSPORT_BASE_PARAMETERS",
                                    "MECHANICAL_BASE_PARAMETERS",
                                    "THERMAL_STORAGE",
                                    "MOISTURE_STORAGE",
                                    "MOISTURE_TRANSPORT",
                                    "HEAT_TRANSPORT",
                                    "AIR_TRANSPORT",
                                    "MOISTURE_TRANSPORT_V",
                                    "HEAT_TRANSPORT_V",
                                    "AIR_TRANSPORT_V",
                                    "MOISTURE_TRANSPORT_W",
                                    "HEAT_TRANSPORT_W",
                                    "AIR_TRANSPORT_W",
                                    "MEASURED_DATA",
                                    "VAPOR_CONTACT_RESISTANCE"};

constexpr const char* SECTIONS_PRE_V6[] = {"MATERIAL", "IDENTIFICATION", "GENERAL",
                                           "MRC",      "MOISTTRANS",     "HEATTRANS",
                                           "AIRTRANS", "PARAMETER",      "PCMMATERIAL"};

constexpr const char* PARA_STORAGE[] = {
    "RHO", "CE CET", "THETA_POR OPOR", "THETA_EFF OEFF", "THETA_CAP OCAP", "THETA_LIM_HYG", "THETA_80 O80"};

constexpr const char* PARA_TRANSPORT[] = {
    "LAMBDA", "AW",    "MEW",     "SD",      "KLEFF KLSAT", "DLEFF",        "KG KGDRY", "LAMBDA_V",
    "AW_V",   "MEW_V", "SD_V",    "KLEFF_V", "DLEFF_V",     "KG_V",         "LAMBDA_W", "AW_W",
    "MEW_W",  "SD_W",  "KLEFF_W", "DLEFF_W", "KG_W",        "LAMBDA_DESIGN"};

constexpr const char* PARA_MECHANICAL[] = {"ALPHA",   "BETA_THETA_L",   "BETA_THETA_L2",
                                           "ALPHA_V", "BETA_THETA_L_V", "BETA_THETA_L2_V",
                                           "ALPHA_W", "BETA_THETA_L_W", "BETA_THETA_L2_W"};

constexpr const char* IDENT[] = {
    "NAME",         "PRODUCER",         "PRODUCT_ID",      "INVESTIGATOR",      "LABORATORY SOURCE",
    "DATE",         "SAMPLING_DATE",    "PRODUCTION_DATE", "SAMPLE_ID",         "SAMPLING_METHOD",
    "COUNTRY",      "COLOUR COLOR",     "FLAGS",           "USE_INSTEAD",       "COPYRIGHT",
    "CATEGORY",     "COMMENTS",         "U_DIRECTION",     "V_DIRECTION",       "W_DIRECTION",
    "DBTYPE",       "SIGNATURE_SOURCE", "QUALITY_FLAGS",   "DATA_SHEET_SOURCE", "HATCHING",
    "AQUISITION_ID"};

constexpr const char* FLAGS[] = {"AIR",  "AIR_TIGHT",  "VAPOR_TIGHT", "WATER_TIGHT",
                                 "WOOD", "WOOD_BASED", "FOILS"};

constexpr const char* FLAGS_PRE_V6[] = {"AIR",  "AIRTIGHT",  "VAPORTIGHT",      "WATERTIGHT",
                                        "WOOD", "WOODBASED", "ONLY_HYGROSCOPIC"};

constexpr const char* SAMPLING_METHODS[] = {"S_CAST_CUT_PRODUCER", "S_CAST_PRODUCER", "S_CAST_CUT_TKL",
                                            "S_CAST_TKL"};

constexpr const char* HATCHING_TYPE[] = {"Ground",
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

constexpr const char* CATEGORY_ID[] = {
    "INVALID",         "COATING", "PLASTER",           "BRICK", "NATURAL_STONES", "CONCRETE", "INSULATION",
    "BUILDING_BOARDS", "TIMBER",  "NATURAL_MATERIALS", "SOIL",  "CLADDING",       "FOILS",    "MISC"};

constexpr const char* THERMAL_STORAGE[] = {"u(T)"};

constexpr const char* MOISTURE_STORAGE[] = {
    "Theta_l(pC)_de Ol(pC)", "pC(Theta_l)_de pC(Ol)", "Theta_l(RH) Theta_l(RH)_de Ol(RH)",
    "Theta_l(pC)_ad",        "pC(Theta_l)_ad",        "mwu(T)"};

constexpr const char* MOISTURE_TRANSPORT[] = {"lgKl(Theta_l) lgKl(Ol)", "lgDl(Theta_l) lgDl(Ol)",
                                              "lgKv(Theta_l) lgKv(Ol)", "mew(RH) My(Phi)"};

constexpr const char* THERMAL_TRANSPORT[] = {"lambda(Theta_l) lambda(Ol)", "lambda(T)"};

constexpr const char* AIR_TRANSPORT[] = {"Kg(Theta_l) Kg(Ol)"};

constexpr const char* FOIL_FUNCTIONS[] = {"sd+(rh)", "sd-(rh)"};

constexpr const char* STORAGE_MODELS[] = {"GAUSS", "VAN_GENUCHTEN"};

constexpr const char* TRANSPORT_MODELS[] = {"SERIAL_PARALLEL SP_MODEL"};

constexpr const char* FOIL_PARAM[] = {"SD_VALUE",      "WEIGHT_FACTOR_POS", "WEIGHT_FACTOR_NEG",
                                      "SCALING_A_POS", "SCALING_B_POS",     "SCALING_C_POS",
                                      "SCALING_A_NEG", "SCALING_B_NEG",     "SCALING_C_NEG"};

constexpr const char* FOIL_IDENT[] = {"NAME", "ID_PLUS", "ID_MINUS", "COMMENT"};

constexpr const char* MEASURED_SECTIONS[] = {"GEOMETRY", "EXPERIMENTS"};

constexpr const char* MEASURED_EXPERIMENTS[] = {"WET_CUP",         "MED_CUP",           "DRY_CUP",
                                                "WATER_RETENTION", "SORPTION_ISOTHERM", "WATER_UPTAKE",
                                                "DRYING_0",        "DRYING_1"};

constexpr const char* MEASURED_KEYS[] = {"SPECIMEN",
                                         "EXPERIMENT",
                                         "X_VALUES",
                                         "NON_LOG_PC",
                                         "TEMPERATURE",
                                         "THETA_L",
                                         "PHI_INSIDE",
                                         "PHI_OUTSIDE",
                                         "MEW",
                                         "MINIMUM",
                                         "MAXIMUM",
                                         "STD_DEVIATION",
                                         "WEIGHT",
                                         "WIDTH_0",
                                         "LENGTH_0",
                                         "HEIGHT_0",
                                         "WIDTH_1",
                                         "LENGTH_1",
                                         "HEIGHT_1",
                                         "DATE_BC",
                                         "BC_TEMPERATURE_0",
                                         "BC_RH_0",
                                         "BC_TEMPERATURE_1",
                                         "BC_RH_1",
                                         "SAMPLE_TEMPERATURE_0",
                                         "SAMPLE_TEMPERATURE_1",
                                         "SAMPLE_TEMPERATURE_2",
                                         "SAMPLE_TEMPERATURE_3",
                                         "SAMPLE_TEMPERATURE_4",
                                         "SAMPLE_TEMPERATURE_5"};

constexpr KeywordTable TABLES[] = {
    {"Material::Sections", SECTIONS},
    {"Material::SectionsPreV6", SECTIONS_PRE_V6},
    {"Material::ParaStorage", PARA_STORAGE},
    {"Material::ParaTransport", PARA_TRANSPORT},
    {"Material::ParaMechanical", PARA_MECHANICAL},
    {"MaterialIdentification::Ident", IDENT},
    {"MaterialIdentification::Flags", FLAGS, true},
    {"MaterialIdentification::FlagsPreV6", FLAGS_PRE_V6, true},
    {"MaterialIdentification::SamplingMethods", SAMPLING_METHODS},
    {"MaterialIdentification::HatchingType", HATCHING_TYPE},
    {"MaterialCategory::CategoryID", CATEGORY_ID},
    {"ThermalStorage::Functions", THERMAL_STORAGE},
    {"MoistureStorage::Functions", MOISTURE_STORAGE},
    {"MoistureStorage::ModelTypes", STORAGE_MODELS},
    {"MoistureTransport::Functions", MOISTURE_TRANSPORT},
    {"MoistureTransport::ModelTypes", TRANSPORT_MODELS},
    {"ModelHandler::ModelIdentifier", TRANSPORT_MODELS},
    {"ThermalTransport::Functions", THERMAL_TRANSPORT},
    {"AirTransport::Functions", AIR_TRANSPORT},
    {"VaporContactResistanceModel::Functions", FOIL_FUNCTIONS},
    {"VaporContactResistanceModel::Param", std::span(FOIL_PARAM).subspan(1)},
    {"Foils::Functions", FOIL_FUNCTIONS},
    {"Foils::Param", FOIL_PARAM},
    {"Foils::Ident", FOIL_IDENT},
    {"MeasuredData::Sections", MEASURED_SECTIONS},
    {"MeasuredData::Experiments", MEASURED_EXPERIMENTS},
    {"MeasuredData::ExperimentKeys", MEASURED_KEYS},
};

}  // namespace

std::span<const KeywordTable> keywordTables() {
  return TABLES;
}

}  // namespace MM
