#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow VEL_BOUNDARY_COND_CONDITION[] = {
    {"HEATCOND", "Heat conduction"},
    {"VAPDIFF", "Vapor diffusion"},
    {"RAIN", "Rain"},
    {"SHWRAD", "Short wave radiation"},
    {"LOWRAD", "Long wave radiation"},
    {"WATCONTC", "Water contact"},
    {"AIRPRESS", "Air pressure"},
    {"VOCDIFF", "VOC diffusion"},
    {"SOLCONTC", "Solution contact"},
    {"ROOM", "Room climate connection (internal only)"},
};

constexpr KeywordRow VEL_BOUNDARY_COND_KIND[] = {
    {"SURFVAL", "Surface value"},
    {"IMPFLUX", "Imposed flux"},
    {"EXCHANGE", "Exchange coefficient"},
    {"EXCHANGE_VEL", "Boundary layer (variable air velocity)"},
    {"HEATPIPE", "Heat pipe in wall"},
    {"STDRAIN", "Standard rain model"},
    {"SUNRADM", "Direct sun radiation model"},
    {"LRADCOMP", "Long wave components"},
    {"SOLARCOLL", "Solar collector"},
    {"BOLTZMAN", "Boltzmann calculation"},
    {"HYDROSTATIC", "Hydrostatic pressure profile"},
    {"DEFAULT", "Default model"},
    {"FLOWCOEFF", "Flow coefficient model"},
};

constexpr KeywordRow VEL_BOUNDARY_COND_PARA[] = {
    {"EXCOEFF", "Exchange coefficient for still air"},
    {"EXCH_SLOPE", "Slope coefficient for moving air"},
    {"EXCH_EXP", "Exponent for moving air"},
    {"EXPCOEFF", "Rain exposure coefficient (accounts for sheltering)"},
    {"MINRTEMP", "Minimum rain temperature (below rain falls as snow)"},
    {"MINRFLUX", "Minimum rain intensity normal to the wall (lower values are neglected)"},
    {"SURABSOR", "Absorption coefficient of the building surface for short wave radiation"},
    {"GRDREFLE", "Reflection coefficient of the surrounding ground for short wave radiation (albedo)"},
    {"SUREMISS", "Emission coefficient of the building surface for long wave radiation"},
    {"GRDEMISS", "Emission coefficient of the surrounding ground for long wave radiation"},
    {"SOLAR_ETA0", "Collector coefficient eta0 for solar transmission and absorption gains"},
    {"SOLAR_K0", "Collector coefficient k0 for heat transmission losses"},
    {"SOLAR_K1", "Collector coefficient k1 for heat transmission losses"},
    {"SD_VALUE", "sd-value of painting / surface coating"},
    {"HP_RADIUS", "Heat pipe: Radius"},
    {"HP_LENGTH", "Heat pipe: Length"},
    {"HP_CAPACITY", "Heat pipe: Fluid heat capacity"},
    {"HP_TRANSFER", "Heat pipe: Thermal transfer coefficient"},
    {"HP_SUPPTEMP", "Heat pipe: Initial supply temperature"},
    {"HP_QTHERM_T0", "Heat pump: Thermal performance at T0"},
    {"HP_COP_T0", "Heat pump: Coefficient of performance at T0"},
    {"HP_TMIN", "Heat pump: Minimum temperature of operation"},
    {"HP_COP_MIN", "Heat pump: Coefficient of performance at TMIN"},
    {"HP_TMAX", "Heat pump: Maximum temperature of operation"},
    {"HP_COP_MAX", "Heat pump: Coefficient of performance at TMAX"},
    {"HP_RELAX", "Heat pump: Relaxation factor for heat flux calculation (0 means no relaxation)"},
    {"HP_TEMPER_UPPER_LIMIT",
     "Heat pipe: Upper temperature limit. Switch mass flow off if ambient temperature is higher."},
    {"HP_TEMPER_UPPER_HYST",
     "Heat pipe: Hysteresis for upper limit. Mass flow will switch on at upper temperatur limit - hysteresis "
     "value."},
    {"HP_TEMPER_LOWER_LIMIT",
     "Heat pipe: Lower temperature limit. Switch mass flow off if ambient temperature is lower."},
    {"HP_TEMPER_LOWER_HYST",
     "Heat pipe: Hysteresis for lower limit. Mass flow will switch on at lower temperatur limit + hysteresis "
     "value."},
    {"AP_FLOWCOEFF", "Flow coefficient for air inlet and outlet"},
};

constexpr KeywordRow VEL_BOUNDARY_COND_ID_NAME[] = {
    {"WALLDATA"},
    {"SOLUTION"},
    {"ROOM"},
};

constexpr KeywordRow VEL_BOUNDARY_COND_FLAG[] = {
    {"USE_VAPOR_PRESSURE", "Use vapor pressure"},
    {"INCLUDE_RH_CLOUD  INCL_RH_CL",
     "Account for influence of humidity and cloudiness on atmospheric counter radiation"},
    {"INCLUDE_GROUND    INCL_GROUND", "Include long wave radiation interchange with surrounding ground"},
};

constexpr KeywordCategory CATEGORIES[] = {
    {"VelBoundaryCond::condition_t", Descriptions::SENTENCES, VEL_BOUNDARY_COND_CONDITION},
    {"VelBoundaryCond::kind_t", Descriptions::SENTENCES, VEL_BOUNDARY_COND_KIND},
    {"VelBoundaryCond::para_t", Descriptions::SENTENCES, VEL_BOUNDARY_COND_PARA},
    {"VelBoundaryCond::id_name_t", Descriptions::KEYWORDS, VEL_BOUNDARY_COND_ID_NAME},
    {"VelBoundaryCond::flag_t", Descriptions::SENTENCES, VEL_BOUNDARY_COND_FLAG},
};

}  // namespace

std::span<const KeywordCategory> boundaryCategories() {
  return CATEGORIES;
}

}  // namespace VELMORA
