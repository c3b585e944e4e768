#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "climate/VelClimateCond.h"
#include "foundation/Parameter.h"
#include "keywords/KeywordList.h"
#include "keywords/SectionText.h"

namespace VELMORA {

using ClimateNames = std::array<std::string, VelClimateCond::NUM_C>;
using ClimatePointers = std::array<const VelClimateCond*, VelClimateCond::NUM_C>;

/// Enumerator of a keyword.
/// @throws TKL::Exception for a word that the category does not have
template <class Enumerator>
Enumerator readEnumerator(const char* category, const std::string& keyword) {
  return static_cast<Enumerator>(KeywordList::Enumeration(category, keyword));
}

/// Sets the bits of the words of a text, after all others have been cleared.
/// @throws TKL::Exception for a word that the category does not have
template <std::size_t N>
void readFlags(const char* category, const std::string& text, std::bitset<N>& flags) {
  flags.reset();
  std::istringstream stream(text);
  for (std::string word; stream >> word;) {
    flags.set(static_cast<std::size_t>(KeywordList::Enumeration(category, word)));
  }
}

/// Takes the name of a climate condition if the keyword is that of a climate quantity.
/// @return false for another keyword
bool readClimateName(const KeywordLine& line, ClimateNames& names);

/// Points `climate` to the conditions of the given names, each of which must be of the quantity under whose
/// index its name stands.
/// @throws TKL::Exception "Error linking climate conditions to boundary condtions!" after an error message
/// for each name that does not exist; "Invalid climate condition assignment with name '%1', should be of
/// type '%2'"
void linkClimate(const ClimateNames& names, const std::vector<VelClimateCond>& climateConds,
                 ClimatePointers& climate, const char* functionId);

}  // namespace VELMORA
