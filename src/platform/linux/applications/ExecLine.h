#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvantis {

/// The words of a desktop entry's command line: quotes and their escapes undone, field codes such
/// as %U taken out, `env` with its settings left off. Empty when it has no word or a quote that
/// does not end. Any thread.
std::vector<std::string> execWords(std::string_view exec);

}  // namespace korvantis
