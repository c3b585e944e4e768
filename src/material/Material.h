#pragma once

#include <array>
#include <string>
#include <vector>

#include "material/AirTransport.h"
#include "material/MaterialBase.h"
#include "material/MoistureStorage.h"
#include "material/MoistureTransport.h"
#include "material/ThermalStorage.h"
#include "material/ThermalTransport.h"
#include "material/VaporContactResistanceModel.h"

namespace MM {

/// One building material: identification, base parameters and functions. Built empty, read once, read-only
/// from then on. All values are in base units (Pa, K, m3/m3, s). The calculation uses direction U.
class Material : public MaterialBase {
 public:
  enum Sections {
    S_IDENTIFICATION,
    S_STORAGE_BASE_PARAMETERS,
    S_TRANSPORT_BASE_PARAMETERS,
    S_MECHANICAL_BASE_PARAMETERS,
    S_THERMAL_STORAGE,
    S_MOISTURE_STORAGE,
    S_MOISTURE_TRANSPORT,
    S_HEAT_TRANSPORT,
    S_AIR_TRANSPORT,
    S_MOISTURE_TRANSPORT_V,
    S_HEAT_TRANSPORT_V,
    S_AIR_TRANSPORT_V,
    S_MOISTURE_TRANSPORT_W,
    S_HEAT_TRANSPORT_W,
    S_AIR_TRANSPORT_W,
    S_MEASURED_DATA,
    S_VAPOR_CONTACT_RESISTANCE,
    NUM_S
  };

  enum SectionsPreV6 {
    SP_MATERIAL,
    SP_IDENTIFICATION,
    SP_GENERAL,
    SP_MRC,
    SP_MOISTTRANS,
    SP_HEATTRANS,
    SP_AIRTRANS,
    SP_PARAMETER,
    SP_PCMMATERIAL,
    NUM_SP
  };

  /// Numbers of the bits of `transportCapabilities`.
  enum Capability { TC_HEAT, TC_VAPOUR, TC_LIQUID, TC_AIR };

  enum Direction { D_U, D_V, D_W, NUM_D };

  ThermalStorage thermalStorage;
  MoistureStorage moistureStorage;
  std::array<MoistureTransport, NUM_D> moistureTransport;
  std::array<ThermalTransport, NUM_D> thermalTransport;
  std::array<AirTransport, NUM_D> airTransport;
  VaporContactResistanceModel vaporContactResistance;
  int versionMajor = 0;
  int versionMinor = 0;
  int transportCapabilities = 0;  ///< bits by `Capability`

  bool can(Capability capability) const { return (transportCapabilities >> capability & 1) != 0; }

  /// Thermal conductivity [W/mK], see `ThermalTransport::conductivity`.
  double conductivity(double Theta_l, double T, double iceContent) const {
    return thermalTransport[D_U].conductivity(Theta_l, T, iceContent);
  }

  /// Reads a material file of either generation and prepares the material for calculation.
  /// @throws TKL::Exception; the material is to be discarded then
  void read(const TKL::Path& path);

  /// Reads the lines of a material file behind its header, or embedded data, and prepares the material.
  /// @throws TKL::Exception with the context "Error reading material '%1'."
  void readASCII(const std::vector<std::string>& lines, bool preV6);

  /// The same from one text.
  void readASCII(const std::string& text, bool preV6);

  /// Decides from the data what can be evaluated, and how.
  /// @throws TKL::Exception with the context "Error initializing material '%1'."
  void prepareCalculation();

  /// Reads one line of a base parameter section. An unknown keyword is a warning.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value to parameter %1.", "Invalid format
  /// of argument '%2' to keyword '%1'."
  void readASCIIParameterFromLine(const std::string& line);

  /// Keywords and function names that the last reading warned about and skipped, section by section.
  std::vector<std::string> unknownKeywords() const;

  /// Returns to the empty state.
  void clear();

 private:
  using Lines = std::vector<std::string>;

  bool readHeader(const TKL::Path& path);
  static void removePreV6Header(Lines& lines);
  static std::vector<Lines> splitSections(const Lines& lines, bool preV6);
  void readSections(const std::vector<Lines>& sections, bool preV6);
  void readDirection(const std::vector<Lines>& sections, Direction direction, bool preV6);
  void readASCIIParameters(const std::vector<Lines>& sections);
  void readASCIIPreV6Parameters(const Lines& lines);
  TKL::Parameter* findParameter(std::string& keyword);
  void deriveTheta80();
  int capabilities() const;

  std::vector<std::string> unknownParameters_;
};

}  // namespace MM
