#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace notewick {

/// The names by which the user knows programs, from their desktop entries (freedesktop Desktop
/// Entry and XDG Base Directory Specifications): a window itself says only "org.gnome.TextEditor".
/// Each program is looked up once.
class ApplicationNames {
 public:
  /// Searches the folders that the environment names, for the languages that it names.
  ApplicationNames();

  /// `folders` hold desktop entries, the first found counts; `languages` are suffixes of keys as in
  /// "de_CH", the first found counts.
  ApplicationNames(std::vector<std::filesystem::path> folders, std::vector<std::string> languages);

  /// The name of the program that calls its windows `id` (class part of WM_CLASS, Wayland
  /// application id), valid UTF-8; the id itself when it has no desktop entry of that name. This
  /// program has one name, whatever its windows call themselves.
  [[nodiscard]] std::string nameOf(const std::string& id);

 private:
  [[nodiscard]] std::optional<std::string> lookUp(const std::string& id) const;

  std::vector<std::filesystem::path> folders_;
  std::vector<std::string> languages_;
  std::map<std::string, std::string> known_;
};

}  // namespace notewick
