#include "platform/linux/user_defaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "tests/support/linux_session.h"

namespace notewick {
namespace {

namespace fs = std::filesystem;

class SettingsUserDefaultsTest : public testing::Test {
 protected:
  SettingsUserDefaultsTest() { fs::remove_all(folder()); }

  [[nodiscard]] static std::string folder() {
    return LinuxSession::current().home() + "/.config/VELK";
  }
  [[nodiscard]] static std::string file() { return folder() + "/Notewick.ini"; }

  static void userWrites(const std::string& text) {
    fs::create_directories(folder());
    std::ofstream(file()) << text;
  }

  [[nodiscard]] static mode_t mode() {
    struct stat status {};
    EXPECT_EQ(stat(file().c_str(), &status), 0);
    return status.st_mode & 07777U;
  }

  SettingsUserDefaults defaults_;
};

TEST_F(SettingsUserDefaultsTest, AnAbsentOrRemovedKeyHasNoValueAndLookingCreatesNothing) {
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), std::nullopt);
  defaults_.remove("VELKUserEmail");
  EXPECT_FALSE(fs::exists(file()));
  defaults_.setString("VELKUserEmail", "a@example.org");
  defaults_.setString("VELKBaseURL", "https://velk.example");
  defaults_.remove("VELKUserEmail");
  EXPECT_EQ(defaults_.string("VELKUserEmail"), std::nullopt);
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://velk.example");
}

TEST_F(SettingsUserDefaultsTest, OnlyTheExactWordsAreBooleansWhichAreNoTexts) {
  for (const bool value : {false, true}) {
    defaults_.setBoolean("key", value);
    EXPECT_EQ(defaults_.boolean("key"), value);
    EXPECT_EQ(defaults_.string("key"), std::nullopt);
  }
  for (const char* text : {"True", "FALSE", "yes", "1", "0", "true ", "", "truefalse"}) {
    defaults_.setString("key", text);
    EXPECT_EQ(defaults_.boolean("key"), std::nullopt) << text;
    EXPECT_EQ(defaults_.string("key"), text);
  }
}

TEST_F(SettingsUserDefaultsTest, WrittenTextsAreReadBackExactly) {
  for (const std::string& text :
       {std::string("https://host/a,b;c?d=e&f=%20#g"), std::string(), std::string(",,"),
        std::string(" lead"), std::string("trail "), std::string("\t"),
        std::string("half \" quote"), std::string("back\\slash\\n\\"),
        std::string("line\nfeed\r\n"), std::string("@Invalid()"), std::string("@@"),
        std::string("@"), std::string("Ren\u00e9 \u65e5\u672c \U0001f600"),
        std::string("[General]"), std::string("key=value"), std::string("; comment"),
        std::string("null"), std::string("a\0b", 3), std::string(100'000, 'x')}) {
    defaults_.setString("key", text);
    EXPECT_EQ(SettingsUserDefaults().string("key"), text);
  }
}

TEST_F(SettingsUserDefaultsTest, HandWrittenTextsAreTexts) {
  for (const auto& [written, read] :
       {std::pair("https://host/a;b=c", "https://host/a;b=c"), std::pair("\"a;b\", \"c\"", "a;b,c"),
        std::pair("@Variant(x)", "@Variant(x)"), std::pair("\" kept \"", " kept "),
        std::pair("12", "12"), std::pair("True", "True"), std::pair("", "")}) {
    userWrites(std::string("VELKBaseURL=") + written + "\n");
    EXPECT_EQ(defaults_.string("VELKBaseURL"), read) << written;
  }
}

TEST_F(SettingsUserDefaultsTest, AChangeMadeElsewhereCountsAtOnce) {
  defaults_.setString("VELKBaseURL", "https://first.example");
  userWrites("[General]\nVELKBaseURL=https://second.example\n");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://second.example");
  fs::remove(file());
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
}

TEST_F(SettingsUserDefaultsTest, TheFileIsForItsOwnerOnlyFromTheLaunchAndFromEachWriteOn) {
  umask(0);
  defaults_.setString("VELKUserEmail", "a@example.org");
  EXPECT_EQ(mode(), 0600U);
  const std::function<void()> narrow[] = {
      [] { SettingsUserDefaults::keepFilePrivate(); },
      [this] { defaults_.setBoolean("VELKWidgetVisible", true); },
      [this] { defaults_.remove("VELKBaseURL"); }};
  for (const auto& change : narrow) {
    userWrites("[General]\nVELKBaseURL=https://host\n");
    chmod(file().c_str(), 0664);
    change();
    EXPECT_EQ(mode(), 0600U);
  }
}

TEST_F(SettingsUserDefaultsTest, AFileThatCannotBeWrittenIsLeftAloneAndSwallowed) {
  fs::create_directories(file());
  defaults_.setString("VELKBaseURL", "https://host");
  defaults_.remove("VELKUserEmail");
  EXPECT_TRUE(fs::is_directory(file()));
  EXPECT_EQ(defaults_.string("VELKUserEmail"), std::nullopt);
}

TEST_F(SettingsUserDefaultsTest, APipeInItsPlaceHoldsNothingAndIsNeverWaitedFor) {
  fs::create_directories(folder());
  ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  defaults_.setBoolean("VELKWidgetVisible", true);
  EXPECT_TRUE(fs::is_fifo(file()));
}

TEST_F(SettingsUserDefaultsTest, ALinkToADeviceHoldsNothingAndStaysAndOneToItselfIsReplaced) {
  fs::create_directories(folder());
  fs::create_symlink("Notewick.ini", file());
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  defaults_.setBoolean("VELKWidgetVisible", true);
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), true);
  for (const std::string target : {"/dev/zero", "/dev/full"}) {
    fs::remove(file());
    fs::create_symlink(target, file());
    EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
    defaults_.setBoolean("VELKWidgetVisible", true);
    EXPECT_EQ(fs::read_symlink(file()), target);
  }
}

