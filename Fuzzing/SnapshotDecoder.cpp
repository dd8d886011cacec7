#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "RecordDecoding.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quillo::fuzzing;
  requireStableDecoding<quillo::AccessibilitySnapshot>(asText(data, size));
  return 0;
}
