#include "tools/local-service/participants.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "tests/tools/local-service/test_world.h"

namespace notewick::service {
namespace {

using nlohmann::json;

TEST(ParticipantsTest, TheWireFormGoesBothWays) {
  const Participants list = {{"p-1", "Zoë", "Lindqvist"}, {"p-2", "", "O'Keefe"}};
  const auto form = participantsJson(list);
  EXPECT_EQ(form[0], json({{"id", "p-1"}, {"first_name", "Zoë"}, {"last_name", "Lindqvist"}}));
  EXPECT_EQ(participantsFromJson(form), list);
}

TEST(ParticipantsTest, OtherKeysAreLeftOut) {
  const json form = {{{"id", "1"}, {"first_name", "A"}, {"last_name", "B"}, {"age", 7}}};
  EXPECT_EQ(participantsFromJson(form), (Participants{{"1", "A", "B"}}));
}

TEST(ParticipantsTest, EveryWrongEntryIsRefusedByItsPlace) {
  const json good = {{"id", "1"}, {"first_name", "A"}, {"last_name", "B"}};
  const json noName = {{"id", "2"}, {"first_name", "A"}};
  const json number = {{"id", 2}, {"first_name", "A"}, {"last_name", "B"}};
  const json empty = {{"id", ""}, {"first_name", "A"}, {"last_name", "B"}};
  for (const auto& wrong : {noName, number, empty, good, json("text")}) {
    try {
      static_cast<void>(participantsFromJson(json::array({good, wrong})));
      ADD_FAILURE() << wrong;
    } catch (const std::runtime_error& refused) {
      EXPECT_NE(std::string(refused.what()).find("entry 2: "), std::string::npos) << refused.what();
    }
  }
  EXPECT_THROW(static_cast<void>(participantsFromJson(good)), std::runtime_error);
}

TEST(ParticipantsTest, AreReadFromAFile) {
  const TemporaryFolder folder;
  std::ofstream(folder.file("list")) << R"([{"id": "1", "first_name": "A", "last_name": "B"}])";
  EXPECT_EQ(readParticipants(folder.file("list")), (Participants{{"1", "A", "B"}}));
  std::ofstream(folder.file("broken")) << "[{";
  EXPECT_THROW(static_cast<void>(readParticipants(folder.file("broken"))), std::runtime_error);
  EXPECT_THROW(static_cast<void>(readParticipants(folder.file("none"))), std::runtime_error);
}

TEST(ParticipantsTest, TheDemonstrationHasTwelveOfDifferentIdAndName) {
  std::set<std::string> ids, names;
  for (const auto& person : demonstrationParticipants()) {
    ids.insert(person.id);
    names.insert(person.firstName + " " + person.lastName);
  }
  EXPECT_EQ(ids.size(), 12U);
  EXPECT_EQ(names.size(), 12U);
}

}  // namespace
}  // namespace notewick::service
