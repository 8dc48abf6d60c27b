#include "detect/name_matcher.h"

#include <gmock/gmock.h>

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;

const Participant TOBIAS{"1", "Tobias", "Hargreave"};
const Participant LENA{"2", "Lena", "O'Keefe"};

void expectFound(const std::string& first, const std::string& last, const Texts& texts) {
  for (const auto& text : texts)
    EXPECT_THAT(NameMatcher({{"1", first, last}}).match(text), ElementsAre(0u))
        << testing::PrintToString(text);
}

void expectMissed(const std::string& first, const std::string& last, const Texts& texts) {
  for (const auto& text : texts)
    EXPECT_THAT(NameMatcher({{"1", first, last}}).match(text), IsEmpty())
        << testing::PrintToString(text);
}

// --- The rule ------------------------------------------------------------------------------------

TEST(NameMatcher, FindsFirstAndLastNameInTwoOrdersWhateverTheLetterCase) {
  expectFound("Tobias", "Hargreave",
              {"RE: support hours — Tobias Hargreave - Outlook", "Hargreave, Tobias - RecordHub",
               "tobias hargreave — Messages", "HARGREAVE, TOBIAS", "  Tobias Hargreave  "});
  expectFound("TOBIAS", "hargreave", {"Tobias Hargreave"});
}

TEST(NameMatcher, NeedsNoWordBoundaries) {
  expectFound("Tobias", "Hargreave",
              {"Tobias Hargreaves", "xTobias Hargreave", "Hargreave, Tobiasx"});
}

TEST(NameMatcher, RecognisesNoOtherForm) {
  expectMissed(
      "Tobias", "Hargreave",
      {"", "Random unrelated window", "Hargreave", "Tobias", "T. Hargreave", "Tobias J. Hargreave",
       "Hargreave Tobias", "Hargreave,Tobias", "Hargreave,  Tobias", "Hargreave , Tobias",
       "Tobias  Hargreave", "Tobias\u00a0Hargreave", "Tobias\tHargreave", "Tobias-Hargreave",
       "TobiasHargreave", "Tobias Hargreav", "obias Hargreave"});
}

TEST(NameMatcher, FoldsNothingButCase) {
  expectFound("Lena", "O'Keefe", {"Lena O'Keefe plan review.docx"});
  expectMissed("Lena", "O'Keefe", {"Lena O\u2019Keefe plan review.docx"});
  expectMissed("Jose", "Nunez", {"Jos\u00e9 N\u00fa\u00f1ez"});
  expectMissed("Jos\u00e9", "Nunez", {"Jose Nunez"});
  expectMissed("Fi", "Xu", {"\uFB01 Xu", "\uFF26i Xu"});
}

TEST(NameMatcher, ABlankNameNeverMatches) {
  for (const std::string nothing : {"", " ", "\t", " \u00a0\u2003 "}) {
    expectMissed(nothing, "Hargreave", {"Tobias Hargreave,  Hargreave, "});
    expectMissed("Tobias", nothing, {"Tobias Hargreave, Tobias , Tobias"});
  }
}

TEST(NameMatcher, TrimsBlanksButNoLineBreaksAroundStoredNames) {
  expectFound(" Tobias\t", "\u3000Hargreave ", {"Tobias Hargreave", "Hargreave, Tobias"});
  expectFound("Tobias\n", "Hargreave", {"Tobias\n Hargreave"});
  expectMissed("Tobias\n", "Hargreave", {"Tobias Hargreave"});
  expectFound("Mary Ann", "van  Dyke", {"Mary Ann van  Dyke"});
  expectMissed("Mary Ann", "van  Dyke", {"Mary Ann van Dyke", "MaryAnn van  Dyke"});
}

TEST(NameMatcher, TakesEveryCharacterLiterally) {
  expectFound("T.*", "[a]\\", {"x t.* [A]\\"});
  expectMissed("T.*", "Hargreave", {"Tobias Hargreave"});
  expectFound(std::string("a\0b", 3), "c", {std::string("A\0B C", 5)});
}

// --- The result ----------------------------------------------------------------------------------

TEST(NameMatcher, GivesWholeRecordsInListOrderOnceEach) {
  const Participant namesake{"7", " tobias", "HARGREAVE"};
  EXPECT_THAT(matchParticipants("Lena O'Keefe and Hargreave, Tobias (Tobias Hargreave)",
                                {TOBIAS, namesake, LENA, TOBIAS, {"8", "Zoe", "Abel"}}),
              ElementsAre(TOBIAS, namesake, LENA, TOBIAS));
}

TEST(NameMatcher, WithoutParticipantsNobodyMatches) {
  EXPECT_THAT(matchParticipants("Tobias Hargreave", {}), IsEmpty());
  EXPECT_THAT(NameMatcher().match("Tobias Hargreave"), IsEmpty());
}

TEST(NameMatcher, FindsNamesInsideAndAcrossEachOther) {
  const NameMatcher matcher(
      {{"1", "Ann", "Lee"}, {"2", "nn", "Le"}, {"3", "Joann", "Leeds"}, {"4", "Lee", "Ann"}});
  EXPECT_THAT(matcher.match("JoAnn Leeds"), ElementsAre(0u, 1u, 2u));
  EXPECT_THAT(matcher.match("Ann Lee Ann"), ElementsAre(0u, 1u, 3u));
  EXPECT_THAT(matcher.match("Lee, Ann"), ElementsAre(0u));
  expectFound("Ana", "Ana Bo", {"ana ana ana bo"});
}

