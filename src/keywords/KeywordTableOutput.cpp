#include "keywords/KeywordTables.h"

namespace VELMORA {

namespace {

constexpr KeywordRow VEL_OUTPUT_FORMAT_TYPE[] = {
    {"FIELD", "State variable or related quantity"},
    {"FLUX", "Flux between elements or boundary flux"},
};

constexpr KeywordRow VEL_OUTPUT_FORMAT_FIELD[] = {
    {"TEMPER", "Temperature"},
    {"ENERGY", "Internal energy density"},
    {"MOISTURE", "Moisture mass density (liquid + vapor + ice)"},
    {"WATERMASS", "Water mass density (liquid)"},
    {"VAPORMASS", "Water vapor mass density (vapor)"},
    {"THETAL", "Liquid water content (Volume fraction)"},
    {"ULIQU", "Liquid water content (Mass fraction)"},
    {"OVHWATCONT", "Overhygroscopic water content (Volume fraction)"},
    {"OVHWATMASS", "Overhygroscopic water mass density"},
    {"RELHUM", "Relative humidity"},
    {"GASPRESS", "Gas pressure"},
    {"GASPRESS_DIFF", "Gas pressure difference to normal air pressure"},
    {"LIQUIDPRESS", "Liquid pressure"},
    {"CAPILLARYPRESS", "Capillary pressure"},
    {"VAPPRESS", "Water vapor pressure"},
    {"SALT", "Salt mass density"},
    {"SALTMOLAL", "Molality"},
    {"SALTMOLNUM", "Mol number (with respect to REV)"},
    {"SOLUTION", "Solution mass density (with respect to REV)"},
    {"VOCG", "Gas phase VOC mass density"},
    {"VOCS", "Solid phase VOC mass density"},
    {"VOCPRESS", "VOC partial pressure in gas phase"},
    {"VOCDENSG", "Intrinsic VOC density in gas phase"},
    {"THERMAL_EXPANSION", "Thermal expansion"},
    {"HYGRIC_EXPANSION", "Hygric expansion"},
    {"TOTAL_EXPANSION", "Total expansion"},
    {"HEATSOURCE", "Heat source"},
    {"MOISTSOURCE", "Moisture source"},
    {"VOCSOURCE", "VOC source"},
    {"LOCALERROR_U", "Estimated local error in energy balance equation"},
    {"LOCALERROR_MWV", "Estimated local error in moisture balance equation"},
    {"FREEZE_THAW", "Freeze-Thaw-Cycles"},
    {"RHO_ICE", "Ice mass density"},
    {"ICE_VOLUME_RATIO", "Ice volume to pore volume ratio"},
    {"HP_FLOW_TEMPERATURE", "Heat pipe model: flow temperature (supply)"},
    {"HP_RETURN_FLOW_TEMPERATURE", "Heat pipe model: return flow temperature"},
    {"SATDEGREE", "Moisture saturation degree (Moisture volume divided by pore volume)"},
    {"CONVECTIVE_MOISTURE_SOURCE", "Moisture source due to leakages calculated according WTA 6.2"},
    {"CONVECTIVE_AIR_FLOW", "Air volume flow due to leakages calculated according WTA 6.2"},
    {"HEATFLUXMEAN", "Mean value of heat flux for element"},
    {"AIRFLUXMEAN", "Mean value of air flux for element"},
    {"AIRFLUXMAX_X", "Max value of air flux in x direction for element"},
    {"AIRFLUXMAX_Y", "Max value of air flux in y directionfor element"},
    {"AIRENTHALPYFLUX", "Mean value of enthalpy of air flux for element."},
    {"AIRFLOWENTHALPY_IN", "Enthalpy of inflow of air flow source model."},
    {"AIRFLOWENTHALPY_OUT", "Enthalpy of outflow of air flow source model."},
    {"HP_HEAT_FLUX", "Heat pipe model: heat flux from pipe to surrounding in W"},
    {"DEW_POINT", "Dew point temerature of the element"},
};

constexpr KeywordRow VEL_OUTPUT_FORMAT_FLUX[] = {
    {"HEATFLUX", "Heat flux (conduction)"},
    {"MOISTFLUX", "Total moisture flux"},
    {"WATFLUX", "Water flux (liquid phase only)"},
    {"VAPDIFF", "Vapour flux (vapour diffusion)"},
    {"VAPCONV", "Vapour flux (vapour convection)"},
    {"AIRFLUX", "Total dry air mass flux"},
    {"VOCFLUX", "Total VOC mass flux for a single VOC"},
    {"VOCDIFF", "Diffusive VOC mass flux for a single VOC"},
    {"VOCCONV", "Convective VOC mass flux for a single VOC"},
    {"NORMRAIN", "Rain flow density normal to the surface"},
    {"SHWRAD", "Shortwave radiation flux absorbed from the surface"},
    {"LWRAD", "Longwave radiation balance absorbed from the surface"},
    {"AIRENTH", "Total dry air enthalpy flux"},
    {"RAINRUNOFF", "Rain runoff flow density on the surface"},
    {"RAINRUNOFFENTH", "Enthalpy flow due to rain runoff on the surface"},
    {"WATENTH", "Enthalpy flow due to liquid water flow"},
};

constexpr KeywordRow VEL_OUTPUT_FORMAT_SPACE_TYPE[] = {
    {"SINGLE", "Single values for each element or side"},
    {"MEAN", "Averaged values of elements or sides"},
    {"INTEGRAL", "Integrated values in space"},
};

constexpr KeywordRow VEL_OUTPUT_FORMAT_TIME_TYPE[] = {
    {"NONE", "Write values as calculated at output times"},
    {"MEAN", "Average values in time (mean value in output step)"},
    {"INTEGRAL", "Integrate values in time"},
};

constexpr KeywordRow VEL_OUTPUTS_OUTPUT_SECTIONS[] = {
    {"GENERAL"},
    {"GRIDS"},
    {"FORMATS"},
    {"FILES"},
};

constexpr KeywordRow VEL_OUTPUTS_THAW_BEGIN_KIND[] = {
    {"THAWZEROTEMPERATURE"},
    {"THAWICEVOLUMERATE"},
};

constexpr KeywordCategory OUTPUT_CATEGORIES[] = {
    {"VelOutputFormat::type_t", Descriptions::SENTENCES, VEL_OUTPUT_FORMAT_TYPE},
    {"VelOutputFormat::field_t", Descriptions::SENTENCES, VEL_OUTPUT_FORMAT_FIELD},
    {"VelOutputFormat::flux_t", Descriptions::SENTENCES, VEL_OUTPUT_FORMAT_FLUX},
    {"VelOutputFormat::space_type_t", Descriptions::SENTENCES, VEL_OUTPUT_FORMAT_SPACE_TYPE},
    {"VelOutputFormat::time_type_t", Descriptions::SENTENCES, VEL_OUTPUT_FORMAT_TIME_TYPE},
    {"VelOutputs::outputSections_t", Descriptions::KEYWORDS, VEL_OUTPUTS_OUTPUT_SECTIONS},
    {"VelOutputs::ThawBeginKind", Descriptions::KEYWORDS, VEL_OUTPUTS_THAW_BEGIN_KIND},
};

}  // namespace

std::span<const KeywordCategory> outputCategories() {
  return OUTPUT_CATEGORIES;
}

}  // namespace VELMORA
