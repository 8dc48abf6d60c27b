#include "detect/name_matcher.h"

#include <gmock/gmock.h>

namespace notewick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Participant TOBIAS{"1", "Tobias", "Hargreave"};
const Participant LENA{"2", "Lena", "O'Keefe"};

/// Whether the participant is found in the text.
bool finds(const Participant& participant, std::string_view text) {
  return !matchParticipants(text, {participant}).empty();
}

bool findsTobias(std::string_view text) {
  return finds(TOBIAS, text);
}

// --- The rule ------------------------------------------------------------------------------------

TEST(NameMatcher, FindsFirstThenLastName) {
  EXPECT_TRUE(findsTobias("RE: support hours — Tobias Hargreave - Outlook"));
}

TEST(NameMatcher, FindsLastCommaFirstName) {
  EXPECT_TRUE(findsTobias("Hargreave, Tobias - RecordHub"));
}

TEST(NameMatcher, IgnoresLetterCase) {
  EXPECT_TRUE(findsTobias("tobias hargreave — Messages"));
  EXPECT_TRUE(findsTobias("HARGREAVE, TOBIAS"));
  EXPECT_TRUE(finds({"1", "TOBIAS", "hargreave"}, "Tobias Hargreave"));
}

TEST(NameMatcher, TellsApostrophesApart) {
  EXPECT_TRUE(finds(LENA, "Lena O'Keefe plan review.docx"));
  EXPECT_FALSE(finds(LENA, "Lena O\u2019Keefe plan review.docx"));
  EXPECT_FALSE(finds({"2", "Lena", "O\u2019Keefe"}, "Lena O'Keefe plan review.docx"));
}

TEST(NameMatcher, FindsNobodyInUnrelatedText) {
  EXPECT_THAT(matchParticipants("Random unrelated window", {TOBIAS, LENA}), IsEmpty());
}

TEST(NameMatcher, NeedsNoWordBoundaries) {
  EXPECT_TRUE(findsTobias("Tobias Hargreaves"));
  EXPECT_TRUE(findsTobias("xTobias Hargreave"));
  EXPECT_TRUE(findsTobias("Hargreave, Tobiasx"));
}

TEST(NameMatcher, DoesNotRecogniseOtherForms) {
  for (const auto* const text :
       {"Hargreave", "Tobias", "T. Hargreave", "Tobias J. Hargreave", "Hargreave Tobias",
        "Hargreave,Tobias", "Tobias  Hargreave", "Hargreave,  Tobias", "Tobias\u00a0Hargreave",
        "Tobias\tHargreave", "Tobias\nHargreave", "Tobias-Hargreave", "Hargreave , Tobias",
        "TobiasHargreave", "Tobias Hargreav", "obias Hargreave"})
    EXPECT_FALSE(findsTobias(text)) << text;
}

TEST(NameMatcher, DoesNotFoldDiacriticsOrWidth) {
  EXPECT_FALSE(finds({"1", "Jose", "Nunez"}, "Jos\u00e9 N\u00fa\u00f1ez"));
  EXPECT_FALSE(finds({"1", "Jos\u00e9", "Nunez"}, "Jose Nunez"));
  EXPECT_FALSE(findsTobias("\uFF34\uFF4F\uFF42\uFF49\uFF41\uFF53 Hargreave"));
  EXPECT_FALSE(finds({"1", "Fi", "Xu"}, "\uFB01 Xu"));
}

TEST(NameMatcher, AnEmptyOrBlankNameNeverMatches) {
  for (const auto* const nothing : {"", " ", "\t", " \u00a0\u2003 "}) {
    EXPECT_FALSE(finds({"1", nothing, "Hargreave"}, "Tobias Hargreave,  Hargreave, "));
    EXPECT_FALSE(finds({"1", "Tobias", nothing}, "Tobias Hargreave, Tobias , Tobias"));
  }
}

TEST(NameMatcher, ANameOfALineBreakIsNotBlank) {
  EXPECT_TRUE(finds({"1", "\n", "Hargreave"}, "\n Hargreave"));
}

TEST(NameMatcher, TrimsBlanksAroundStoredNames) {
  EXPECT_TRUE(finds({"1", " Tobias\t", "\u00a0Hargreave "}, "Tobias Hargreave"));
  EXPECT_TRUE(finds({"1", "\u3000Tobias ", " Hargreave"}, "Hargreave, Tobias"));
}

