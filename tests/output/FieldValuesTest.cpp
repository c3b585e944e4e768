#include "output/FieldValues.h"

#include <gtest/gtest.h>

#include <set>

#include "output/OutputBench.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using Format = VelOutputFormat;

/// Four values base, base + 1, base + 2, base + 3.
std::vector<double> series(double base) {
  return {base, base + 1, base + 2, base + 3};
}

class FieldValuesTest : public ::testing::Test {
 protected:
  std::vector<double> valuesOf(Format::field_t quantity, const OutputSource& source) {
    FieldValues values(bench.elements, {});
    const auto view = values.values(quantity, source);
    return {view.begin(), view.end()};
  }

  OutputBench bench;
};

TEST_F(FieldValuesTest, everyPlainQuantity_isItsOwnArray) {
  struct Case {
    Format::field_t quantity;
    std::span<const double> OutputSource::*array;
  };
  const Case CASES[] = {{Format::Q_TEMPER, &OutputSource::T},
                        {Format::Q_ENERGY, &OutputSource::U},
                        {Format::Q_MOISTURE, &OutputSource::mw},
                        {Format::Q_VAPORMASS, &OutputSource::rhoVapour},
                        {Format::Q_THETAL, &OutputSource::Theta},
                        {Format::Q_RELHUM, &OutputSource::RH},
                        {Format::Q_GASPRESS, &OutputSource::pAir},
                        {Format::Q_LIQUIDPRESS, &OutputSource::pCTotal},
                        {Format::Q_CAPILLARYPRESS, &OutputSource::pC},
                        {Format::Q_VAPPRESS, &OutputSource::pV},
                        {Format::Q_VOCG, &OutputSource::mVOC1},
                        {Format::Q_VOCS, &OutputSource::mVOC2},
                        {Format::Q_VOCPRESS, &OutputSource::pVOC},
                        {Format::Q_VOCDENSG, &OutputSource::rhoVOC},
                        {Format::Q_RHO_ICE, &OutputSource::rhoIce},
                        {Format::Q_ICE_VOLUME_RATIO, &OutputSource::iceRatio},
                        {Format::Q_CONVECTIVE_MOISTURE_SOURCE, &OutputSource::convectiveMoistureSource},
                        {Format::Q_CONVECTIVE_AIR_FLOW, &OutputSource::convectiveAirFlow},
                        {Format::Q_AIRFLOWENTHALPY_IN, &OutputSource::airFlowEnthalpyIn},
                        {Format::Q_AIRFLOWENTHALPY_OUT, &OutputSource::airFlowEnthalpyOut},
                        {Format::Q_HP_FLOW_TEMPERATURE, &OutputSource::heatPipeSupply},
                        {Format::Q_HP_RETURN_FLOW_TEMPERATURE, &OutputSource::heatPipeReturn},
                        {Format::Q_HP_HEAT_FLUX, &OutputSource::heatPipeHeatFlux}};
  for (const Case& each : CASES) {
    const std::vector<double> array = series(static_cast<int>(each.quantity));
    OutputSource source;
    source.*each.array = array;
    EXPECT_EQ(array, valuesOf(each.quantity, source)) << each.quantity;
  }
}

TEST_F(FieldValuesTest, quantitiesWithoutArrays_areNotAvailable) {
  const std::set<int> heatPipe{34, 35, 46};
  for (int quantity = 0; quantity < Format::NUM_Q; ++quantity) {
    EXPECT_EQ(heatPipe.contains(quantity),
              FieldValues::isAvailable(static_cast<Format::field_t>(quantity), {}))
        << quantity;
  }
}

TEST_F(FieldValuesTest, quantityThatIsNotAvailable_throws) {
  EXPECT_EQ((TKL::Thrown{"Output quantity RELHUM is not calculated by this version of the solver!",
                         "[VelmoraCvodeSolver::writeOutput]"}),
            TKL::thrownBy([&] { valuesOf(Format::Q_RELHUM, {}); }));
}

TEST_F(FieldValuesTest, heatPipeValuesWithoutHeatPipe_areZero) {
  for (const auto quantity :
       {Format::Q_HP_FLOW_TEMPERATURE, Format::Q_HP_RETURN_FLOW_TEMPERATURE, Format::Q_HP_HEAT_FLUX}) {
    EXPECT_EQ(std::vector<double>(4, 0.0), valuesOf(quantity, {}));
  }
}

