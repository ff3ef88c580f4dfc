#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

namespace korvantis::test {

/// A new empty folder that is removed with all that is in it when the object goes.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "korvantis-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = std::filesystem::canonical(name).string();
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    // A child made by fork that ends with its copy of this object must not take the folder away.
    std::error_code ignored;
    if (owner == ::getpid()) std::filesystem::remove_all(folder, ignored);
  }

  /// The canonical path of the folder, without a slash at its end.
  const std::string& path() const { return folder; }

  /// The path of something inside.
  std::string path(const std::string& relative) const { return folder + "/" + relative; }

  /// Writes a file, with the folders that lead to it, over one that is there; gives its path.
  std::string write(const std::string& relative, std::string_view bytes) const {
    const std::string file = madeParent(relative);
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush()) throw std::runtime_error("cannot write " + file);
    return file;
  }

  /// Makes a symbolic link that holds `target`, in place of one that is there.
  void link(const std::string& relative, const std::string& target) const {
    const std::string file = madeParent(relative);
    std::filesystem::remove(file);
    std::filesystem::create_symlink(target, file);
  }

  /// Makes a folder, with those that lead to it; gives its path.
  std::string folderAt(const std::string& relative) const {
    std::filesystem::create_directories(path(relative));
    return path(relative);
  }

  /// Removes a file or a folder with all that is in it.
  void remove(const std::string& relative) const { std::filesystem::remove_all(path(relative)); }

 private:
  std::string madeParent(const std::string& relative) const {
    const std::string file = path(relative);
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    return file;
  }

  std::string folder;
  pid_t owner = ::getpid();
};

}  // namespace korvantis::test