TEST(NameMatcher, KeepsBlanksInsideStoredNames) {
  const Participant mary{"1", "Mary Ann", "van  Dyke"};
  EXPECT_TRUE(finds(mary, "Mary Ann van  Dyke"));
  EXPECT_FALSE(finds(mary, "Mary Ann van Dyke"));
  EXPECT_FALSE(finds(mary, "MaryAnn van  Dyke"));
}

TEST(NameMatcher, DoesNotTrimLineBreaks) {
  EXPECT_FALSE(finds({"1", "Tobias\n", "Hargreave"}, "Tobias Hargreave"));
  EXPECT_TRUE(finds({"1", "Tobias\n", "Hargreave"}, "Tobias\n Hargreave"));
}

TEST(NameMatcher, DoesNotTrimTheText) {
  EXPECT_TRUE(findsTobias("  Tobias Hargreave  "));
  EXPECT_TRUE(findsTobias("Tobias Hargreave"));
}

TEST(NameMatcher, TakesMetacharactersLiterally) {
  EXPECT_TRUE(finds({"1", "T.*", "[a]\\"}, "x t.* [A]\\"));
  EXPECT_FALSE(finds({"1", "T.*", "Hargreave"}, "Tobias Hargreave"));
  EXPECT_TRUE(finds({"1", std::string("a\0b", 3), "c"}, std::string_view("A\0B C", 5)));
}

// --- The result ----------------------------------------------------------------------------------

TEST(NameMatcher, ResultFollowsTheListNotTheText) {
  EXPECT_THAT(matchParticipants("Lena O'Keefe and Tobias Hargreave", {TOBIAS, LENA}),
              ElementsAre(TOBIAS, LENA));
  EXPECT_THAT(matchParticipants("Tobias Hargreave and O'Keefe, Lena", {LENA, TOBIAS}),
              ElementsAre(LENA, TOBIAS));
}

TEST(NameMatcher, NamesakesAllMatchOnceEach) {
  const Participant other{"7", "tobias", "HARGREAVE"};
  EXPECT_THAT(matchParticipants("Tobias Hargreave, Hargreave, Tobias", {TOBIAS, LENA, other}),
              ElementsAre(TOBIAS, other));
}

TEST(NameMatcher, AParticipantListedTwiceIsReturnedTwice) {
  EXPECT_THAT(matchParticipants("Tobias Hargreave", {TOBIAS, LENA, TOBIAS}),
              ElementsAre(TOBIAS, TOBIAS));
}

TEST(NameMatcher, RepeatedOccurrencesCountOnce) {
  EXPECT_THAT(matchParticipants("Tobias Hargreave Tobias Hargreave", {TOBIAS}),
              ElementsAre(TOBIAS));
}

TEST(NameMatcher, ReturnsWholeRecordsAsStored) {
  const Participant stored{"id-9", " TOBIAS ", "Hargreave"};
  EXPECT_THAT(matchParticipants("tobias hargreave", {stored}), ElementsAre(stored));
}

TEST(NameMatcher, NothingGivesNothing) {
  EXPECT_THAT(matchParticipants("Tobias Hargreave", {}), IsEmpty());
  EXPECT_THAT(matchParticipants("", {TOBIAS, LENA}), IsEmpty());
  EXPECT_THAT(NameMatcher().match("Tobias Hargreave"), IsEmpty());
}

TEST(NameMatcher, FindsNamesInsideAndAcrossEachOther) {
  const std::vector<Participant> list = {
      {"1", "Ann", "Lee"}, {"2", "nn", "Le"}, {"3", "Joann", "Leeds"}, {"4", "Lee", "Ann"}};
  EXPECT_THAT(NameMatcher(list).match("JoAnn Leeds"), ElementsAre(0u, 1u, 2u));
  EXPECT_THAT(NameMatcher(list).match("Ann Lee Ann"), ElementsAre(0u, 1u, 3u));
  EXPECT_THAT(NameMatcher(list).match("Lee, Ann"), ElementsAre(0u));
}

