#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvantis {

/// The canonical form of the absolute `path` on the machine whose "/" is the folder `root` (empty
/// for this machine): every link followed below that root. Absent when nothing stands there, or
/// links lead in a circle. Any thread.
std::optional<std::string> canonicalPath(const std::string& root, std::string_view path);

/// The last part of a path; the path itself when it holds no slash. Looks into `path`.
std::string_view baseNameOf(std::string_view path);

/// The folder that `path` lies in, without a slash at its end; empty for the root folder. Looks
/// into `path`.
std::string_view folderOf(std::string_view path);

}  // namespace korvantis
