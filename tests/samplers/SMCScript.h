#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/SMCCalls.h"

namespace korvantis::test {

/// A System Management Controller that a test writes, answering with records of bytes. Outlives
/// what asks it. One thread.
class SMCScript {
 public:
  struct Key {
    std::string type;
    std::uint32_t size = 0;
    std::vector<std::uint8_t> bytes;
  };

  bool hasService = true;
  int openResult = 0;
  std::map<std::string, Key> keys;
  /// Keys whose question for type and size is answered with a result that is not 0.
  std::set<std::string> keysWithoutInformation;
  /// Keys whose payload is answered with a result that is not 0.
  std::set<std::string> keysThatCannotBeRead;
  /// Keys for which the call itself fails, by command.
  std::set<std::string> keysWhoseInformationCallFails;
  std::set<std::string> keysWhoseReadCallFails;

  SMCCalls calls();

  /// What was wrong with the questions; empty when they were all well formed.
  std::vector<std::string> complaints() const { return wrongQuestions; }
  /// "release 7", "close 9" and the like.
  std::vector<std::string> operations() const { return log; }

  /// A key with a number of type "flt ".
  void setFloat(const std::string& key, float value);
  void setByte(const std::string& key, std::uint8_t value) { keys[key] = {"ui8 ", 1, {value}}; }

 private:
  int exchange(const void* input, std::size_t inputSize, void* output, std::size_t* outputSize);
  void check(bool holds, const std::string& complaint);

  std::vector<std::string> log;
  std::vector<std::string> wrongQuestions;
};

}  // namespace korvantis::test
