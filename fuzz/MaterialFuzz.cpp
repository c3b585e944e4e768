// Reads arbitrary bytes as a material file; the header decides its generation. A material that is accepted is
// evaluated over its range of moisture.

#include <exception>

#include "FuzzSupport.h"
#include "material/Material.h"

namespace {

/// All functions of the calculation at one liquid content [m3/m3].
double evaluate(const MM::Material& material, double Theta_l) {
  constexpr double T = 293.15, GUESS = -1000.0, RH = 0.5, ICE = 0.01;
  double sum = material.conductivity(Theta_l, T, ICE);
  const MM::MoistureStorage& storage = material.moistureStorage;
  if (storage.kind == MM::MoistureStorage::K_SPLINE || storage.kind == MM::MoistureStorage::K_ANALYTIC ||
      storage.kind == MM::MoistureStorage::K_RH) {
    const double pl = storage.pl_Thetal(Theta_l, T, GUESS);
    sum += pl + storage.Thetal_pl(pl, T);
  }
  const MM::MoistureTransport& moisture = material.moistureTransport[MM::Material::D_U];
  if (moisture.liquidKind == MM::MoistureTransport::L_KL) sum += moisture.Kl(Theta_l);
  if (moisture.liquidKind == MM::MoistureTransport::L_DL) sum += moisture.Dl(Theta_l);
  sum += moisture.Kv(Theta_l, RH);
  sum += material.airTransport[MM::Material::D_U].conductivity(Theta_l);
  return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static VELMORA_FUZZ::SilentMessages silence;
  static const VELMORA_FUZZ::ScratchFolder folder;
  const std::string path = folder.write("Fuzz_1.m6", VELMORA_FUZZ::textOf(data, size));
  try {
    MM::Material material;
    material.read(path);
    constexpr int POINTS = 8;
    volatile double sum = 0.0;
    for (int k = 0; k <= POINTS; ++k) sum = sum + evaluate(material, static_cast<double>(k) / POINTS);
  } catch (const std::exception& error) {
    VELMORA_FUZZ::require(*error.what() != '\0');
  }
  return 0;
}