TEST(NameMatcher, FindsANameThatBeginsAgainInsideItself) {
  EXPECT_TRUE(finds({"1", "Ana", "Ana Bo"}, "ana ana ana bo"));
  EXPECT_TRUE(finds({"1", "aa", "aab"}, "aaa aaaab aa aab"));
}

TEST(NameMatcher, GivesPlacesInTheListAscending) {
  EXPECT_THAT(NameMatcher({LENA, TOBIAS, LENA}).match("Lena O'Keefe"), ElementsAre(0u, 2u));
}

// --- Scripts -------------------------------------------------------------------------------------

TEST(NameMatcherScripts, AccentsMatchInEitherForm) {
  const Participant composed{"1", "Ren\u00e9", "Fran\u00e7ois"};
  const Participant decomposed{"1", "Rene\u0301", "Franc\u0327ois"};
  const Participant mixed{"1", "Ren\u00e9", "Franc\u0327ois"};
  for (const auto& participant : {composed, decomposed, mixed}) {
    EXPECT_TRUE(finds(participant, "Ren\u00e9 Fran\u00e7ois"));
    EXPECT_TRUE(finds(participant, "REN\u00c9 FRANC\u0327OIS"));
    EXPECT_TRUE(finds(participant, "Franc\u0327ois, Rene\u0301"));
  }
}

TEST(NameMatcherScripts, ALetterIsNotInItsAccentedForm) {
  const Participant rene{"1", "Max", "Rene"};
  EXPECT_TRUE(finds(rene, "Max Rene"));
  EXPECT_FALSE(finds(rene, "Max Ren\u00e9"));
  EXPECT_FALSE(finds(rene, "Max Rene\u0301"));
  EXPECT_FALSE(finds({"1", "Max", "Ren\u00e9"}, "Max Rene\u0301\u0323"));
}

TEST(NameMatcherScripts, AMarkAloneIsNotInAnAccentedLetter) {
  EXPECT_FALSE(finds({"1", "\u0301x", "B"}, "e\u0301x B"));
}

TEST(NameMatcherScripts, StackedMarksMatchInAnyCanonicalOrder) {
  const Participant stacked{"1", "A\u0323\u0302n", "Le"};
  EXPECT_TRUE(finds(stacked, "A\u0302\u0323n Le"));
  EXPECT_TRUE(finds(stacked, "\u1EACn Le"));
  EXPECT_TRUE(finds({"1", "a\u0301\u0302", "b"}, "A\u0301\u0302 B"));
  EXPECT_FALSE(finds({"1", "a\u0301\u0302", "b"}, "a\u0302\u0301 b"));
}

TEST(NameMatcherScripts, HangulSyllablesMatchTheirJamo) {
  const Participant han{"1", "\uC9C0\uBBFC", "\uD55C"};
  EXPECT_TRUE(finds(han, "\uC9C0\uBBFC \uD55C"));
  EXPECT_TRUE(finds(han, "\u110C\u1175\u1106\u1175\u11AB \u1112\u1161\u11AB"));
  EXPECT_TRUE(finds({"1", "\u110C\u1175", "\u1112\u1161\u11AB"}, "\uD55C, \uC9C0"));
}

TEST(NameMatcherScripts, AHangulSyllableIsNotInALongerOne) {
  const Participant ha{"1", "\uBBFC", "\uD558"};
  EXPECT_TRUE(finds(ha, "\uBBFC \uD558"));
  EXPECT_FALSE(finds(ha, "\uBBFC \uD55C"));
  EXPECT_FALSE(finds(ha, "\uBBFC \u1112\u1161\u11AB"));
}

TEST(NameMatcherScripts, Vietnamese) {
  const Participant nguyen{"1", "Th\u1ECB Hu\u1EC7", "Nguy\u1EC5n"};
  EXPECT_TRUE(finds(nguyen, "TH\u1ECA HU\u1EC6 NGUY\u1EC4N"));
  EXPECT_TRUE(finds(nguyen, "Nguye\u0302\u0303n, Thi\u0323 Hue\u0323\u0302"));
  EXPECT_TRUE(finds(nguyen, "Nguy\u00ea\u0303n, Thi\u0323 Hu\u00ea\u0323"));
  EXPECT_FALSE(finds(nguyen, "Th\u1ECB Hu\u1EC7 Nguy\u00ean"));
}

