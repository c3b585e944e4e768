#pragma once

#include <vector>

namespace VELMORA_SOLVER {

/// A layer that binds a pollutant in proportion to its density r in the pore gas:
///
///     capacity dr/dt = conductance d2r/dx2
struct SorbingLayer {
  double thickness = 0.0;    ///< [m]
  double capacity = 0.0;     ///< [---] porosity and partition coefficient together
  double conductance = 0.0;  ///< [m2/s] diffusion coefficient in air over the resistance factor

  double diffusivity() const { return conductance / capacity; }
};

/// A layer without any flow through its faces. At the start the part from x = 0 to `loadedWidth` has the
/// density `rho0`, the rest none.
class SealedLayer {
 public:
  SealedLayer(const SorbingLayer& layer, double loadedWidth, double rho0)
      : layer_(layer), loadedWidth_(loadedWidth), rho0_(rho0) {}

  /// Density [kg/m3] in the pore gas at x [m] and t > 0 [s]: cosine series, J. Crank, The Mathematics of
  /// Diffusion, 2nd edition, 1975, section 2.2.4.
  double density(double x, double t) const;

 private:
  SorbingLayer layer_;
  double loadedWidth_;
  double rho0_;
};

/// Emission of a layer that is sealed at x = 0 through a film at x = `thickness` to air of constant density.
/// At the start the layer has the density `rho0` in its pore gas. J. Crank, as above, section 4.3.6; H.
/// Huang, F. Haghighat, Building and Environment 37 (2002) 1349.
class LayerEmission {
 public:
  /// @param film  [m/s] coefficient of the film; infinite for a face of the density of the air
  LayerEmission(const SorbingLayer& layer, double film, double rho0, double rhoAir);

  /// Density [kg/m3] in the pore gas at x [m] and t >= 0 [s].
  double density(double x, double t) const;
  /// Flow [kg/m2s] to the air.
  double flux(double t) const;
  /// What has gone to the air until t [kg/m2].
  double emitted(double t) const;
  /// Film coefficient times thickness over conductance.
  double biot() const { return biot_; }
  /// Roots of b tan b = Bi, rising.
  const std::vector<double>& eigenvalues() const { return roots_; }

 private:
  /// Sum of the terms of the excess density over that of the start, each weighted by `weight(b)`.
  template <typename Weight>
  double sum(double t, const Weight& weight) const;

  SorbingLayer layer_;
  double rho0_;
  double rhoAir_;
  double biot_;
  std::vector<double> roots_;
};

/// What a body of no end, loaded with `rho0`, has emitted through a film to clean air until t [kg/m2]: the
/// early emission of a layer. H. S. Carslaw, J. C. Jaeger, Conduction of Heat in Solids, 2nd edition, 1959,
/// section 2.7.
double earlyEmission(const SorbingLayer& layer, double film, double rho0, double t);

}  // namespace VELMORA_SOLVER
