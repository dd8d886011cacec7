#pragma once

#include <string>

#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// Renders an observation into the text that a language model reads.
namespace InterfaceObservationLLMRenderer {

/// Pure; every observation, also a damaged one, yields a text. Lines are joined with LF; there is no final LF.
std::string render(const InterfaceObservation& observation);

}  // namespace InterfaceObservationLLMRenderer
}  // namespace quillo
