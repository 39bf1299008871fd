#include "VRELRGBColor.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "VRELHashList.h"
#include "VRELStreamFormatter.h"

namespace {

constexpr double kEqualityTolerance = 0.0001;

// Converts a component to an integer. Out of range conversions are undefined in C++ and are clamped.
unsigned int ToInteger(float component) noexcept {
  constexpr unsigned int largest = std::numeric_limits<unsigned int>::max();
  double const scaled = component * 255.0;
  if (!(scaled > 0.0)) return 0;
  return scaled < largest ? static_cast<unsigned int>(scaled) : largest;
}

double Difference(float a, float b) noexcept {
  return std::fabs(a - b);
}

}  // namespace

VRELRGBColor::VRELRGBColor() noexcept : components{0.0F, 0.0F, 0.0F, 0.0F}, valid(false) {}

VRELRGBColor::VRELRGBColor(float red, float green, float blue, float alpha) noexcept
    : components{red, green, blue, alpha} {
  SetValidity();
}

VRELRGBColor::VRELRGBColor(unsigned int red, unsigned int green, unsigned int blue, unsigned int alpha) noexcept {
  unsigned int const values[] = {red, green, blue, alpha};
  SetComponents(values);
}

bool VRELRGBColor::IsValid() const {
  return valid;
}

VRINResult VRELRGBColor::SetRGB(unsigned int red, unsigned int green, unsigned int blue, unsigned int alpha) {
  unsigned int const values[] = {red, green, blue, alpha};
  SetComponents(values);
  return VREL_S_OK;
}

VRINResult VRELRGBColor::SetRGBA(unsigned int* values) {
  if (values == nullptr) return VREL_E_INVALID_ARGUMENT;
  SetComponents(values);
  return VREL_S_OK;
}

VRINResult VRELRGBColor::SetRGBA(float* values) {
  if (values == nullptr) return VREL_E_INVALID_ARGUMENT;
  SetComponents(values);
  return VREL_S_OK;
}

VRINResult VRELRGBColor::GetRGBA(float& red, float& green, float& blue, float& alpha) const {
  red = components[0];
  green = components[1];
  blue = components[2];
  alpha = components[3];
  return VREL_S_OK;
}

VRINResult VRELRGBColor::GetRGBA(unsigned int* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::transform(components, components + 4, out, ToInteger);
  return VREL_S_OK;
}

VRINResult VRELRGBColor::GetRGB(float* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(components, 3, out);
  return VREL_S_OK;
}

VRINResult VRELRGBColor::GetRGBA(float* out) const {
  if (out == nullptr) return VREL_E_INVALID_ARGUMENT;
  std::copy_n(components, 4, out);
  return VREL_S_OK;
}

unsigned int VRELRGBColor::hashCode() const noexcept {
  float const mixed = components[0] + 7.0F * components[1] + 13.0F * components[2] + 17.0F * components[3];
  return VRELHashList<float>::GetHashValue(mixed);
}

void VRELRGBColor::SetValidity() noexcept {
  valid = std::all_of(components, components + 4, [](float each) { return each >= 0.0F && each <= 1.0F; });
}

bool VRELRGBColor::operator==(VRELRGBColor const& other) const noexcept {
  for (int i = 0; i < 4; ++i) {
    if (!(Difference(components[i], other.components[i]) < kEqualityTolerance)) return false;
  }
  return true;
}

bool VRELRGBColor::operator!=(VRELRGBColor const& other) const noexcept {
  // Not the negation of ==: the validity is compared, and a NaN difference does not count as different.
  if (valid != other.valid) return true;
  for (int i = 0; i < 4; ++i) {
    if (Difference(components[i], other.components[i]) >= kEqualityTolerance) return true;
  }
  return false;
}

void VRELRGBColor::SetComponents(unsigned int const* values) noexcept {
  std::transform(values, values + 4, components, [](unsigned int each) { return static_cast<float>(each / 255.0); });
  SetValidity();
}

void VRELRGBColor::SetComponents(float const* values) noexcept {
  std::copy_n(values, 4, components);
  SetValidity();
}

VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELRGBColor const& color) {
  float components[4];
  color.GetRGBA(components);
  char const* const previous = formatter.setDoubleFormat("%.2f", false, 10);
  formatter << "Color[" << components[0] << ";" << components[1] << ";" << components[2];
  if (components[3] != 0.0F) formatter << ";" << components[3];
  formatter << "]";
  // Compatibility: flag and precision are set to these values and not restored.
  formatter.setDoubleFormat(previous, false, 10);
  return formatter;
}