TEST_F(SettingsUserDefaultsTest, WhatIsNoLockInItsPlaceIsTakenAway) {
  const std::string lock = file() + ".lock";
  const auto isWrittenDespite = [&](const char* what) {
    defaults_.setString("VELKUserEmail", what);
    EXPECT_EQ(defaults_.string("VELKUserEmail"), what);
    EXPECT_FALSE(fs::exists(fs::symlink_status(lock)));
  };
  fs::create_directories(folder());
  ASSERT_EQ(mkfifo(lock.c_str(), 0600), 0);
  isWrittenDespite("a pipe");
  for (const char* target : {"/dev/zero", "Notewick.ini.lock"}) {
    fs::create_symlink(target, lock);
    isWrittenDespite(target);
  }
  fs::create_directories(lock + "/full");
  defaults_.setString("VELKUserEmail", "is not written");
  EXPECT_EQ(defaults_.string("VELKUserEmail"), "Notewick.ini.lock");
}

TEST_F(SettingsUserDefaultsTest, AFileTooLargeForSettingsHoldsNothing) {
  userWrites("[General]\nVELKBaseURL=https://host\n");
  fs::resize_file(file(), std::uintmax_t{1} << 40U);
  EXPECT_EQ(defaults_.string("VELKBaseURL"), std::nullopt);
  defaults_.setBoolean("VELKWidgetVisible", true);
  EXPECT_EQ(fs::file_size(file()), std::uintmax_t{1} << 40U);
}

TEST_F(SettingsUserDefaultsTest, ALockThatAnotherMachineLeftBehindIsNotWaitedForLong) {
  const std::string lock = file() + ".lock";
  userWrites("[General]\nVELKBaseURL=https://host\n");
  std::ofstream(lock) << "1\nnotewick\nanother-machine\n\n\n";
  fs::last_write_time(lock, fs::file_time_type::clock::now() + std::chrono::hours(24));
  defaults_.setBoolean("VELKWidgetVisible", false);
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), false);
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://host");
  EXPECT_FALSE(fs::exists(lock));
}

