#include "platform/linux/titles/application_names.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace notewick {
namespace {

class ApplicationNamesTest : public testing::Test {
 protected:
  ApplicationNamesTest() {
    std::string pattern = testing::TempDir() + "namesXXXXXX";
    root_ = mkdtemp(pattern.data());
    std::filesystem::create_directories(root_ / "own");
    std::filesystem::create_directories(root_ / "all");
  }

  ~ApplicationNamesTest() override { std::filesystem::remove_all(root_); }

  void install(const std::string& file, const std::string& text) {
    std::ofstream(root_ / file) << text;
  }

  [[nodiscard]] std::string name(const std::string& id,
                                 std::vector<std::string> languages = {"de_CH", "de"}) const {
    return ApplicationNames({root_ / "own", root_ / "all"}, std::move(languages)).nameOf(id);
  }

  /// The name of a program with this desktop entry.
  [[nodiscard]] std::string nameIn(const std::string& entry) {
    install("all/editor.desktop", entry);
    return name("editor");
  }

  std::filesystem::path root_;
};

TEST_F(ApplicationNamesTest, ComesFromTheDesktopEntryAlsoOneInLowerCase) {
  install("all/org.example.Editor.desktop",
          "[Desktop Entry]\nType=Application\nName=Text Editor\n");
  EXPECT_EQ(name("org.example.Editor"), "Text Editor");
  install("all/editor.desktop", "[Desktop Entry]\nName=Editor\n");
  EXPECT_EQ(name("Editor"), "Editor");
}

TEST_F(ApplicationNamesTest, IsTheIdOfAProgramWithoutEntryOrName) {
  EXPECT_EQ(name("XTerm"), "XTerm");
  EXPECT_EQ(nameIn("[Desktop Entry]\nExec=editor\n=\nName\nName=\n"), "editor");
}

TEST_F(ApplicationNamesTest, ThisProgramHasOneNameWhateverItsWindowsCallThemselves) {
  install("all/tools.velk.notewick.desktop", "[Desktop Entry]\nName=Another edition\n");
  EXPECT_EQ(name("notewick"), "VELK Notewick");
  EXPECT_EQ(name("tools.velk.notewick"), "VELK Notewick");
}

TEST_F(ApplicationNamesTest, IsInTheLanguageOfTheUserWhoseOwnEntryGoesFirst) {
  EXPECT_EQ(
      nameIn("[Desktop Entry]\nName=Text Editor\nName[de]=Textbearbeitung\nName[fr]=Éditeur\n"),
      "Textbearbeitung");
  EXPECT_EQ(name("editor", {"sv"}), "Text Editor");
  install("own/editor.desktop", "[Desktop Entry]\nName=Mine\n");
  EXPECT_EQ(name("editor"), "Mine");
}

TEST_F(ApplicationNamesTest, NamesOfActionsAreNotTheProgramsName) {
  EXPECT_EQ(nameIn("[Desktop Action new]\nName=New Window\n[Desktop Entry]\nName = Text Editor\n"
                   "[Desktop Action old]\nName[de]=Altes Fenster\n"),
            "Text Editor");
}

TEST_F(ApplicationNamesTest, LooksNowhereElse) {
  install("secret.desktop", "[Desktop Entry]\nName=Secret\n");
  EXPECT_EQ(name("../secret"), "../secret");
}

}  // namespace
}  // namespace notewick
