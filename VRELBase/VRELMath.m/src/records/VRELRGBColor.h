// Colour.
#pragma once

#include "VRELExport.h"
#include "VRINResult.h"

class VRELStreamFormatter;

// A colour has no virtual destructor, so that the slots of its virtual table keep their order.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Colour of red, green, blue and alpha as floats, 0 to 1 if the colour is valid. Integer components are divided by 255.
// Components out of range are stored unchanged; IsValid() reports them.
//
//   VRELRGBColor const red(255u, 0u, 0u, 0u);
//   formatter << red;  // Color[1.00;0.00;0.00]
//
// Arrays contain red, green, blue and, if they have four elements, alpha.
//
// Errors: operations that take an array return VREL_E_INVALID_ARGUMENT for null, without a change, otherwise VREL_S_OK.
// Ownership: delete a derived colour through its own type; the destructor is not virtual.
class VREL_EXPORT VRELRGBColor {
 public:
  // Creates a colour with all components 0.
  // Compatibility: it is not valid.
  VRELRGBColor() noexcept;
  VRELRGBColor(float red, float green, float blue, float alpha) noexcept;
  VRELRGBColor(unsigned int red, unsigned int green, unsigned int blue, unsigned int alpha) noexcept;
  VRELRGBColor(VRELRGBColor const&) noexcept = default;
  VRELRGBColor& operator=(VRELRGBColor const&) noexcept = default;

  // Returns the result of the last SetValidity.
  virtual bool IsValid() const;

  // Sets four components.
  // Compatibility: sets alpha, too, in spite of its name.
  virtual VRINResult SetRGB(unsigned int red, unsigned int green, unsigned int blue, unsigned int alpha);
  // Set four components from an array.
  virtual VRINResult SetRGBA(unsigned int* values);
  virtual VRINResult SetRGBA(float* values);

  virtual VRINResult GetRGBA(float& red, float& green, float& blue, float& alpha) const;
  // Writes four elements, each component times 255. Negative components and NaN become 0; components that are too large
  // become the largest unsigned int.
  // Compatibility: the products are truncated and not rounded; 0.999 becomes 254.
  virtual VRINResult GetRGBA(unsigned int* out) const;
  // Writes three elements.
  virtual VRINResult GetRGB(float* out) const;
  // Writes four elements.
  virtual VRINResult GetRGBA(float* out) const;

  // Returns a hash code of the components. Colours that operator== considers equal can have different hash codes.
  unsigned int hashCode() const noexcept;

  // Sets the validity: true if each component is from 0 to 1. NaN makes the colour invalid.
  void SetValidity() noexcept;

  // Returns true if each component differs by less than 0.0001; the validity is not compared.
  bool operator==(VRELRGBColor const& other) const noexcept;
  // Returns true if a component differs by 0.0001 or more, or if only one of the colours is valid.
  // Compatibility: this is not the negation of operator==. For a valid and an invalid colour both can be true; for NaN
  // components both can be false.
  bool operator!=(VRELRGBColor const& other) const noexcept;

 private:
  void SetComponents(unsigned int const* values) noexcept;
  void SetComponents(float const* values) noexcept;

  float components[4];
  bool valid;
};

#pragma GCC diagnostic pop

// Writes "Color[red;green;blue]", or "Color[red;green;blue;alpha]" if alpha is not 0, with two digits after the decimal
// point.
// Compatibility: restores the double format of the formatter, but always without a precision argument.
VREL_EXPORT VRELStreamFormatter& operator<<(VRELStreamFormatter& formatter, VRELRGBColor const& color);
