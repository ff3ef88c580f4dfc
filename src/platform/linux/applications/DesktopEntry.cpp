#include "platform/linux/applications/DesktopEntry.h"

#include <algorithm>
#include <cstddef>

#include "platform/linux/TextFields.h"
#include "platform/linux/WellFormedText.h"

namespace korvantis {
namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// Undoes the escapes that any text value may have.
std::string unescaped(std::string_view value) {
  std::string text;
  text.reserve(value.size());
  for (std::size_t index = 0; index < value.size(); ++index) {
    const bool isEscape = value[index] == '\\' && index + 1 < value.size();
    const char next = isEscape ? value[index + 1] : '\0';
    switch (next) {
      case 's': text += ' '; break;
      case 'n': text += '\n'; break;
      case 't': text += '\t'; break;
      case 'r': text += '\r'; break;
      case '\\': text += '\\'; break;
      default: text += value[index]; continue;
    }
    ++index;
  }
  return isWellFormedText(text) ? text : std::string();
}

/// Takes the lines of the one group that matters and keeps the best name.
class EntryReader {
 public:
  explicit EntryReader(const std::vector<std::string>& userLanguages)
      : languages(userLanguages), bestLanguage(userLanguages.size()) {}

  void take(std::string_view key, std::string_view value) {
    if (key == "Type") isApplication = value == "Application";
    if (key == "Name") entry.name = unescaped(value);
    if (key == "Exec") entry.exec = unescaped(value);
    if (key == "Icon") entry.icon = unescaped(value);
    if ((key == "Hidden" || key == "NoDisplay") && value == "true") entry.isShown = false;
    if (key == "Terminal") entry.runsInTerminal = value == "true";
    if (key == "DBusActivatable") entry.isBusActivated = value == "true";
    if (key.starts_with("Name[") && key.ends_with(']')) {
      takeName(key.substr(5, key.size() - 6), value);
    }
  }

  std::optional<DesktopEntry> result() const {
    return isApplication ? std::optional(entry) : std::nullopt;
  }

 private:
  void takeName(std::string_view language, std::string_view value) {
    const auto found = std::find(languages.begin(), languages.end(), language);
    const auto rank = static_cast<std::size_t>(found - languages.begin());
    if (rank >= bestLanguage) return;
    std::string text = unescaped(value);
    if (text.empty()) return;
    entry.localizedName = std::move(text);
    bestLanguage = rank;
  }

  const std::vector<std::string>& languages;
  std::size_t bestLanguage;
  bool isApplication = false;
  DesktopEntry entry;
};

void appendForms(std::string_view locale, std::vector<std::string>& forms) {
  const std::string_view modifier =
      locale.find('@') == std::string_view::npos ? "" : locale.substr(locale.find('@'));
  const std::string_view place = locale.substr(0, locale.find_first_of(".@"));
  if (place.empty() || place == "C" || place == "POSIX") return;
  const std::string_view language = place.substr(0, place.find('_'));
  for (const std::string_view base : {place, language}) {
    for (const std::string_view end : {modifier, std::string_view()}) {
      std::string form = std::string(base).append(end);
      if (std::find(forms.begin(), forms.end(), form) == forms.end()) {
        forms.push_back(std::move(form));
      }
    }
  }
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& languages) {
  EntryReader reader(languages);
  bool isInGroup = false;
  while (!text.empty()) {
    const std::string_view line = trimmed(takeLine(text));
    if (line.empty() || line.front() == '#') continue;
    if (line.front() == '[') {
      // The groups after it describe further actions of the same application.
      if (isInGroup) break;
      isInGroup = line == "[Desktop Entry]";
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!isInGroup || equals == std::string_view::npos) continue;
    reader.take(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
  return reader.result();
}

std::vector<std::string> entryLanguages(std::string_view list, std::string_view locale) {
  std::vector<std::string> own;
  appendForms(locale, own);
  if (own.empty()) return {};
  std::vector<std::string> forms;
  while (!list.empty()) {
    const std::size_t colon = std::min(list.find(':'), list.size());
    appendForms(list.substr(0, colon), forms);
    list.remove_prefix(std::min(colon + 1, list.size()));
  }
  for (std::string& form : own) {
    if (std::find(forms.begin(), forms.end(), form) == forms.end()) forms.push_back(form);
  }
  return forms;
}

}  // namespace korvantis