// --- Scripts -------------------------------------------------------------------------------------

TEST(NameMatcherScripts, CanonicallyEquivalentSpellingsAreEqual) {
  expectFound(
      "Ren\u00e9", "Franc\u0327ois",
      {"Ren\u00e9 Fran\u00e7ois", "REN\u00c9 FRANC\u0327OIS", "Franc\u0327ois, Rene\u0301"});
  expectFound("Th\u1ECB", "Nguy\u1EC5n", {"TH\u1ECA NGUY\u1EC4N", "Nguye\u0302\u0303n, Thi\u0323"});
  expectFound("\uC9C0\uBBFC", "\uD55C",
              {"\u110C\u1175\u1106\u1175\u11AB \u1112\u1161\u11AB", "\uD55C, \uC9C0\uBBFC"});
  expectFound("\u0623\u062D", "\u0639", {"\u0639, \u0627\u0654\u062D"});
  expectFound("\u0915\u093C\u093E", "\u0928", {"\u0958\u093E \u0928"});
}

TEST(NameMatcherScripts, MarksOfOneClassKeepTheirOrderAndOthersHaveNone) {
  expectFound("A\u0323\u0302n", "Le", {"A\u0302\u0323n Le", "\u1EACn Le"});
  expectMissed("a\u0301\u0302", "b", {"a\u0302\u0301 b"});
}

TEST(NameMatcherScripts, AMatchBeginsAndEndsWithAWholeCharacter) {
  expectMissed("Max", "Rene", {"Max Ren\u00e9", "Max Rene\u0301"});
  expectMissed("Max", "Ren\u00e9", {"Max Rene\u0301\u0323"});
  expectMissed("\u0301x", "B", {"e\u0301x B"});
  expectMissed("\uBBFC", "\uD558", {"\uBBFC \uD55C", "\uBBFC \u1112\u1161\u11AB"});
  expectMissed("\u0639", "\u064A", {"\u0639 \u064A\u064C"});
  expectMissed("\u0930", "\u0928", {"\u0930 \u0928\u093F"});
  expectMissed("A", "\U0001F469", {"A \U0001F469\u200D\U0001F467"});
  expectMissed("A", "\U0001F44D", {"A \U0001F44D\U0001F3FD"});
  expectMissed("Tobias", "Hargreave", {"Tobias Hargreave\u200D", "Tobias Hargreave\uFE0F"});
}

TEST(NameMatcherScripts, EmojiMayStandBesideAName) {
  expectFound("Tobias", "Hargreave",
              {"\U0001F469\u200D\U0001F467Tobias Hargreave\U0001F469\u200D\U0001F467",
               "\u26A0\uFE0F Hargreave, Tobias \u2764\uFE0F",
               "\U0001F1E9\U0001F1EATobias Hargreave\U0001F1EB\U0001F1F7"});
}

TEST(NameMatcherScripts, LetterCaseIsFoldedCodePointByCodePoint) {
  expectFound("\u0130pek", "Y\u0131lmaz", {"\u0130PEK Y\u0131LMAZ", "i\u0307pek Y\u0131lmaz"});
  expectMissed("\u0130pek", "Y\u0131lmaz", {"ipek Y\u0131lmaz", "\u0130PEK YILMAZ"});
  expectFound("\u039D\u03AF\u03BA\u03BF\u03A3", "\u03A7\u03B1",
              {"\u039D\u038A\u039A\u039F\u03A3 \u03A7\u0391\u03A1"});
  expectMissed("\u039D\u03AF\u03BA\u03BF\u03C2", "\u03A7\u03B1",
               {"\u039D\u038A\u039A\u039F\u03A3 \u03A7\u0391"});
  expectFound("J\u00f6rg", "Gro\u00df", {"J\u00d6RG Gro\u00df", "JO\u0308RG GRO\u1E9E"});
  expectMissed("J\u00f6rg", "Gro\u00df", {"J\u00d6RG GROSS"});
  expectFound("\u0424\u0451\u0434\u043E\u0440", "\u0419\u043E\u0432",
              {"\u0424\u0401\u0414\u041E\u0420 \u0419\u041E\u0412"});
}

TEST(NameMatcherScripts, InvalidUtf8IsReplacedAndTheRestIsRead) {
  expectFound("Tobias", "Hargreave",
              {"\xFF\xFETobias Hargreave\xC3", "\xE2\x82Hargreave, Tobias\xF0\x9F"});
  expectMissed("Tobias", "Hargreave", {"Tobias\xFF Hargreave", "Tobi\xC3s Hargreave"});
  expectFound("A\uFFFD", "B", {"A\xFF B"});
  expectFound("A\xFF", "B", {"A\uFFFD B"});
}

// --- Size ----------------------------------------------------------------------------------------

std::string megabyteOf(const std::string& part) {
  std::string text;
  while (text.size() < 1'000'000) text += part;
  return text;
}

TEST(NameMatcherSize, ReadsAMegabyteAlsoWhereItNearlyMatchesOrIsOneCharacter) {
  const auto noise = megabyteOf("Tobias Hargreav\u00e9 \uD55C \U0001F469\u200D ");
  expectMissed("Tobias", "Hargreave", {noise, "Tobias Hargreave" + megabyteOf("\u0301\u0323")});
  expectFound("Tobias", "Hargreave", {noise + "Hargreave, Tobias"});
  expectMissed(std::string(500, 'a'), std::string(500, 'a') + "b", {megabyteOf("a")});
}

}  // namespace
}  // namespace notewick