TEST_F(FieldValuesTest, waterMass_isMoistureWithoutIceAndVapour) {
  const auto mw = series(50.0);
  const std::vector<double> ice(4, 7.0);
  const std::vector<double> vapour(4, 1.0);
  OutputSource source;
  source.mw = mw;
  source.rhoVapour = vapour;
  EXPECT_EQ(series(49.0), valuesOf(Format::Q_WATERMASS, source));
  source.rhoIce = ice;
  EXPECT_EQ(series(42.0), valuesOf(Format::Q_WATERMASS, source));
}

TEST_F(FieldValuesTest, sources_areTheSumsOfTheirRecords) {
  const std::vector<double> heat{1, 9, 9, 2, 9, 9, 3, 9, 9, 4, 9, 9};
  const std::vector<double> moisture{5, 9, 6, 9, 7, 9, 8, 9};
  const std::vector<double> voc{1, 9, 9, 9, 2, 9, 9, 9, 3, 9, 9, 9, 4, 9, 9, 9};
  OutputSource source;
  source.heatSource = {heat, NUM_HS};
  source.moistureSource = {moisture, NUM_MS};
  source.vocSource1 = {voc, NUM_VS1};
  EXPECT_EQ(series(1), valuesOf(Format::Q_HEATSOURCE, source));
  EXPECT_EQ(series(5), valuesOf(Format::Q_MOISTSOURCE, source));
  EXPECT_EQ(series(1), valuesOf(Format::Q_VOCSOURCE, source));
}

TEST_F(FieldValuesTest, freezeThawCycles_areWholeNumbers) {
  const std::vector<std::uint32_t> cycles{0, 1, 2, 4294967295u};
  OutputSource source;
  source.freezeThawCycles = cycles;
  EXPECT_EQ((std::vector<double>{0, 1, 2, 4294967295.0}), valuesOf(Format::Q_FREEZE_THAW, source));
}

TEST_F(FieldValuesTest, thermalExpansion_followsTheMaterialOfTheElement) {
  bench.brick.paraMechanical[MM::MaterialBase::PM_ALPHA].value = 1e-5;
  const std::vector<double> T(4, 283.15);
  OutputSource source;
  source.T = T;
  const std::vector<double> strain = valuesOf(Format::Q_THERMAL_EXPANSION, source);
  EXPECT_DOUBLE_EQ(1e-4, strain[0]);
  EXPECT_DOUBLE_EQ(0.0, strain[1]) << "wool";
}

TEST_F(FieldValuesTest, overhygroscopicMass_isAThousandTimesTheContent) {
  bench.brick.identification.flags = MM::MaterialIdentification::F_AIR;
  const std::vector<double> Theta(4, 0.02);
  const std::vector<double> T(4, 283.15);
  OutputSource source;
  source.T = T;
  source.Theta = Theta;
  EXPECT_DOUBLE_EQ(0.02, valuesOf(Format::Q_OVHWATCONT, source)[0]);
  EXPECT_DOUBLE_EQ(20.0, valuesOf(Format::Q_OVHWATMASS, source)[0]);
}

TEST_F(FieldValuesTest, meanHeatFlux_isOfConductionAlone) {
  std::vector<double> flux(OutputBench::N_SIDES * NUM_HF, 0.0);
  flux[6 * NUM_HF + HF_CONDUCTION] = 4.0;  // 10 W/m2 at one of four sides
  flux[6 * NUM_HF + HF_LONGWAVE] = 99.0;
  flux[6 * NUM_HF + HF_AIR] = 8.0;  // 20 W/m2
  OutputSource source;
  source.heatFlux = {flux, NUM_HF};
  EXPECT_DOUBLE_EQ(2.5, valuesOf(Format::Q_HEATFLUXMEAN, source)[0]);
  EXPECT_DOUBLE_EQ(5.0, valuesOf(Format::Q_AIRENTHALPYFLUX, source)[0]);
}

TEST_F(FieldValuesTest, airQuantities_comeFromPressureAndMassFlux) {
  const std::vector<double> pressure(4, 101330.0);
  std::vector<double> flux(OutputBench::N_SIDES, 0.0);
  flux[6] = 4.0;  // 10
  flux[0] = 1.0;  // 5
  OutputSource source;
  source.pAir = pressure;
  source.airMassFlux = flux;
  EXPECT_DOUBLE_EQ(5.0, valuesOf(Format::Q_GASPRESS_DIFF, source)[0]);
  EXPECT_DOUBLE_EQ(15.0 / 4.0, valuesOf(Format::Q_AIRFLUXMEAN, source)[0]);
  EXPECT_DOUBLE_EQ(10.0, valuesOf(Format::Q_AIRFLUXMAX_X, source)[0]);
  EXPECT_DOUBLE_EQ(5.0, valuesOf(Format::Q_AIRFLUXMAX_Y, source)[0]);
}

}  // namespace
}  // namespace VELMORA
