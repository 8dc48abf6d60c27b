#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace notewick {

// How the desktop knows this program (packaging/linux/tools.velk.notewick.desktop).

/// The name that the user knows it by, in each kind of session and whether or not its desktop entry
/// is installed. It is no application display name of Qt's, because Qt would add that to the title
/// of every window.
inline constexpr const char* OWN_NAME = "VELK Notewick";

/// What its windows call themselves: the class part of WM_CLASS.
inline constexpr const char* OWN_WINDOW_CLASS = "notewick";

/// The name of its desktop entry; what its windows call themselves on Wayland.
inline constexpr const char* OWN_DESKTOP_ENTRY = "tools.velk.notewick";

/// The names by which the user knows programs, from their desktop entries (freedesktop.org,
/// Desktop Entry and XDG Base Directories): a window itself says only "org.gnome.TextEditor".
/// A window may call itself anything, so what is remembered is bounded.
class ApplicationNames {
 public:
  /// Each program is looked up once, until so many are known; then all are forgotten.
  static constexpr std::size_t MOST_KNOWN = 1000;
  /// A longer id, in bytes, is no name of a file, so that nothing is looked up and remembered.
  static constexpr std::size_t LONGEST_ID = 255;

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
