#include "output/FieldValues.h"

#include <array>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/PhysicalConstants.h"
#include "keywords/KeywordList.h"

namespace VELMORA {

namespace {

using Format = VelOutputFormat;
using Source = OutputSource;
using Array = std::span<const double>;

constexpr double NORMAL_AIR_PRESSURE = 101325.0;  // [Pa]

/// The array of a quantity that the solver holds as it is; empty for all other quantities.
Array plainArray(Format::field_t quantity, const Source& source) {
  struct Entry {
    Format::field_t quantity;
    Array Source::*array;
  };
  static constexpr std::array ENTRIES{
      Entry{Format::Q_TEMPER, &Source::T},
      Entry{Format::Q_ENERGY, &Source::U},
      Entry{Format::Q_MOISTURE, &Source::mw},
      Entry{Format::Q_VAPORMASS, &Source::rhoVapour},
      Entry{Format::Q_THETAL, &Source::Theta},
      Entry{Format::Q_RELHUM, &Source::RH},
      Entry{Format::Q_GASPRESS, &Source::pAir},
      Entry{Format::Q_LIQUIDPRESS, &Source::pCTotal},
      Entry{Format::Q_CAPILLARYPRESS, &Source::pC},
      Entry{Format::Q_VAPPRESS, &Source::pV},
      Entry{Format::Q_VOCG, &Source::mVOC1},
      Entry{Format::Q_VOCS, &Source::mVOC2},
      Entry{Format::Q_VOCPRESS, &Source::pVOC},
      Entry{Format::Q_VOCDENSG, &Source::rhoVOC},
      Entry{Format::Q_LOCALERROR_U, &Source::localErrorU},
      Entry{Format::Q_LOCALERROR_MWV, &Source::localErrorMw},
      Entry{Format::Q_RHO_ICE, &Source::rhoIce},
      Entry{Format::Q_ICE_VOLUME_RATIO, &Source::iceRatio},
      Entry{Format::Q_CONVECTIVE_MOISTURE_SOURCE, &Source::convectiveMoistureSource},
      Entry{Format::Q_CONVECTIVE_AIR_FLOW, &Source::convectiveAirFlow},
      Entry{Format::Q_AIRFLOWENTHALPY_IN, &Source::airFlowEnthalpyIn},
      Entry{Format::Q_AIRFLOWENTHALPY_OUT, &Source::airFlowEnthalpyOut},
      Entry{Format::Q_HP_FLOW_TEMPERATURE, &Source::heatPipeSupply},
      Entry{Format::Q_HP_RETURN_FLOW_TEMPERATURE, &Source::heatPipeReturn},
      Entry{Format::Q_HP_HEAT_FLUX, &Source::heatPipeHeatFlux},
  };
  for (const Entry& entry : ENTRIES) {
    if (entry.quantity == quantity) return source.*entry.array;
  }
  return {};
}

bool isHeatPipeQuantity(Format::field_t quantity) {
  return quantity == Format::Q_HP_FLOW_TEMPERATURE || quantity == Format::Q_HP_RETURN_FLOW_TEMPERATURE ||
         quantity == Format::Q_HP_HEAT_FLUX;
}

bool isDerivable(Format::field_t quantity, const Source& source) {
  switch (quantity) {
    case Format::Q_WATERMASS:
      return !source.mw.empty() && !source.rhoVapour.empty();
    case Format::Q_ULIQU:
    case Format::Q_SATDEGREE:
      return !source.Theta.empty();
    case Format::Q_OVHWATCONT:
    case Format::Q_OVHWATMASS:
    case Format::Q_HYGRIC_EXPANSION:
      return !source.Theta.empty() && !source.T.empty();
    case Format::Q_THERMAL_EXPANSION:
      return !source.T.empty();
    case Format::Q_DEW_POINT:
      return !source.RH.empty() && !source.T.empty();
    case Format::Q_HEATSOURCE:
      return !source.heatSource.empty();
    case Format::Q_MOISTSOURCE:
      return !source.moistureSource.empty();
    case Format::Q_VOCSOURCE:
      return !source.vocSource1.empty();
    case Format::Q_FREEZE_THAW:
      return !source.freezeThawCycles.empty();
    case Format::Q_HEATFLUXMEAN:
    case Format::Q_AIRENTHALPYFLUX:
      return !source.heatFlux.empty();
    case Format::Q_GASPRESS_DIFF:
      return !source.pAir.empty();
    case Format::Q_AIRFLUXMEAN:
    case Format::Q_AIRFLUXMAX_X:
    case Format::Q_AIRFLUXMAX_Y:
      return !source.airMassFlux.empty();
    default:
      return isHeatPipeQuantity(quantity);
  }
}

}  // namespace

bool FieldValues::isAvailable(Format::field_t quantity, const Source& source) {
  return !plainArray(quantity, source).empty() || isDerivable(quantity, source);
}

Array FieldValues::values(Format::field_t quantity, const Source& source) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::writeOutput]";
  const Array plain = plainArray(quantity, source);
  if (!plain.empty()) return plain;
  if (isDerivable(quantity, source)) return derived(quantity, source);
  throw TKL::Exception(
      TKL::FormatString("Output quantity %1 is not calculated by this version of the solver!")
          .arg(KeywordList::Keyword("VelOutputFormat::field_t", static_cast<std::uint32_t>(quantity))),
      FUNC_ID);
}

