#include "samplers/RegistryScript.h"

#include <algorithm>
#include <utility>

namespace korvantis::test {

IORegistryEntry RegistryScript::entryOf(const ScriptedEntry& scripted) const {
  return {.createCFProperties = [properties = scripted.properties,
                                 held = heldObject] { return properties; },
          .children =
              [this, children = scripted.children, held = heldObject] {
                std::vector<IORegistryEntry> entries;
                for (const ScriptedEntry& child : children) entries.push_back(entryOf(child));
                return entries;
              }};
}

IORegistryCalls RegistryScript::calls() {
  return {[this](const std::string& className) -> std::optional<std::vector<IORegistryEntry>> {
    const auto& failing = classesThatFailToMatch;
    if (std::find(failing.begin(), failing.end(), className) != failing.end()) return std::nullopt;
    std::vector<IORegistryEntry> entries;
    const auto found = services.find(className);
    if (found == services.end()) return entries;
    for (const ScriptedEntry& service : found->second) entries.push_back(entryOf(service));
    return entries;
  }};
}

ScriptedEntry clientOf(const std::string& creator, PropertyMap more) {
  more["IOUserClientCreator"] = text(creator);
  return {std::move(more)};
}

}  // namespace korvantis::test
