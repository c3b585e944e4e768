#include "output/FluxValues.h"

namespace VELMORA {

namespace {

using Format = VelOutputFormat;

enum record_t { HEAT, MOISTURE, VOC, ADDITIONAL, AIR_MASS };

struct Place {
  record_t record;
  std::size_t slot;
};

Place placeOf(Format::flux_t quantity) {
  switch (quantity) {
    case Format::X_HEATFLUX:
      return {HEAT, HF_CONDUCTION};
    case Format::X_MOISTFLUX:
      return {MOISTURE, MF_SUM};
    case Format::X_WATFLUX:
      return {MOISTURE, MF_LIQUID};
    case Format::X_VAPDIFF:
      return {MOISTURE, MF_VAPOUR_DIFFUSION};
    case Format::X_VAPCONV:
      return {MOISTURE, MF_VAPOUR_CONVECTION};
    case Format::X_VOCFLUX:
      return {VOC, VF_SUM};
    case Format::X_VOCDIFF:
      return {VOC, VF_DIFFUSION};
    case Format::X_VOCCONV:
      return {VOC, VF_CONVECTION};
    case Format::X_NORMRAIN:
      return {ADDITIONAL, AF_RAIN};
    case Format::X_SHWRAD:
      return {HEAT, HF_INFILTRATION_SHORTWAVE};
    case Format::X_LWRAD:
      return {HEAT, HF_LONGWAVE};
    case Format::X_AIRENTH:
      return {HEAT, HF_AIR};
    case Format::X_RAINRUNOFF:
      return {ADDITIONAL, AF_RUNOFF};
    case Format::X_RAINRUNOFFENTH:
      return {HEAT, HF_RUNOFF};
    case Format::X_WATENTH:
      return {HEAT, HF_LIQUID};
    case Format::X_AIRFLUX:
    case Format::NUM_X:
      break;
  }
  return {AIR_MASS, 0};
}

}  // namespace

FluxSlot fluxValues(Format::flux_t quantity, const OutputSource& source) {
  const Place place = placeOf(quantity);
  switch (place.record) {
    case HEAT:
      return {source.heatFlux, place.slot};
    case MOISTURE:
      return {source.moistureFlux, place.slot};
    case VOC:
      return {source.vocFlux, place.slot};
    case ADDITIONAL:
      return {source.additionalFlux, place.slot};
    case AIR_MASS:
      break;
  }
  return {RecordView{source.airMassFlux, 1}, place.slot};
}

FluxSlot fluxSums(Format::flux_t quantity, const OutputSource& source) {
  const Place place = placeOf(quantity);
  switch (place.record) {
    case HEAT:
      return {source.heatFluxSum, place.slot};
    case MOISTURE:
      return {source.moistureFluxSum, place.slot};
    case VOC:
      return {source.vocFluxSum, place.slot};
    case ADDITIONAL:
      return {source.additionalFluxSum, place.slot};
    case AIR_MASS:
      break;
  }
  return {};
}

bool hasFluxSums(Format::flux_t quantity) {
  return quantity != Format::X_AIRFLUX && quantity != Format::X_VOCDIFF && quantity != Format::X_VOCCONV &&
         quantity != Format::X_AIRENTH;
}

}  // namespace VELMORA
