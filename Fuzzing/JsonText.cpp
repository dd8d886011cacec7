#include <string>

#include "QuilloCore/Support/JsonErrorLocation.h"
#include "QuilloCore/Support/JsonReader.h"
#include "Require.h"

/// The parser and the scan that locates its errors agree about which texts are JSON.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quillo;
  const std::string_view text = fuzzing::asText(data, size);
  const std::string nothingFound = "nothing found";
  const JsonError located = locateJsonError(text, JsonDocument::maximumDepth, nothingFound);
  const bool isFaulty = !(located == JsonError(JsonError::Malformed{size, nothingFound}));
  try {
    const JsonDocument document = JsonDocument::parse(text);
    fuzzing::require(!isFaulty, "an accepted text has no fault");
  } catch (const JsonError& error) {
    fuzzing::require(isFaulty && error == located, "a refused text has a fault");
  }
  return 0;
}
