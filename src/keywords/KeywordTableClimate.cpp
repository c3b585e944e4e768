#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow VEL_CLIMATE_COND_CONDITION[] = {
    {"TEMPER \t\tTemper", "Temperature"},
    {"RELHUM \t\tRelHum", "Relative humidity"},
    {"VAPPRESS", "Water vapor pressure"},
    {"NORRAIN", "Rain flux density normal to the wall surface"},
    {"HORRAIN \t\tVertRain", "Rain flux density on a horizontal plane"},
    {"WINDDIR \t\tWindDir", "Wind direction, North=0 Deg, East=90 Deg, ..."},
    {"WINDVEL \t\tWindVel", "Wind velocity"},
    {"SHWRAD", "Short wave radiation (global)"},
    {"DIRRAD \t\tDirRad", "Direct sun radiation (short wave component)"},
    {"DIFRAD \t\tDifRad", "Diffuse sun radiation (short wave component)"},
    {"LOWRAD", "Long wave radiation (balance)"},
    {"SKYEMISS \t\tSkyRad", "Atmospheric counter radiation"},
    {"SKYTEMP", "Sky temperature"},
    {"CLOUDCOV \t\tCloudCover", "Cloud covering"},
    {"GRNDEMISS", "Heat emission from surrounding ground"},
    {"GRNDTEMP", "Surrounding ground temperature"},
    {"PREHEAD", "Pressure head"},
    {"WATFLUXDENS   WATFLUX", "Imposed moisture flux density"},
    {"HEATFLUXDENS  HEATFLUX", "Imposed heat flux density"},
    {"MASSFLUXDENS  MASSFLUX", "Mass flux density"},
    {"HEATFLOW", "Heat flow"},
    {"GASPRESS", "Gas (air) pressure"},
    {"VOCDENSG", "VOC density (concentration) in gas phase"},
    {"WATSOURCE", "Liquid water production rate"},
    {"ENESOURCE", "Energy production rate"},
    {"VOCSOURCE", "Pollutant production rate"},
    {"AIRFLOWRATE   FLOWRATE", "Air/gas flow rate"},
    {"AIRCHANGERATE AIRCHANGE", "Air/gas change rate"},
    {"VOLFLUIDFLUX", "Volumetric fluid flux rate"},
    {"FLUIDVELOCITY", "Fluid flux velocity"},
    {"PERCENTAGE", "A percentage, that can be used to scale parameters."},
};

constexpr KeywordRow VEL_CLIMATE_COND_KIND[] = {
    {"CONSTANT", "Constant value"},
    {"SINUS", "Sinus wave"},
    {"2SINUS", "Double sinus wave"},
    {"DATLINEAR", "Data points"},
};

constexpr KeywordRow VEL_CLIMATE_COND_PARA[] = {
    {"CONSTVALUE", "Constant value"}, {"MEANVALUE", "Mean value"},      {"AMPLITUDE1", "Amplitude"},
    {"OSCPERIOD1", "Period"},         {"PHASESHIFT1", "Phase shift"},   {"AMPLITUDE2", "Amplitude 2"},
    {"OSCPERIOD2", "Period 2"},       {"PHASESHIFT2", "Phase shift 2"}, {"SHIFTVALUE", "Shifting value"},
};

constexpr KeywordRow VEL_CONDITIONS_CONDITION_LIST[] = {
    {"WALLS"},
    {"CLIMATE_CONDITIONS"},
    {"BOUNDARY_CONDITIONS"},
    {"INITIAL_CONDITIONS"},
    {"FIELD_CONDITIONS"},
    {"CONTACT_CONDITIONS"},
    {"SOLUTION_DEFINITIONS"},
    {"DEFAULT_CONDITIONS"},
};

constexpr KeywordRow VEL_CONDITIONS_CONDITION_TYPE[] = {
    {"WALL_DATA"},  {"CLIMATE_COND"}, {"BOUND_COND"},          {"INIT_COND"},
    {"FIELD_COND"}, {"CONTACT_COND"}, {"SOLUTION_DEFINITION"},
};

constexpr KeywordRow VEL_CONDITIONS_DEFAULT_INITIAL_COND[] = {
    {"DEFAULT_TEMPERATURE"},
    {"DEFAULT_RELHUM"},
};

constexpr KeywordRow VEL_CONDITIONS_NEW_CONDITION_LIST[] = {
    {"WALLS"},           {"ClimateConditions"}, {"BoundaryConditions"},  {"InitialConditions"},
    {"FieldConditions"}, {"ContactConditions"}, {"SolutionDefinitions"}, {"DefaultConditions"},
    {"Schedules"},       {"Interfaces"},
};

constexpr KeywordCategory CLIMATE_CATEGORIES[] = {
    {"VelClimateCond::condition_t", Descriptions::SENTENCES, VEL_CLIMATE_COND_CONDITION},
    {"VelClimateCond::kind_t", Descriptions::SENTENCES, VEL_CLIMATE_COND_KIND},
    {"VelClimateCond::para_t", Descriptions::SENTENCES, VEL_CLIMATE_COND_PARA},
    {"VelConditions::conditionList_t", Descriptions::NONE, VEL_CONDITIONS_CONDITION_LIST},
    {"VelConditions::conditionType_t", Descriptions::NONE, VEL_CONDITIONS_CONDITION_TYPE},
    {"VelConditions::defaultInitialCond_t", Descriptions::KEYWORDS, VEL_CONDITIONS_DEFAULT_INITIAL_COND},
    {"VelConditions::newConditionList_t", Descriptions::NONE, VEL_CONDITIONS_NEW_CONDITION_LIST},
};

}  // namespace

std::span<const KeywordCategory> climateCategories() {
  return CLIMATE_CATEGORIES;
}

}  // namespace VELMORA
