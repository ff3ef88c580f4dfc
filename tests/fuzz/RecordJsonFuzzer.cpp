#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/AppLimit.h"
#include "core/EngineSnapshot.h"
#include "core/FanReading.h"
#include "core/MutedApp.h"
#include "core/RecordJson.h"

namespace {

/// Whatever can be read can be written, and reads back as the same.
template <typename Record>
void checkRoundTrip(std::string_view text) {
  const auto record = korvantis::decodeJson<Record>(text);
  if (!record) return;
  const auto written = korvantis::encodeJson(*record);
  if (!written || korvantis::decodeJson<Record>(*written) != record) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // NOLINTNEXTLINE: bytes are bytes
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  checkRoundTrip<korvantis::FanReading>(text);
  checkRoundTrip<korvantis::AppLimit>(text);
  checkRoundTrip<korvantis::MutedApp>(text);
  checkRoundTrip<korvantis::EngineSnapshot>(text);
  return 0;
}
