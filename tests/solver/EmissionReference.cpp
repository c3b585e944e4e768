#include "solver/EmissionReference.h"

#include <cmath>
#include <numbers>

namespace VELMORA_SOLVER {

namespace {

constexpr double PI = std::numbers::pi;
constexpr int MOST_TERMS = 5000;
constexpr double GONE = 45.0;  ///< exponent of a term that no longer counts

/// Root of b tan b = biot between n pi and (n + 1/2) pi, by halving.
double emissionRoot(double biot, int n) {
  if (std::isinf(biot)) return (n + 0.5) * PI;
  double low = n * PI;
  double high = low + 0.5 * PI;
  for (double middle = 0.5 * (low + high); middle > low && middle < high; middle = 0.5 * (low + high))
    (middle * std::tan(middle) < biot ? low : high) = middle;
  return low;
}

}  // namespace

double SealedLayer::density(double x, double t) const {
  const double share = loadedWidth_ / layer_.thickness;
  const double fourier = layer_.diffusivity() * t / (layer_.thickness * layer_.thickness);
  double sum = share;
  for (int n = 1; n < MOST_TERMS; ++n) {
    const double b = n * PI;
    if (b * b * fourier > GONE) break;
    sum += 2.0 / b * std::sin(b * share) * std::cos(b * x / layer_.thickness) * std::exp(-b * b * fourier);
  }
  return rho0_ * sum;
}

LayerEmission::LayerEmission(const SorbingLayer& layer, double film, double rho0, double rhoAir)
    : layer_(layer), rho0_(rho0), rhoAir_(rhoAir), biot_(film * layer.thickness / layer.conductance) {
  for (int n = 0; n < MOST_TERMS; ++n) roots_.push_back(emissionRoot(biot_, n));
}

template <typename Weight>
double LayerEmission::sum(double t, const Weight& weight) const {
  const double fourier = layer_.diffusivity() * t / (layer_.thickness * layer_.thickness);
  double result = 0.0;
  for (const double b : roots_) {
    if (b * b * fourier > GONE) break;
    const double factor = 2.0 * std::sin(b) / (b + std::sin(b) * std::cos(b));
    result += factor * weight(b) * std::exp(-b * b * fourier);
  }
  return result;
}

double LayerEmission::density(double x, double t) const {
  const auto cosine = [&](double b) { return std::cos(b * x / layer_.thickness); };
  return rhoAir_ + (rho0_ - rhoAir_) * sum(t, cosine);
}

double LayerEmission::flux(double t) const {
  const auto slope = [&](double b) { return b / layer_.thickness * std::sin(b); };
  return layer_.conductance * (rho0_ - rhoAir_) * sum(t, slope);
}

double LayerEmission::emitted(double t) const {
  const double all = layer_.capacity * layer_.thickness * (rho0_ - rhoAir_);
  return all * (1.0 - sum(t, [](double b) { return std::sin(b) / b; }));
}

double earlyEmission(const SorbingLayer& layer, double film, double rho0, double t) {
  // z: the film coefficient times the square root of t over that of capacity times conductance
  const double store = std::sqrt(layer.capacity * layer.conductance);
  const double z = film * std::sqrt(t) / store;
  const double surface = std::exp(z * z) * std::erfc(z);  // density at the surface over that of the start
  return rho0 * store * store / film * (surface - 1.0 + 2.0 * z / std::sqrt(PI));
}

}  // namespace VELMORA_SOLVER
