#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace korvantis {

/// The record that goes to the System Management Controller and comes back, as its driver lays it
/// out. Numbers stand as the machine holds them; only the payload has byte orders of its own.
struct SMCKeyData {
  struct Version {
    std::uint8_t major = 0;
    std::uint8_t minor = 0;
    std::uint8_t build = 0;
    std::uint8_t reserved = 0;
    std::uint16_t release = 0;
  };
  struct PowerLimits {
    std::uint16_t version = 0;
    std::uint16_t length = 0;
    std::uint32_t cpuLimit = 0;
    std::uint32_t gpuLimit = 0;
    std::uint32_t memoryLimit = 0;
  };

  /// The four letters of the key, the first one in the highest byte.
  std::uint32_t key = 0;
  Version vers;
  std::uint16_t padding = 0;
  PowerLimits pLimitData;
  /// Bytes of payload that the key has.
  std::uint32_t dataSize = 0;
  /// The four letters of the payload's type, packed like a key.
  std::uint32_t dataType = 0;
  std::uint8_t dataAttributes = 0;
  /// 0 means success.
  std::uint8_t result = 0;
  std::uint8_t status = 0;
  /// The command.
  std::uint8_t data8 = 0;
  std::uint32_t data32 = 0;
  std::array<std::uint8_t, 32> bytes{};
};

static_assert(sizeof(SMCKeyData) == 76);
static_assert(offsetof(SMCKeyData, vers) == 4);
static_assert(offsetof(SMCKeyData, pLimitData) == 12);
static_assert(offsetof(SMCKeyData, dataSize) == 28);
static_assert(offsetof(SMCKeyData, dataType) == 32);
static_assert(offsetof(SMCKeyData, result) == 37);
static_assert(offsetof(SMCKeyData, data8) == 39);
static_assert(offsetof(SMCKeyData, data32) == 40);
static_assert(offsetof(SMCKeyData, bytes) == 44);

/// `IOConnectCallStructMethod`'s selector for an exchange of records.
inline constexpr std::uint32_t smcExchangeSelector = 2;
/// `SMCKeyData::data8`: tell size and type of a key.
inline constexpr std::uint8_t smcKeyInformationCommand = 9;
/// `SMCKeyData::data8`: read the payload of a key.
inline constexpr std::uint8_t smcReadKeyCommand = 5;

/// Packs the first four bytes of a key or type; missing ones are zero.
constexpr std::uint32_t smcFourCharacterCode(std::string_view text) {
  std::uint32_t code = 0;
  for (std::size_t index = 0; index < 4; ++index) {
    const auto byte = index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    code = code << 8U | byte;
  }
  return code;
}

/// The user client of the System Management Controller. Any thread.
struct SMCCalls {
  /// A service of this class, 0 when there is none (`IOServiceMatching` and
  /// `IOServiceGetMatchingService` on the main port). Goes back through `IOObjectRelease`.
  std::function<std::uint32_t(const char* className)> IOServiceGetMatchingService;
  /// Opens a service for this task; 0 on success, then `connection` is set.
  std::function<int(std::uint32_t service, std::uint32_t type, std::uint32_t* connection)>
      IOServiceOpen;
  std::function<int(std::uint32_t object)> IOObjectRelease;
  std::function<int(std::uint32_t connection)> IOServiceClose;
  /// One exchange; 0 on success. `outputSize` holds the room and then the bytes of the answer.
  std::function<int(std::uint32_t connection, std::uint32_t selector, const void* input,
                    std::size_t inputSize, void* output, std::size_t* outputSize)>
      IOConnectCallStructMethod;
};

/// The machine's own controller, or what stands for it.
SMCCalls systemSMCCalls();

}  // namespace korvantis
