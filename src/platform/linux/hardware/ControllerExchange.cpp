#include "platform/linux/hardware/ControllerExchange.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace korvantis {
namespace {

constexpr std::uint32_t controllerService = 1;
constexpr std::uint32_t controllerConnection = 2;
/// The controller's own way to say that it does not have a key, or does not take a command.
constexpr std::uint8_t keyNotFound = 0x84;
constexpr std::uint8_t badCommand = 0x82;

SMCKeyData answerTo(const SMCKeyData& question, ControllerKeys& keys) {
  SMCKeyData answer;
  answer.key = question.key;
  const auto value = keys.value(question.key);
  if (!value) {
    answer.result = keyNotFound;
  } else if (question.data8 == smcKeyInformationCommand) {
    answer.dataSize = static_cast<std::uint32_t>(value->bytes.size());
    answer.dataType = value->type;
  } else if (question.data8 == smcReadKeyCommand) {
    std::copy(value->bytes.begin(), value->bytes.end(), answer.bytes.begin());
  } else {
    answer.result = badCommand;
  }
  return answer;
}

int exchange(ControllerKeys& keys, std::uint32_t selector, const void* input, std::size_t inputSize,
             void* output, std::size_t* outputSize) {
  SMCKeyData question;
  if (selector != smcExchangeSelector || inputSize != sizeof question ||
      *outputSize < sizeof question) {
    return -1;
  }
  std::memcpy(&question, input, sizeof question);
  const SMCKeyData answer = answerTo(question, keys);
  std::memcpy(output, &answer, sizeof answer);
  *outputSize = sizeof answer;
  return 0;
}

}  // namespace

SMCCalls controllerCalls(std::shared_ptr<ControllerKeys> keys) {
  SMCCalls calls;
  calls.IOServiceGetMatchingService = [](const char* className) {
    return std::string_view(className) == "AppleSMC" ? controllerService : 0U;
  };
  calls.IOServiceOpen = [](std::uint32_t service, std::uint32_t, std::uint32_t* connection) {
    if (service != controllerService) return -1;
    *connection = controllerConnection;
    return 0;
  };
  calls.IOObjectRelease = [](std::uint32_t) { return 0; };
  calls.IOServiceClose = [](std::uint32_t) { return 0; };
  calls.IOConnectCallStructMethod =
      [keys = std::move(keys)](std::uint32_t connection, std::uint32_t selector, const void* input,
                               std::size_t inputSize, void* output, std::size_t* outputSize) {
        if (connection != controllerConnection) return -1;
        return exchange(*keys, selector, input, inputSize, output, outputSize);
      };
  return calls;
}

}  // namespace korvantis
