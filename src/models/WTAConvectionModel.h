#pragma once

#include <cstdint>

#include "models/FieldConditionModelBase.h"
#include "project/LeakageDefinition.h"

namespace VELMORA {

/// Moisture that warm indoor air brings into a construction through its leaks.
///
/// The stack effect of a heated building and its fans press air through the leaks,
///
///     dp = (Ti - To) g h / 2 rho / Ti + dp_mech     [Pa], rho = 1.3 kg/m3
///     v  = q50 / 750 dp                             [m3/m2s]
///
/// and the vapour above saturation at the coldest element condenses there:
///
///     s  = (rho_v,i - rho_sat(T_min)) v / d         [kg/m3s], d the thickness of the construction
///
/// Nothing flows inwards, and air that is too dry wets nothing.
class WTAConvectionModel final : public FieldConditionModelBase {
 public:
  LeakageDefinition definition;  ///< names and parameters

  const VelClimateCond* outdoorTemperature = nullptr;  ///< not owned
  const VelClimateCond* indoorTemperature = nullptr;   ///< not owned
  const VelClimateCond* indoorRelHum = nullptr;        ///< not owned

  double thickness = 0.0;                    ///< [m] length of the way through the construction
  double minTemperature = 0.0;               ///< [K] of the coldest element
  double rhoVaporAtMin = 0.0;                ///< [kg/m3] saturated vapour there
  double convectiveMoistureSource = 0.0;     ///< [kg/m3s]
  double convectiveAirFlow = 0.0;            ///< [m3/m2s]
  bool flowInX = false;                      ///< the air flows along x
  std::vector<std::int32_t> elementIndices;  ///< of the elements, row by row

  void write(std::ostream& stream) const override { definition.write(stream); }
  void read(const SectionText& text) override { definition.read(text); }

  /// An empty name links nothing.
  /// @throws TKL::Exception "Invalid climate condition assignment with name '%1', should be of type '%2'"
  void assignClimateCond(const std::string& name, const std::vector<VelClimateCond>& climateConds) override;

  /// Takes the elements of the rectangle and measures its thickness. A second rectangle adds its elements.
  /// @throws TKL::Exception for elements without material
  bool prepare(VelFieldCond& fieldCond, const VelSelection::Range& selection,
               const IndexMatrix& elementIndexMatrix, const std::vector<Element>& elements) override;

  /// @throws TKL::Exception "Error in in field condition '%1' with type '%2'.\nClimate condition of type '%1'
  /// needs to be specified!"
  void calculate(double t, const VelFieldCond& fieldCond, const std::vector<Element>& elements,
                 std::span<const double> temperature) override;

  void clear() override { *this = WTAConvectionModel(); }

 private:
  const VelClimateCond* find(LeakageDefinition::convectionModelClimate_t name,
                             VelClimateCond::condition_t type,
                             const std::vector<VelClimateCond>& climateConds) const;
  double require(const VelClimateCond* climate, LeakageDefinition::convectionModelClimate_t name,
                 const VelFieldCond& fieldCond) const;
};

}  // namespace VELMORA
