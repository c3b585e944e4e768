#include "output/FluxValues.h"

#include <gtest/gtest.h>

#include <vector>

namespace VELMORA {
namespace {

/// Records of one side whose slots hold base + slot number.
struct Records {
  explicit Records(double base, std::size_t nSlots) {
    for (std::size_t slot = 0; slot < nSlots; ++slot) values.push_back(base + static_cast<double>(slot));
  }
  RecordView view() const { return {values, values.size()}; }
  std::vector<double> values;
};

const Records HEAT(100, 10);
const Records MOISTURE(200, 7);
const Records VOC(300, 3);
const Records ADDITIONAL(400, 7);
const Records AIR(500, 1);

OutputSource fullSource() {
  OutputSource source;
  source.heatFlux = HEAT.view();
  source.moistureFlux = MOISTURE.view();
  source.vocFlux = VOC.view();
  source.additionalFlux = ADDITIONAL.view();
  source.airMassFlux = AIR.values;
  source.heatFluxSum = HEAT.view();
  source.moistureFluxSum = MOISTURE.view();
  source.vocFluxSum = VOC.view();
  source.additionalFluxSum = ADDITIONAL.view();
  return source;
}

/// Keyword order: HEATFLUX conduction, MOISTFLUX sum, WATFLUX liquid, VAPDIFF, VAPCONV, AIRFLUX, VOCFLUX,
/// VOCDIFF, VOCCONV, NORMRAIN, SHWRAD, LWRAD, AIRENTH, RAINRUNOFF, RAINRUNOFFENTH, WATENTH.
constexpr double EXPECTED[] = {101, 200, 203, 201, 202, 500, 300, 301,
                               302, 405, 102, 103, 107, 406, 109, 108};

TEST(FluxValues, everyQuantity_hasItsSlot) {
  const OutputSource source = fullSource();
  for (int quantity = 0; quantity < VelOutputFormat::NUM_X; ++quantity) {
    const FluxSlot flux = fluxValues(static_cast<VelOutputFormat::flux_t>(quantity), source);
    ASSERT_TRUE(flux.isAvailable()) << quantity;
    EXPECT_EQ(EXPECTED[quantity], flux.records.at(0, flux.slot)) << quantity;
  }
}

TEST(FluxValues, timeIntegrals_haveTheSameSlots) {
  const OutputSource source = fullSource();
  for (int quantity = 0; quantity < VelOutputFormat::NUM_X; ++quantity) {
    if (quantity == VelOutputFormat::X_AIRFLUX) continue;
    const FluxSlot flux = fluxSums(static_cast<VelOutputFormat::flux_t>(quantity), source);
    EXPECT_EQ(EXPECTED[quantity], flux.records.at(0, flux.slot)) << quantity;
  }
}

TEST(FluxValues, airMassFlux_isNotIntegrated) {
  EXPECT_FALSE(fluxSums(VelOutputFormat::X_AIRFLUX, fullSource()).isAvailable());
}

TEST(FluxValues, sumsAreOfferedForAllButFourQuantities) {
  for (int quantity = 0; quantity < VelOutputFormat::NUM_X; ++quantity) {
    const bool without = quantity == 5 || quantity == 7 || quantity == 8 || quantity == 12;
    EXPECT_EQ(!without, hasFluxSums(static_cast<VelOutputFormat::flux_t>(quantity))) << quantity;
  }
}

TEST(FluxValues, recordThatIsNotThere_isNotAvailable) {
  for (int quantity = 0; quantity < VelOutputFormat::NUM_X; ++quantity) {
    EXPECT_FALSE(fluxValues(static_cast<VelOutputFormat::flux_t>(quantity), {}).isAvailable()) << quantity;
  }
}

TEST(FluxValues, recordWithTooFewSlots_isNotAvailable) {
  OutputSource source;
  source.heatFlux = {HEAT.values, 1};
  EXPECT_FALSE(fluxValues(VelOutputFormat::X_HEATFLUX, source).isAvailable());
}

}  // namespace
}  // namespace VELMORA
