#include "platform/linux/applications/ExecLine.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace korvantis {
namespace {

/// Reads words off the front of a command line.
class WordReader {
 public:
  explicit WordReader(std::string_view line) : rest(line) {}

  /// The next word; absent at the end and after a fault.
  std::optional<std::string> next() {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\n"), rest.size()));
    if (rest.empty()) return std::nullopt;
    std::string word;
    while (!rest.empty() &&
           std::string_view(" \t\n").find(rest.front()) == std::string_view::npos) {
      if (rest.front() == '"') {
        if (!takeQuoted(word)) return std::nullopt;
      } else {
        takePlain(word);
      }
    }
    return word;
  }

  bool isDamaged() const { return isBroken; }

 private:
  bool takeQuoted(std::string& word) {
    rest.remove_prefix(1);
    while (!rest.empty() && rest.front() != '"') {
      if (rest.front() == '\\' && rest.size() > 1) rest.remove_prefix(1);
      word += rest.front();
      rest.remove_prefix(1);
    }
    isBroken = rest.empty();
    if (!isBroken) rest.remove_prefix(1);
    return !isBroken;
  }

  void takePlain(std::string& word) {
    const bool isCode = rest.front() == '%' && rest.size() > 1;
    if (isCode && rest[1] == '%') word += '%';
    if (!isCode) word += rest.front();
    rest.remove_prefix(isCode ? 2 : 1);
  }

  std::string_view rest;
  bool isBroken = false;
};

bool isSetting(const std::string& word) {
  const std::size_t equals = word.find('=');
  return equals != std::string::npos && equals > 0 && word.find('/') > equals;
}

}  // namespace

std::vector<std::string> execWords(std::string_view exec) {
  WordReader reader(exec);
  std::vector<std::string> words;
  while (auto word = reader.next()) {
    if (!word->empty()) words.push_back(std::move(*word));
  }
  if (reader.isDamaged()) return {};
  auto first = words.begin();
  if (first != words.end() && (*first == "env" || first->ends_with("/env"))) {
    first = std::find_if_not(first + 1, words.end(), isSetting);
  }
  return {first, words.end()};
}

}  // namespace korvantis
