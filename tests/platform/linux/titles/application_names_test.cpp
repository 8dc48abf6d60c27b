#include "platform/linux/titles/application_names.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

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
    return ApplicationNames({root_ / "own", root_ / "all"}, std::move(languages));
  }

  [[nodiscard]] std::string name(const std::string& id) const { return names().nameOf(id); }

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
  EXPECT_EQ(names({"sv"}).nameOf("editor"), "Text Editor");
  install("own/editor.desktop", "[Desktop Entry]\nName=Mine\n");
  EXPECT_EQ(name("editor"), "Mine");
}

TEST_F(ApplicationNamesTest, NamesOfActionsAreNotTheProgramsName) {
  EXPECT_EQ(nameIn("[Desktop Action new]\nName=New Window\n[Desktop Entry]\nName = Text Editor\n"
                   "[Desktop Action old]\nName[de]=Altes Fenster\n"),
            "Text Editor");
}

TEST_F(ApplicationNamesTest, LooksAgainOnlyAfterAThousandOtherPrograms) {
  auto names = this->names();
  const auto meetOthers = [&](std::size_t count) {
    while (count-- > 0) EXPECT_NE(names.nameOf("other" + std::to_string(count)), "");
  };
  EXPECT_EQ(names.nameOf("editor"), "editor");
  install("all/editor.desktop", "[Desktop Entry]\nName=Text Editor\n");
  meetOthers(999);
  EXPECT_EQ(names.nameOf("editor"), "editor");
  meetOthers(1000);
  EXPECT_EQ(names.nameOf("editor"), "Text Editor");
}

TEST_F(ApplicationNamesTest, AnIdOfAnyLengthIsTakenAndLooksForNothing) {
  const std::string longest(255 - std::string(".desktop").size(), 'x');
  install("all/" + longest + ".desktop", "[Desktop Entry]\nName=Long\n");
  EXPECT_EQ(name(longest), "Long");
  const std::string endless(1'000'000, 'x');
  EXPECT_EQ(name(endless), endless);
}

TEST_F(ApplicationNamesTest, WhatIsNoFileOrTooLargeIsNoEntryAndNeverWaitedFor) {
  install("all/large.desktop", "[Desktop Entry]\nName=Large\n");
  std::filesystem::resize_file(root_ / "all/large.desktop", 1024 * 1024 + 1);
  ASSERT_EQ(mkfifo((root_ / "all/pipe.desktop").c_str(), 0600), 0);
  std::filesystem::create_symlink("/dev/zero", root_ / "all/device.desktop");
  std::filesystem::create_symlink("loop.desktop", root_ / "all/loop.desktop");
  std::filesystem::create_directory(root_ / "all/folder.desktop");
  for (const char* id : {"large", "pipe", "device", "loop", "folder"}) {
    EXPECT_EQ(name(id), id);
  }
}

TEST_F(ApplicationNamesTest, LooksNowhereElse) {
  install("secret.desktop", "[Desktop Entry]\nName=Secret\n");
  EXPECT_EQ(name("../secret"), "../secret");
}

}  // namespace
}  // namespace notewick