TEST_F(SettingsUserDefaultsTest, TwoProgramsThatWriteAtOnceLoseNothing) {
  const auto writeKeys = [](const std::string& prefix) {
    SettingsUserDefaults defaults;
    for (int key = 0; key < 10; ++key) defaults.setString(prefix + std::to_string(key), prefix);
  };
  const pid_t other = fork();
  ASSERT_GE(other, 0);
  if (other == 0) {
    writeKeys("other");
    _exit(0);
  }
  writeKeys("own");
  waitpid(other, nullptr, 0);
  for (int key = 0; key < 10; ++key) {
    EXPECT_EQ(defaults_.string("own" + std::to_string(key)), "own");
    EXPECT_EQ(defaults_.string("other" + std::to_string(key)), "other");
  }
}

class SystemWideSettingsTest : public SettingsUserDefaultsTest {
 protected:
  SystemWideSettingsTest() {
    for (const char* name : {"for-all", "for-all-too"}) fs::remove_all(folderOfAll(name));
  }

  [[nodiscard]] static std::string folderOfAll(const std::string& name) {
    return LinuxSession::current().home() + "/" + name + "/VELK";
  }
  static void administratorWrites(const std::string& name, const std::string& text) {
    fs::create_directories(folderOfAll(name));
    std::ofstream(folderOfAll(name) + "/Notewick.ini") << "[General]\n" << text;
  }
};

TEST_F(SystemWideSettingsTest, TheAddressOfTheServiceCountsBelowTheUsersOwn) {
  administratorWrites("for-all-too", "VELKBaseURL=https://second.example\n");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://second.example");
  administratorWrites("for-all", "VELKBaseURL=https://first.example;x ; a comment\n");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://first.example;x");
  defaults_.setString("VELKBaseURL", "");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "");
  defaults_.remove("VELKBaseURL");
  EXPECT_EQ(defaults_.string("VELKBaseURL"), "https://first.example;x");
}

TEST_F(SystemWideSettingsTest, NothingElseIsReadThere) {
  administratorWrites("for-all", "VELKUserEmail=a@example.org\nVELKWidgetVisible=false\n");
  EXPECT_EQ(defaults_.string("VELKUserEmail"), std::nullopt);
  EXPECT_EQ(defaults_.boolean("VELKWidgetVisible"), std::nullopt);
}

/// What the line `key=...` in the general section says; nothing where QSettings is to read it.
std::optional<std::string> settingIn(const std::string& written) {
  const auto text = plainSetting(QByteArray::fromStdString("[General]\n" + written), "key");
  return text ? std::optional(text->toStdString()) : std::nullopt;
}

TEST(PlainSetting, IsWhatStandsThere) {
  for (const std::string text :
       {"https://a.example;x", "https://a.example,b, c", "https://u@a.example/%41#c", "a\\path",
        "ends\\", "@user:pw@host", "@Variant(x)", "a\"b;c\"", "Ren\u00e9", ""}) {
    EXPECT_EQ(settingIn("key=" + text + "\n"), text);
  }
}

TEST(PlainSetting, BlanksAndACommentDoNotBelongToIt) {
  EXPECT_EQ(settingIn(" key = \t https://a.example;x \r\n"), "https://a.example;x");
  EXPECT_EQ(settingIn("key=https://a.example;x ; the test server"), "https://a.example;x");
  EXPECT_EQ(settingIn("key= ; not decided yet"), "");
  EXPECT_EQ(settingIn("key=;x"), "");
}

TEST(PlainSetting, QuotesAndEscapesAreLeftToTheirReader) {
  for (const std::string text : {"\"a;b\"", "a\\\\b", "a\\tb", "a\\x41", "a\\0", "\\\"a\\\"",
                                 "@@Invalid()", "@String(a\\0b)"}) {
    EXPECT_EQ(settingIn("key=" + text + "\n"), std::nullopt) << text;
  }
}

TEST(PlainSetting, IsTheLastOfThisKeyInTheGeneralSection) {
  EXPECT_EQ(settingIn("other=a\nkey=b\nkeys=c\n;key=d\n"), "b");
  EXPECT_EQ(settingIn("key=a\nkey=b\n[Other]\nkey=c\n"), "b");
  EXPECT_EQ(settingIn("[Other]\nkey=a\n[general]\nkey=b\n"), "b");
  EXPECT_EQ(settingIn("[Other]\nkey=a\n"), std::nullopt);
  EXPECT_EQ(plainSetting("key=before any section\n", "key"), "before any section");
}

}  // namespace
}  // namespace notewick
