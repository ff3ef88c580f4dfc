#include "analysis/AgentTools.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/LowerCase.h"

namespace korvantis {

namespace {

/// A process is this tool when its name is `name`, or `inArguments` or `inPath` stands in its
/// arguments or its path. An empty word stands in none.
struct Row {
  std::string_view toolName;
  std::string_view name;
  std::string_view inArguments;
  std::string_view inPath;
  /// The path counts for the main process of the application alone.
  bool onlyMainByPath = false;
};

// The first row that fits decides. The words are wide on purpose: an editor that has a file
// "/claude.md" open is taken for the agent as well.
constexpr std::array rows{
    Row{"Claude Code", "claude", "/claude", "/claude"},
    Row{"Codex CLI", "codex", "/codex", "/codex"},
    Row{"Gemini / Antigravity", "gemini", "gemini-cli", "antigravity"},
    Row{"Cursor", "cursor", "", "cursor.app/contents/macos/cursor", true},
    Row{"Aider", "aider", "aider", ""},
    Row{"OpenCode", "opencode", "", ""},
};

/// Rows as bits: the first row is the lowest bit.
using RowSet = std::uint32_t;
static_assert(rows.size() < 31);

/// Marks the bytes that are no ASCII.
constexpr RowSet otherAlphabet = RowSet{1} << 31;

constexpr char upperCase(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

constexpr char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Finds one word of each row in a text as though the text were in lower case, in one pass and
/// without a lowered copy: hundreds of command lines come by at every tick, and hardly one fits.
class RowWords {
 public:
  constexpr explicit RowWords(std::string_view Row::*chosen) : word(chosen) {
    for (std::size_t index = 0; index < rows.size(); ++index) {
      const std::string_view text = rows[index].*word;
      if (text.empty()) continue;
      add(withFirstByte, text[0], RowSet{1} << index);
      add(withSecondByte, text[1], RowSet{1} << index);
    }
    for (std::size_t byte = 0; byte < 256; ++byte) {
      if (byte >= 0x80) withFirstByte[byte] = otherAlphabet;
      withSecondByte[byte] |= otherAlphabet;
    }
  }

  /// The rows whose word stands in `text`.
  RowSet foundIn(std::string_view text) const {
    RowSet found = 0;
    for (std::size_t start = 0; start + 1 < text.size(); ++start) {
      RowSet possible = withFirstByte[static_cast<unsigned char>(text[start])] &
                        withSecondByte[static_cast<unsigned char>(text[start + 1])];
      if (possible == 0) continue;
      // Other alphabets have letters that become ASCII ones; they take the long way.
      if (possible == otherAlphabet) return foundInLowerCase(lowerCased(std::string(text)));
      for (possible &= ~found; possible != 0; possible &= possible - 1) {
        const auto index = static_cast<std::size_t>(std::countr_zero(possible));
        if (beginsWithWord(text.substr(start), index)) found |= RowSet{1} << index;
      }
    }
    return found;
  }

 private:
  using Table = std::array<RowSet, 256>;

  static constexpr void add(Table& table, char letter, RowSet row) {
    // In two steps: for a character that has no case they are the same entry.
    table[static_cast<unsigned char>(letter)] |= row;
    table[static_cast<unsigned char>(upperCase(letter))] |= row;
  }

  RowSet foundInLowerCase(const std::string& text) const {
    RowSet found = 0;
    for (std::size_t index = 0; index < rows.size(); ++index) {
      const std::string_view sought = rows[index].*word;
      if (!sought.empty() && text.find(sought) != std::string::npos) found |= RowSet{1} << index;
    }
    return found;
  }

  bool beginsWithWord(std::string_view text, std::size_t index) const {
    const std::string_view sought = rows[index].*word;
    if (text.size() < sought.size()) return false;
    for (std::size_t at = 0; at < sought.size(); ++at) {
      if (lowerCase(text[at]) != sought[at]) return false;
    }
    return true;
  }

  std::string_view Row::*word;
  Table withFirstByte{};
  Table withSecondByte{};
};

constexpr RowWords wordsInArguments(&Row::inArguments);
constexpr RowWords wordsInPath(&Row::inPath);

RowSet rowsOfName(const std::string& name) {
  const std::string lowered = lowerCased(name);
  RowSet found = 0;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (rows[index].name == lowered) found |= RowSet{1} << index;
  }
  return found;
}

RowSet rowsOfPath(const ProcessSample& process) {
  RowSet found = wordsInPath.foundIn(process.executablePath);
  if (found == 0 || process.helperRole == HelperRole::main) return found;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (rows[index].onlyMainByPath) found &= ~(RowSet{1} << index);
  }
  return found;
}

}  // namespace

std::string_view agentToolOf(const ProcessSample& process) {
  const RowSet found =
      rowsOfName(process.name) | wordsInArguments.foundIn(process.arguments) | rowsOfPath(process);
  return found == 0 ? "" : rows[static_cast<std::size_t>(std::countr_zero(found))].toolName;
}

}  // namespace korvantis
