#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow INTERFACE_TYPE[] = {
    {"Standard", "Standard interface to specified climate."},
    {"Detailed", "Detailed interface defined by several boundary conditions."},
    {"External", "Interface for quantity exchange to external simulation models, for example rooms."},
};

constexpr KeywordRow INTERFACE_CLIMATE_TYPE[] = {
    {"INDOOR_CONSTANT", "The interface is at the inside and constant climate is used (T and RH)"},
    {"INDOOR_DIN4108", "The interface is at the inside and DIN 4108-3 climate is used (T and RH)"},
    {"OUTDOOR_DIN4108", "The interface is at the outside and DIN 4108-3 climate is used (T and RH)"},
    {"OUTDOOR_STATION", "A specific measured dataset of a climate station."},
    {"OUTDOOR_TRY", "Test reference year (currently only German TRY)"},
    {"OUTDOOR_USER_DEFINED", "A user defined data set"},
};

constexpr KeywordRow INTERFACE_TRY_SPECIFICATION[] = {
    {"NORMAL", "Normal test reference year"},
    {"EXTREME_SUMMER", "A year with extremely warm summer"},
    {"EXTREME_WINTER", "A year with extremely cold winter"},
    {"EXTREME_YEAR", "A year with extremely cold winter and warm summer"},
};

constexpr KeywordRow INTERFACE_PARA[] = {
    {"Orientation", "Orientation of the building element"},
    {"Inclination", "Inclination of the building element"},
    {"Area", "Area of the building element"},
    {"Alpha", "Heat conduction exchange coefficient (for STANDARD model)"},
    {"Beta", "Vapor diffusion exchange coefficient (for STANDARD model)"},
    {"AdsorptionCoefficient", "Adsorption coefficient for short wave radiation (for STANDARD model)"},
    {"EmissionCoefficient", "Emission coefficient for long-wave radiation (for STANDARD model)"},
};

constexpr KeywordRow INTERVAL_PARA[] = {
    {"Start", "Start time point."},
    {"End", "End time point."},
    {"Duration", "Duration (alternative to End)."},
    {"StepSize", "StepSize."},
};

constexpr KeywordRow GAS_CONVECTION_MODEL_GAS_TYPE[] = {
    {"AIR_FILLING", "Filling gas is Air"},
    {"ARGON_FILLING", "Filling gas is Argon"},
    {"KRYPTON_FILLING", "Filling gas is Krypton"},
    {"XENON_FILLING", "Filling gas is Xenon"},
};

constexpr KeywordRow PATH_PLACEHOLDERS_DATA_DIRECTORIES[] = {
    {"MATERIALS", "Material database directory"},
    {"USER_MATERIALS", "User material database directory"},
    {"CLIMATE", "Climate data directory"},
    {"SALT", "Salt data directory"},
    {"VOC", "VOC data directory"},
    {"USER_CLIMATE", "User climate data directory"},
    {"PROJECT", "Directory of current project"},
    {"INSTALL", "Installation directory of VELMORA"},
    {"PROJECT_FILE", "Path of current project (directory and name)"},
    {"EXAMPLES", "Path of VELMORA examples"},
};

constexpr KeywordRow WTA_CONVECTION_MODEL_CONVECTION_MODEL_CLIMATE[] = {
    {"CMC_INDOOR_TEMPER", "Indoor temperature"},
    {"CMC_OUTDOOR_TEMPER", "Outdoor temperature"},
    {"CMC_INDOOR_RELHUM", "Indoor relative humidity"},
};

constexpr KeywordRow WTA_CONVECTION_MODEL_CONVECTION_MODEL_PARAM[] = {
    {"CMP_Q50", "Volume air flow through building envelope (q_50)"},
    {"CMP_HEIGHT", "Height of contiguos air space in building (room height)"},
    {"CMP_DIFFPRESSURE_MECH", "Pressure difference due to mechanical ventilation."},
};

constexpr KeywordCategory INTERFACE_CATEGORIES[] = {
    {"Interface::type_t", Descriptions::SENTENCES, INTERFACE_TYPE},
    {"Interface::climateType_t", Descriptions::SENTENCES, INTERFACE_CLIMATE_TYPE},
    {"Interface::trySpecification_t", Descriptions::SENTENCES, INTERFACE_TRY_SPECIFICATION},
    {"Interface::para_t", Descriptions::SENTENCES, INTERFACE_PARA},
    {"Interval::para_t", Descriptions::SENTENCES, INTERVAL_PARA},
    {"GasConvectionModel::gasType_t", Descriptions::SENTENCES, GAS_CONVECTION_MODEL_GAS_TYPE},
    {"PathPlaceholders::data_directories_t", Descriptions::SENTENCES, PATH_PLACEHOLDERS_DATA_DIRECTORIES},
    {"WTAConvectionModel::convectionModelClimate_t", Descriptions::SENTENCES,
     WTA_CONVECTION_MODEL_CONVECTION_MODEL_CLIMATE},
    {"WTAConvectionModel::convectionModelParam_t", Descriptions::SENTENCES,
     WTA_CONVECTION_MODEL_CONVECTION_MODEL_PARAM},
};

}  // namespace

std::span<const KeywordCategory> interfaceCategories() {
  return INTERFACE_CATEGORIES;
}

}  // namespace VELMORA
