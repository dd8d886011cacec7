#include <algorithm>
#include <cstdint>
#include <string>

#include "QuilloCore/Support/GraphemeClusters.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf16.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"
#include "Require.h"

using quillo::fuzzing::require;

namespace {

bool isWellFormed(std::string_view text) {
  return !quillo::findInvalidUtf8(text);
}

void requireTextFunctionsToAgree(const std::string& text) {
  using namespace quillo;
  require(isWellFormed(text), "repaired text is well-formed");
  require(countCodePoints(text) <= text.size(), "no code point is shorter than a byte");

  const Utf16Index index(text);
  require(index.length() == utf16Length(text), "both count the same units");
  const std::int64_t clusters = countGraphemeClusters(text);
  require(clusters <= static_cast<std::int64_t>(countCodePoints(text)), "no cluster is shorter than a code point");
  for (const std::int64_t count : {clusters / 2, clusters}) {
    const std::string_view prefix = graphemeClusterPrefix(text, count);
    require(isWellFormed(prefix) && countGraphemeClusters(prefix) == count, "a prefix has as many clusters as asked");
    require(index.byteOffset(utf16Length(prefix)) == prefix.size(), "offsets are translated there");
    require(index.utf16Offset(prefix.size()) == utf16Length(prefix), "and back");
    require(utf16Prefix(text, utf16Length(prefix)) == prefix, "a prefix by units is the same");
  }

  const std::string collapsed = collapsingWhiteSpace(text);
  require(trimmingWhiteSpace(collapsed) == collapsed && collapsingWhiteSpace(collapsed) == collapsed,
          "it is collapsed");
  require(!normalizingLineBreaks(text).contains('\r'), "no carriage return is left");
  const std::string line = bringingToOneLine(text);
  require(isWellFormed(line) && !line.contains('\n') && !line.contains("\u2028"), "it is one line");
  require(isWellFormed(lowercased(text)) && isWellFormed(lowercasingFirstLetter(text)), "lower case is well-formed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::string_view bytes = quillo::fuzzing::asText(data, size);
  const std::string repaired = quillo::replacingInvalidUtf8(bytes);
  require(!isWellFormed(bytes) || repaired == bytes, "well-formed text is not changed");
  requireTextFunctionsToAgree(repaired);
  return 0;
}
