// A colour.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

class VRELStreamFormatter;

// Red, green, blue and alpha as floats, 0 to 1 in a valid colour. Whole numbers, 0 to 255 in a valid colour, are
// divided by 255. Components out of range are kept: only IsValid tells.
//
//   VRELRGBColor const red(255u, 0u, 0u, 0u);
//   formatter << red;  // Color[1.00;0.00;0.00]
//
// Arrays hold red, green, blue and, where there are four elements, alpha. The operations that take one give
// VREL_E_INVALID_ARGUMENT for null and then change nothing, VREL_S_OK otherwise. Delete a derived colour by its own
// type: the destructor is not virtual.
class VREL_EXPORT VRELRGBColor {
 public:
  // All components 0, and yet not valid, which is promised.
  VRELRGBColor() noexcept;
  VRELRGBColor(float red, float green, float blue, float alpha) noexcept;
  VRELRGBColor(unsigned int red, unsigned int green, unsigned int blue, unsigned int alpha) noexcept;
  VRELRGBColor(VRELRGBColor const&) noexcept = default;
  VRELRGBColor& operator=(VRELRGBColor const&) noexcept = default;

  // What the last SetValidity found.
  virtual bool IsValid() const;

  // Takes four values, its name notwithstanding, which is promised.
  virtual VRINResult SetRGB(unsigned int red, unsigned int green, unsigned int blue, unsigned int alpha);
  // Four elements.
  virtual VRINResult SetRGBA(unsigned int* values);
  virtual VRINResult SetRGBA(float* values);

  virtual VRINResult GetRGBA(float& red, float& green, float& blue, float& alpha) const;
  // Four elements, each component times 255. That it is truncated and not rounded is promised: 0.999 gives 254. Below
  // 0, and what is not a number, gives 0; too much gives the largest number.
  virtual VRINResult GetRGBA(unsigned int* out) const;
  // Three elements.
  virtual VRINResult GetRGB(float* out) const;
  // Four elements.
  virtual VRINResult GetRGBA(float* out) const;

  // A hash of the components. Colours that are equal within the tolerance below may have different ones.
  unsigned int hashCode() const noexcept;

  // Valid when each component is at least 0 and at most 1; one that is not a number makes the colour invalid.
  void SetValidity() noexcept;

  // Whether each component differs by less than 0.0001. Validity is not looked at.
  bool operator==(VRELRGBColor const& other) const noexcept;
  // Whether a component differs by 0.0001 or more, or one colour is valid and the other not. That this is not the
  // opposite of == is promised: a valid and an invalid colour may be both equal and different, and components that are
  // not numbers neither.
  bool operator!=(VRELRGBColor const& other) const noexcept;

 private:
  void SetComponents(unsigned int const* values) noexcept;
  void SetComponents(float const* values) noexcept;

  float components[4];
  bool valid;
};

// Writes "Color[red;green;blue]" with two digits behind the decimal point; ";alpha" comes before the bracket unless
// alpha is 0. Afterwards the formatter has its double format back, but without a precision argument, whether it had
// one or not, which is promised.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELRGBColor const& color);
