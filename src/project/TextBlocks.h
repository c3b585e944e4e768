#pragma once

#include <string>
#include <vector>

#include "keywords/SectionText.h"

namespace VELMORA {

/// Cuts a text into blocks, each of which begins with a line `header`, with or without brackets. The header
/// itself and empty lines are left out; the other lines stay as they are.
/// @throws TKL::Exception "Expected keyword, got '%1'!" for a line before the first header
std::vector<SectionText> splitBlocks(const SectionText& text, const std::string& header,
                                     const char* functionId);

}  // namespace VELMORA
