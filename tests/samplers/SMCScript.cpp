#include "samplers/SMCScript.h"

#include <algorithm>
#include <cstring>

namespace korvantis::test {
namespace {

constexpr std::uint32_t service = 7;
constexpr std::uint32_t openConnection = 9;
constexpr std::size_t recordSize = 76;
constexpr std::size_t dataSizeOffset = 28;
constexpr std::size_t dataTypeOffset = 32;
constexpr std::size_t resultOffset = 37;
constexpr std::size_t commandOffset = 39;
constexpr std::size_t bytesOffset = 44;

std::string lettersOf(std::uint32_t code) {
  std::string letters;
  for (int shift = 24; shift >= 0; shift -= 8) letters += static_cast<char>(code >> shift & 0xFFU);
  return letters;
}

std::uint32_t codeOf(const std::string& letters) {
  std::uint32_t code = 0;
  for (const char letter : letters) code = code << 8 | static_cast<unsigned char>(letter);
  return code;
}

std::uint32_t word(const std::vector<std::uint8_t>& record, std::size_t offset) {
  std::uint32_t value = 0;
  std::memcpy(&value, record.data() + offset, sizeof value);
  return value;
}

void setWord(std::vector<std::uint8_t>& record, std::size_t offset, std::uint32_t value) {
  std::memcpy(record.data() + offset, &value, sizeof value);
}

/// True when all bytes but the key, the size and the command are zero.
bool isCleanQuestion(std::vector<std::uint8_t> record) {
  setWord(record, 0, 0);
  setWord(record, dataSizeOffset, 0);
  record[commandOffset] = 0;
  return std::all_of(record.begin(), record.end(), [](std::uint8_t byte) { return byte == 0; });
}

}  // namespace

SMCCalls SMCScript::calls() {
  SMCCalls calls;
  calls.IOServiceGetMatchingService = [this](const char* className) {
    check(std::string(className) == "AppleSMC", "wrong class");
    return hasService ? service : 0;
  };
  calls.IOServiceOpen = [this](std::uint32_t object, std::uint32_t type,
                               std::uint32_t* connection) {
    check(object == service && type == 0, "wrong open");
    log.emplace_back("open");
    if (openResult == 0) *connection = openConnection;
    return openResult;
  };
  calls.IOObjectRelease = [this](std::uint32_t object) {
    log.push_back("release " + std::to_string(object));
    return 0;
  };
  calls.IOServiceClose = [this](std::uint32_t connection) {
    log.push_back("close " + std::to_string(connection));
    return 0;
  };
  calls.IOConnectCallStructMethod = [this](std::uint32_t connection, std::uint32_t selector,
                                           const void* input, std::size_t inputSize, void* output,
                                           std::size_t* outputSize) {
    check(connection == openConnection && selector == 2, "wrong exchange");
    return exchange(input, inputSize, output, outputSize);
  };
  return calls;
}

int SMCScript::exchange(const void* input, std::size_t inputSize, void* output,
                        std::size_t* outputSize) {
  check(inputSize == recordSize && *outputSize == recordSize, "wrong record size");
  std::vector<std::uint8_t> question(recordSize);
  std::memcpy(question.data(), input, recordSize);
  check(isCleanQuestion(question), "stray bytes in the question");
  const std::string key = lettersOf(word(question, 0));
  const bool asksInformation = question[commandOffset] == 9;
  check(asksInformation || question[commandOffset] == 5, "wrong command");
  log.push_back((asksInformation ? "information " : "read ") + key);
  if ((asksInformation ? keysWhoseInformationCallFails : keysWhoseReadCallFails).contains(key)) {
    return -1;
  }
  std::vector<std::uint8_t> answer(recordSize);
  const auto found = keys.find(key);
  const bool refused =
      (asksInformation ? keysWithoutInformation : keysThatCannotBeRead).contains(key);
  if (found == keys.end() || refused) {
    answer[resultOffset] = 0x84;
  } else if (asksInformation) {
    setWord(answer, dataSizeOffset, found->second.size);
    setWord(answer, dataTypeOffset, codeOf(found->second.type));
  } else {
    check(word(question, dataSizeOffset) == found->second.size, "wrong size in the question");
    std::copy(found->second.bytes.begin(), found->second.bytes.end(), answer.begin() + bytesOffset);
  }
  std::memcpy(output, answer.data(), recordSize);
  return 0;
}

void SMCScript::check(bool holds, const std::string& complaint) {
  if (!holds) wrongQuestions.push_back(complaint);
}

void SMCScript::setFloat(const std::string& key, float value) {
  std::vector<std::uint8_t> bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  keys[key] = {"flt ", 4, bytes};
}

}  // namespace korvantis::test