TEST(NameMatcherScripts, TurkishCapitalIWithDot) {
  const Participant ipek{"1", "\u0130pek", "Y\u0131lmaz"};
  EXPECT_TRUE(finds(ipek, "\u0130PEK Y\u0131lmaz"));
  EXPECT_TRUE(finds(ipek, "I\u0307pek Y\u0131lmaz"));
  EXPECT_TRUE(finds(ipek, "i\u0307pek Y\u0131LMAZ"));
  EXPECT_FALSE(finds(ipek, "ipek Y\u0131lmaz"));
  EXPECT_FALSE(finds({"1", "ipek", "Y\u0131lmaz"}, "\u0130pek Y\u0131lmaz"));
  EXPECT_FALSE(finds(ipek, "\u0130PEK YILMAZ"));
}

TEST(NameMatcherScripts, GreekHasNoFinalSigmaRule) {
  const Participant odysseas{"1", "\u039F\u03B4\u03C5\u03C3\u03C3\u03AD\u03B1\u03A3",
                             "\u0396\u03B1\u03C7\u03AC\u03C1"};
  EXPECT_TRUE(finds(odysseas,
                    "\u039F\u0394\u03A5\u03A3\u03A3\u0388\u0391\u03A3 \u0396\u0391\u03A7\u0386"
                    "\u03A1"));
  EXPECT_FALSE(finds({"1", "\u039D\u03AF\u03BA\u03BF\u03C2", "\u03A7\u03B1"},
                     "\u039D\u038A\u039A\u039F\u03A3 \u03A7\u0391"));
  EXPECT_TRUE(finds({"1", "\u039D\u03AF\u03BA\u03BF\u03A3", "\u03A7\u03B1"},
                    "\u039D\u038A\u039A\u039F\u03A3 \u03A7\u0391\u03A1"));
}

TEST(NameMatcherScripts, ANameIsFoundWhereverItStandsInALongerText) {
  const Participant nikos{"1", "A", "\u03A3\u03A3"};
  for (const auto* const after : {"", "\u03A3", " ", "x", "\u03B1", "."})
    EXPECT_TRUE(finds(nikos, std::string("A \u03A3\u03A3") + after)) << after;
}

TEST(NameMatcherScripts, GermanSharpS) {
  const Participant gross{"1", "J\u00f6rg", "Gro\u00df"};
  EXPECT_TRUE(finds(gross, "J\u00d6RG Gro\u00df"));
  EXPECT_TRUE(finds(gross, "JO\u0308RG GRO\u1E9E"));
  EXPECT_FALSE(finds(gross, "J\u00d6RG GROSS"));
  EXPECT_FALSE(finds({"1", "J\u00f6rg", "Gross"}, "J\u00f6rg Gro\u00df"));
}

TEST(NameMatcherScripts, Cyrillic) {
  const Participant fyodor{"1", "\u0424\u0451\u0434\u043E\u0440", "\u0419\u043E\u0432"};
  EXPECT_TRUE(finds(fyodor, "\u0424\u0401\u0414\u041E\u0420 \u0419\u041E\u0412"));
  EXPECT_TRUE(finds(fyodor, "\u0438\u0306\u043E\u0432, \u0444\u0435\u0308\u0434\u043E\u0440"));
  EXPECT_FALSE(finds(fyodor, "\u0424\u0435\u0434\u043E\u0440 \u0419\u043E\u0432"));
}

TEST(NameMatcherScripts, Arabic) {
  const Participant ahmad{"1", "\u0623\u062D\u0645\u062F", "\u0639\u0644\u064A"};
  EXPECT_TRUE(finds(ahmad, "\u0645\u0644\u0641 \u0623\u062D\u0645\u062F \u0639\u0644\u064A"));
  EXPECT_TRUE(finds(ahmad, "\u0639\u0644\u064A, \u0627\u0654\u062D\u0645\u062F"));
  EXPECT_FALSE(finds(ahmad, "\u0627\u062D\u0645\u062F \u0639\u0644\u064A"));
  EXPECT_FALSE(finds(ahmad, "\u0623\u062D\u0645\u062F \u0639\u0644\u064A\u064C"));
}

