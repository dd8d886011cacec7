#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace quillo::fuzzing {

/// Ends the program, as fuzzers want it, when what has to hold does not.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

inline std::string_view asText(const unsigned char* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace quillo::fuzzing

/// The entry of a fuzz target; always returns 0.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);
