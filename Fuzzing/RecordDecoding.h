#pragma once

#include <string>
#include <string_view>

#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"
#include "Require.h"

namespace quillo::fuzzing {

/// Reads the text as a record. It is refused with a JsonError or read; what was read is written in a form that is read
/// back as the same text.
template <class Record>
void requireStableDecoding(std::string_view text) {
  std::string written;
  try {
    written = encodeJson(decodeJson<Record>(text), JsonStyle::prettyPrinted);
  } catch (const JsonError& error) {
    require(!error.errorDescription().empty(), "an error says what is wrong");
    return;
  }
  require(encodeJson(decodeJson<Record>(written), JsonStyle::prettyPrinted) == written, "what is written is read back");
}

}  // namespace quillo::fuzzing