TEST(NameMatcherScripts, Devanagari) {
  const Participant ravi{"1", "\u0930\u0935\u093F", "\u0928\u093F\u0917\u092E"};
  EXPECT_TRUE(finds(ravi, "\u0930\u0935\u093F \u0928\u093F\u0917\u092E"));
  EXPECT_FALSE(finds({"1", "\u0930\u0935", "\u0928"}, "\u0930\u0935 \u0928\u093F\u0917\u092E"));
  EXPECT_TRUE(finds({"1", "\u0915\u093C\u093E", "\u0928"}, "\u0958\u093E \u0928"));
}

TEST(NameMatcherScripts, EmojiWithJoinersBesideNames) {
  const std::string family = "\U0001F469\u200D\U0001F467\u200D\U0001F466";
  EXPECT_TRUE(findsTobias(family + "Tobias Hargreave" + family));
  EXPECT_TRUE(findsTobias("\u26A0\uFE0F Hargreave, Tobias \u2764\uFE0F"));
  EXPECT_TRUE(findsTobias("\U0001F44D\U0001F3FDTobias Hargreave\U0001F44D\U0001F3FD"));
  EXPECT_TRUE(findsTobias("\U0001F1E9\U0001F1EATobias Hargreave\U0001F1EB\U0001F1F7"));
  EXPECT_FALSE(findsTobias("Tobias Hargreave\u200D"));
  EXPECT_FALSE(findsTobias("Tobias Hargreave\uFE0F"));
}

TEST(NameMatcherScripts, PartOfAnEmojiIsNotFound) {
  EXPECT_FALSE(finds({"1", "A", "\U0001F469"}, "A \U0001F469\u200D\U0001F467"));
  EXPECT_FALSE(finds({"1", "A", "\U0001F44D"}, "A \U0001F44D\U0001F3FD"));
  EXPECT_TRUE(finds({"1", "A", "\U0001F469\u200D\U0001F467"}, "A \U0001F469\u200D\U0001F467"));
}

TEST(NameMatcherScripts, InvalidUtf8IsReplacedAndTheRestIsRead) {
  EXPECT_TRUE(findsTobias("\xFF\xFETobias Hargreave\xC3"));
  EXPECT_TRUE(findsTobias("\xE2\x82Hargreave, Tobias\xF0\x9F"));
  EXPECT_FALSE(findsTobias("Tobias\xFF Hargreave"));
  EXPECT_FALSE(findsTobias("Tobi\xC3s Hargreave"));
  EXPECT_TRUE(finds({"1", "A\uFFFD", "B"}, "A\xFF B"));
  EXPECT_TRUE(finds({"1", "A\xFF", "B"}, "A\uFFFD B"));
}

// --- Size ----------------------------------------------------------------------------------------

TEST(NameMatcherSize, ReadsAMegabyteOfText) {
  std::string text;
  while (text.size() < 1'000'000) text += "Tobias Hargreav\u00e9 \uD55C \U0001F469\u200D ";
  EXPECT_FALSE(findsTobias(text));
  EXPECT_TRUE(findsTobias(text + "Hargreave, Tobias"));
}

TEST(NameMatcherSize, ReadsAMegabyteOfOneCluster) {
  std::string text = "Tobias Hargreave";
  while (text.size() < 1'000'000) text += "\u0301\u0323";
  EXPECT_FALSE(findsTobias(text));
}

TEST(NameMatcherSize, ReadsAMegabyteOfHangulAndAccents) {
  std::string text;
  while (text.size() < 1'000'000) text += "\uD55C\u1EC7\u0301";
  EXPECT_TRUE(findsTobias(text + "Tobias Hargreave" + text.substr(0, 3)));
}

TEST(NameMatcherSize, ReadsAMegabyteThatKeepsNearlyMatching) {
  const Participant repeated{"1", std::string(500, 'a'), std::string(500, 'a') + "b"};
  EXPECT_FALSE(finds(repeated, std::string(1'000'000, 'a')));
}

TEST(NameMatcherSize, KnowsTwoThousandParticipants) {
  std::vector<Participant> list;
  for (int index = 0; index < 2000; ++index)
    list.push_back({std::to_string(index), "First" + std::to_string(index), "Last"});
  EXPECT_THAT(NameMatcher(list).match("First1999 Last"), ElementsAre(1999u));
}

}  // namespace
}  // namespace notewick
