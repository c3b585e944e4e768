#pragma once

#include <ostream>
#include <string>

#include "foundation/Exception.h"

namespace TKL {

/// Message and tag of a `TKL::Exception`.
struct Thrown {
  std::string text;
  std::string location;

  bool operator==(const Thrown&) const = default;
  friend std::ostream& operator<<(std::ostream& stream, const Thrown& thrown) {
    return stream << '"' << thrown.text << "\" " << thrown.location;
  }
};

/// What a call throws, outermost record; "nothing thrown" without a location if it returns.
template <typename Call>
Thrown thrownBy(Call call) {
  try {
    call();
  } catch (const Exception& exception) {
    return {exception.what(), exception.location()};
  }
  return {"nothing thrown", ""};
}

}  // namespace TKL
