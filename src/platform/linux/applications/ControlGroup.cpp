#include "platform/linux/applications/ControlGroup.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

constexpr std::string_view scope = ".scope";
constexpr std::string_view service = ".service";
constexpr std::string_view slice = ".slice";
constexpr std::size_t uuidLength = 36;

bool takeFront(std::string_view& text, std::string_view front) {
  if (!text.starts_with(front)) return false;
  text.remove_prefix(front.size());
  return true;
}

bool takeBack(std::string_view& text, std::string_view back) {
  if (!text.ends_with(back)) return false;
  text.remove_suffix(back.size());
  return true;
}

/// Undoes the "\xNN" with which unit names write bytes that mean something to them.
std::string unescaped(std::string_view name) {
  std::string text;
  while (!name.empty()) {
    const auto byte = name.size() >= 4 && name.starts_with("\\x")
                          ? unsignedNumber(name.substr(2, 2), 16)
                          : std::nullopt;
    text += byte ? static_cast<char>(*byte) : name.front();
    name.remove_prefix(byte ? 4 : 1);
  }
  return text;
}

bool looksLikeUuid(std::string_view text) {
  return text.size() == uuidLength && std::count(text.begin(), text.end(), '-') == 4;
}

/// Takes "-RANDOM" off the end; gives the random part, empty when there is none.
std::string_view takeRandom(std::string_view& name) {
  if (name.size() > uuidLength + 1 && looksLikeUuid(name.substr(name.size() - uuidLength))) {
    const std::string_view random = name.substr(name.size() - uuidLength);
    name.remove_suffix(uuidLength + 1);
    return random;
  }
  const std::size_t dash = name.rfind('-');
  if (dash == std::string_view::npos) return {};
  const std::string_view random = name.substr(dash + 1);
  name = name.substr(0, dash);
  return random;
}

/// A name may begin with that of the launcher, which can't be told from an id with a dash.
std::vector<std::string> idsWithAndWithoutLauncher(std::string_view name) {
  std::vector<std::string> ids{unescaped(name)};
  const std::size_t dash = name.find('-');
  if (dash != std::string_view::npos) ids.push_back(unescaped(name.substr(dash + 1)));
  return ids;
}

std::optional<std::int32_t> processNumber(std::string_view text) {
  const auto number = unsignedNumber(text);
  const bool fits = number && *number > 0 && *number <= std::numeric_limits<std::int32_t>::max();
  return fits ? std::optional(static_cast<std::int32_t>(*number)) : std::nullopt;
}

/// "app-[LAUNCHER-]ID-RANDOM.scope", "app-[LAUNCHER-]ID@RANDOM.service", "app-ID.slice".
std::optional<ControlGroup::Unit> applicationUnit(std::string_view name) {
  if (!takeFront(name, "app-")) return std::nullopt;
  ControlGroup::Unit unit;
  if (takeBack(name, scope)) {
    unit.isOfOneStart = true;
    unit.leader = processNumber(takeRandom(name));
  } else if (takeBack(name, service)) {
    unit.isOfOneStart = true;
    name = name.substr(0, name.find('@'));
  } else if (!takeBack(name, slice)) {
    return std::nullopt;
  }
  if (name.empty()) return std::nullopt;
  unit.ids = idsWithAndWithoutLauncher(name);
  return unit;
}

/// "dbus-:1.N-ID@0.service".
std::optional<ControlGroup::Unit> busUnit(std::string_view name) {
  if (!takeFront(name, "dbus-") || !takeBack(name, service)) return std::nullopt;
  const std::size_t dash = name.find('-');
  if (!name.starts_with(':') || dash == std::string_view::npos) return std::nullopt;
  name = name.substr(dash + 1);
  ControlGroup::Unit unit;
  unit.isOfOneStart = true;
  unit.ids = {unescaped(name.substr(0, name.find('@')))};
  return unit;
}

/// "snap.SNAP.APP-UUID.scope", with more between dots before the UUID in older ones.
std::optional<ControlGroup::Unit> snapUnit(std::string_view name) {
  if (!takeFront(name, "snap.") || !takeBack(name, scope)) return std::nullopt;
  if (name.size() <= uuidLength || !looksLikeUuid(name.substr(name.size() - uuidLength))) {
    return std::nullopt;
  }
  name.remove_suffix(uuidLength + 1);
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  std::string_view program = name.substr(dot + 1);
  program = program.substr(0, program.find('.'));
  ControlGroup::Unit unit;
  unit.isOfOneStart = true;
  unit.ids = {unescaped(name.substr(0, dot)) + "_" + unescaped(program)};
  return unit;
}

bool isSessionPart(std::string_view part) {
  constexpr std::array<std::string_view, 3> names{"session.slice", "background.slice",
                                                  "init.scope"};
  return std::find(names.begin(), names.end(), part) != names.end() || busUnit(part);
}

void takePart(ControlGroup& group, std::string_view path) {
  const std::string_view part = path.substr(path.rfind('/') + 1);
  for (const auto& read : {applicationUnit, busUnit, snapUnit}) {
    auto unit = read(part);
    if (!unit) continue;
    unit->path = path;
    group.units.push_back(*std::move(unit));
  }
  group.isSession = group.isSession || isSessionPart(part);
}

}  // namespace

ControlGroup parseControlGroup(std::string_view text) {
  ControlGroup group;
  // The one hierarchy without controllers of its own is the one that systemd sorts by.
  const auto path = lineField(text, "0:");
  if (!path) return group;
  group.path = *path;
  std::string_view rest = group.path;
  while (!rest.empty()) {
    takePart(group, rest);
    const std::size_t slash = rest.rfind('/');
    rest = rest.substr(0, slash == std::string_view::npos ? 0 : slash);
  }
  return group;
}

}  // namespace korvantis
