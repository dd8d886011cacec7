#include "QuilloCore/Semantics/InterfaceObservation.h"
#include "RecordDecoding.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quillo::fuzzing;
  requireStableDecoding<quillo::InterfaceObservation>(asText(data, size));
  return 0;
}
