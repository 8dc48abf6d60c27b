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

  [[nodiscard]] ApplicationNames names(std::vector<std::string> languages = {"de_CH", "de"}) const {
    return {{root_ / "own", root_ / "all"}, std::move(languages)};
  }

  std::filesystem::path root_;
};

TEST_F(ApplicationNamesTest, ComesFromTheDesktopEntry) {
  install("all/org.example.Editor.desktop",
          "[Desktop Entry]\nType=Application\nName=Text Editor\n");
  EXPECT_EQ(names().nameOf("org.example.Editor"), "Text Editor");
}

TEST_F(ApplicationNamesTest, IsTheIdOfAProgramWithoutEntry) {
  EXPECT_EQ(names().nameOf("XTerm"), "XTerm");
}

TEST_F(ApplicationNamesTest, ThisProgramHasOneNameWhateverItsWindowsCallThemselves) {
  install("all/tools.velk.notewick.desktop", "[Desktop Entry]\nName=Another edition\n");
  for (const char* id : {"notewick", "tools.velk.notewick"}) {
    EXPECT_EQ(names().nameOf(id), "VELK Notewick");
  }
}

TEST_F(ApplicationNamesTest, FindsAnEntryInLowerCase) {
  install("all/editor.desktop", "[Desktop Entry]\nName=Text Editor\n");
  EXPECT_EQ(names().nameOf("Editor"), "Text Editor");
}

TEST_F(ApplicationNamesTest, IsInTheLanguageOfTheUser) {
  install("all/editor.desktop",
          "[Desktop Entry]\nName=Text Editor\nName[de]=Textbearbeitung\nName[fr]=Éditeur\n");
  EXPECT_EQ(names().nameOf("editor"), "Textbearbeitung");
  EXPECT_EQ(names({"sv"}).nameOf("editor"), "Text Editor");
}

TEST_F(ApplicationNamesTest, TheUsersOwnEntryGoesFirst) {
  install("own/editor.desktop", "[Desktop Entry]\nName=Mine\n");
  install("all/editor.desktop", "[Desktop Entry]\nName=Everyone's\n");
  EXPECT_EQ(names().nameOf("editor"), "Mine");
}

TEST_F(ApplicationNamesTest, NamesOfActionsAreNotTheProgramsName) {
  install("all/editor.desktop",
          "[Desktop Action new]\nName=New Window\n[Desktop Entry]\nName = Text Editor\n"
          "[Desktop Action old]\nName[de]=Altes Fenster\n");
  EXPECT_EQ(names().nameOf("editor"), "Text Editor");
}

TEST_F(ApplicationNamesTest, AnEntryWithoutNameLeavesTheId) {
  install("all/editor.desktop", "[Desktop Entry]\nExec=editor\n=\nName\nName=\n");
  EXPECT_EQ(names().nameOf("editor"), "editor");
}

TEST_F(ApplicationNamesTest, LooksNowhereElse) {
  install("secret.desktop", "[Desktop Entry]\nName=Secret\n");
  EXPECT_EQ(names().nameOf("../secret"), "../secret");
}

}  // namespace
}  // namespace notewick