/// The values of a formula of the element and its number.
template <class Formula>
Array FieldValues::ofEach(const Formula& formula) {
  scratch_.resize(elements_.size());
  for (std::size_t e = 0; e < elements_.size(); ++e) scratch_[e] = formula(elements_[e], e);
  return scratch_;
}

Array FieldValues::derived(Format::field_t quantity, const Source& source) {
  switch (quantity) {
    case Format::Q_WATERMASS:
      if (source.rhoIce.empty())
        return ofEach([&](const Element&, std::size_t e) { return source.mw[e] - source.rhoVapour[e]; });
      return ofEach([&](const Element&, std::size_t e) {
        return source.mw[e] - source.rhoIce[e] - source.rhoVapour[e];
      });
    case Format::Q_ULIQU:
      return ofEach([&](const Element& element, std::size_t e) {
        return liquidMassFraction(*element.material, source.Theta[e]);
      });
    case Format::Q_SATDEGREE:
      return ofEach([&](const Element& element, std::size_t e) {
        return saturationDegree(*element.material, source.Theta[e]);
      });
    case Format::Q_OVHWATCONT:
    case Format::Q_OVHWATMASS: {
      const double density = quantity == Format::Q_OVHWATMASS ? TKL::RHO_W : 1.0;
      return ofEach([&](const Element& element, std::size_t e) {
        return density *
               overhygroscopicWaterContent(*element.material, source.Theta[e], source.T[e], reference_);
      });
    }
    case Format::Q_HYGRIC_EXPANSION:
      return ofEach([&](const Element& element, std::size_t e) {
        return hygricExpansion(*element.material, source.Theta[e], source.T[e], reference_);
      });
    case Format::Q_THERMAL_EXPANSION:
      return ofEach([&](const Element& element, std::size_t e) {
        return thermalExpansion(*element.material, source.T[e], reference_);
      });
    case Format::Q_DEW_POINT:
      return ofEach([&](const Element&, std::size_t e) { return dewPoint(source.RH[e], source.T[e]); });
    case Format::Q_FREEZE_THAW:
      return ofEach([&](const Element&, std::size_t e) { return source.freezeThawCycles[e]; });
    case Format::Q_GASPRESS_DIFF:
      return ofEach([&](const Element&, std::size_t e) { return source.pAir[e] - NORMAL_AIR_PRESSURE; });
    default:
      return derivedFromFlows(quantity, source);
  }
}

/// Quantities of sources and of the flows through the sides; 0 for all that is left, the quantities of heat
/// pipes, of which a construction without heat pipes has none.
Array FieldValues::derivedFromFlows(Format::field_t quantity, const Source& source) {
  const RecordView air{source.airMassFlux, 1};
  switch (quantity) {
    case Format::Q_HEATSOURCE:
      return ofEach([&](const Element&, std::size_t e) { return source.heatSource.at(e, HS_SUM); });
    case Format::Q_MOISTSOURCE:
      return ofEach([&](const Element&, std::size_t e) { return source.moistureSource.at(e, MS_SUM); });
    case Format::Q_VOCSOURCE:
      return ofEach([&](const Element&, std::size_t e) { return source.vocSource1.at(e, VS1_SUM); });
    case Format::Q_HEATFLUXMEAN:
      return ofEach([&](const Element& element, std::size_t) {
        return meanFluxDensity(element, source.heatFlux, HF_CONDUCTION);
      });
    case Format::Q_AIRENTHALPYFLUX:
      return ofEach([&](const Element& element, std::size_t) {
        return meanFluxDensity(element, source.heatFlux, HF_AIR);
      });
    case Format::Q_AIRFLUXMEAN:
      return ofEach([&](const Element& element, std::size_t) { return meanFluxDensity(element, air, 0); });
    case Format::Q_AIRFLUXMAX_X:
      return ofEach([&](const Element& element, std::size_t) {
        return maxFluxDensityX(element, source.airMassFlux, maxFluxDensityY(element, source.airMassFlux));
      });
    case Format::Q_AIRFLUXMAX_Y:
      return ofEach(
          [&](const Element& element, std::size_t) { return maxFluxDensityY(element, source.airMassFlux); });
    default:
      return ofEach([](const Element&, std::size_t) { return 0.0; });
  }
}

}  // namespace VELMORA
