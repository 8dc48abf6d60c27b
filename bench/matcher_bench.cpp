// The name matcher beside Hyperscan, which knows bytes only, and what its index costs.
//   matcher_bench search NAMES ROUNDS   one line a round and text: its kind, the microseconds of
//                                       processor time for a match, folding included, and for
//                                       Hyperscan's search alone
//   matcher_bench index NAMES           one line: the seconds of processor time to build the index,
//                                       and its megabytes

#include <hs/hs.h>
#include <malloc.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "detect/name_matcher.h"
#include "model/unicode.h"

namespace notewick {
namespace {

constexpr std::size_t LENGTH = 300;
constexpr int TIMES_A_ROUND = 2000;

/// Titles as a sample joins them; `name` stands among them or, in half of the searches, does not.
struct Text {
  const char* kind;
  Participant name;
  const char* titles;
};

const std::array TEXTS = {
    Text{"ASCII",
         {"a", "Lena", "O'Keefe"},
         "RE: support hours next week - Inbox - Mail | Care plan review (2).docx - Writer | "
         "Calendar - Thursday | Housing office: how to apply - Browser | "},
    Text{"accented",
         {"b", "Zoë", "Lindqvist"},
         "Überprüfung der Förderpläne für März – Entwürfe | Réunion d’équipe à préparer.odt | "
         "Año nuevo: horarios y ausencias – Correo | Příští týden | "},
    Text{"Cyrillic",
         {"c", "Ольга", "Белозерская"},
         "Проверка плана поддержки на неделю — Входящие | Заявление на жильё.odt — Редактор | "
         "Календарь — четверг | Расписание дежурств | "},
    Text{"mixed",
         {"d", "Søren", "Kowalczyk"},
         "RE: Überprüfung – Inbox | План встречи.odt — Writer | 支持计划 2026 - Browser | "
         "Réunion d’équipe 📅 | Housing office | "},
    Text{"Chinese",
         {"e", "建国", "欧阳"},
         "支持计划与个案记录 | 收件箱：下周的会议安排 | 住房申请表（第二版）| 日历：星期四 | "},
};

/// The first 300 characters of these titles, repeated.
std::string cut(std::string_view titles) {
  std::string text;
  for (std::size_t characters = 0, place = 0;; place = (place + 1) % titles.size()) {
    const bool isStart = (static_cast<unsigned char>(titles[place]) & 0xC0) != 0x80;
    if (isStart && characters++ == LENGTH) return text;
    text += titles[place];
  }
}

std::string withName(const Text& text) {
  return cut("Notes on " + text.name.name() + ".odt | " + text.titles);
}

using Pieces = std::vector<const char*>;

/// A name is a start and an end of its script, both for the first name and for the surname.
struct Script {
  Pieces firstStarts, firstEnds, lastStarts, lastEnds;
};

const Script LATIN = {
    {"Am",  "Bogd", "Chl", "Dil", "Ém", "Fat", "Gr",  "Hann", "In",  "Jür",  "Kenj", "Len",
     "Mar", "Nad",  "Öm",  "Pet", "Qu", "Ros", "Sof", "Tob",  "Ulr", "Václ", "Wand", "Yus"},
    {"a", "an", "oë", "ine", "ia", "en", "ika", "ah", "is", "o", "el", "ias", "ette", "ina"},
    {"Har",  "Mül",   "Naka", "Fjäll", "Şah", "Ba",   "Åke",  "Ziel", "Smi",  "Kow",     "Lind",
     "O'Ke", "Jen",   "Rodr", "Ngu",   "Pet", "Bran", "Carl", "Dub",  "Esp",  "Fer",     "Grün",
     "Holm", "Janss", "Koch", "Lam",   "Mar", "Nov",  "Olm",  "Pav",  "Quin", "van der "},
    {"greave", "ler",   "mura",  "räv", "in",  "ker",   "sson", "ińska",
     "th",     "czyk",  "qvist", "efe", "sen", "íguez", "yen",  "son",
     "dt",     "ström", "ois",   "ito", "ari", "berg",  "es",   "ová"}};
const Script CYRILLIC = {
    {"Ал", "Бор", "Вал", "Гал", "Дар", "Ев", "Зин", "Ир", "Кат", "Люд", "Мар", "Над", "Ол", "Пол",
     "Св", "Тат"},
    {"ина", "ья", "ий", "ис", "ена", "ана", "ик", "ея"},
    {"Белоз", "Вас", "Гор",  "Дем", "Ерм", "Жук",   "Зай",   "Ив",  "Ковал", "Кузн", "Леб", "Мороз",
     "Новик", "Орл", "Петр", "Род", "Сид", "Сокол", "Тарас", "Фёд", "Хар",   "Чер",  "Шев", "Яков"},
    {"ов", "ова", "енко", "ин", "ина", "ский", "чук", "ева"}};
const Script CHINESE = {{"伟", "秀", "建", "小", "志", "丽", "海", "文", "国", "美", "永", "玉",
                         "春", "晓", "金", "立"},
                        {"英", "华", "明", "红", "军", "芳", "平", "强", "兰", "刚", "梅", "涛",
                         "玲", "杰", "霞", "峰"},
                        {"王", "李", "张", "刘", "陈", "杨", "黄", "赵", "吴", "周", "徐", "孙",
                         "马", "朱", "胡", "郭"},
                        {""}};

/// Different people, always the same: those that the texts show, and others. A third is not Latin.
std::vector<Participant> participants(std::size_t count) {
  std::minstd_rand random(1);
  const auto any = [&](const Pieces& pieces) { return pieces[random() % pieces.size()]; };
  std::vector<Participant> list;
  std::set<std::string> names;
  const auto add = [&](const Participant& one) {
    if (names.insert(one.name()).second) list.push_back(one);
  };
  for (const Text& text : TEXTS) add(text.name);
  while (list.size() < count) {
    const auto kind = random() % 6;
    const Script& script = kind == 0 ? CYRILLIC : kind == 1 ? CHINESE : LATIN;
    const std::string first = any(script.firstStarts) + std::string(any(script.firstEnds));
    const std::string last = any(script.lastStarts) + std::string(any(script.lastEnds));
    add({std::to_string(list.size()), first, last});
  }
  return list;
}

class Hyperscan {
 public:
  explicit Hyperscan(const std::vector<Participant>& list) {
    std::vector<std::string> literals;
    for (const Participant& one : list) {
      literals.push_back(folded(one.firstName + " " + one.lastName));
      literals.push_back(folded(one.lastName + ", " + one.firstName));
    }
    compile(literals);
  }
  Hyperscan(const Hyperscan&) = delete;
  Hyperscan& operator=(const Hyperscan&) = delete;
  ~Hyperscan() {
    hs_free_scratch(scratch_);
    hs_free_database(database_);
  }

  [[nodiscard]] int hitsIn(const std::string& text) const {
    int hits = 0;
    const auto count = [](unsigned, unsigned long long, unsigned long long, unsigned, void* sum) {
      ++*static_cast<int*>(sum);
      return 0;
    };
    hs_scan(database_, text.data(), static_cast<unsigned>(text.size()), 0, scratch_, count, &hits);
    return hits;
  }

 private:
  void compile(const std::vector<std::string>& literals) {
    std::vector<const char*> texts;
    std::vector<std::size_t> lengths;
    std::vector<unsigned> numbers;
    for (const std::string& literal : literals) {
      numbers.push_back(static_cast<unsigned>(texts.size()));
      texts.push_back(literal.c_str());
      lengths.push_back(literal.size());
    }
    hs_compile_error_t* error = nullptr;
    const auto compiled = hs_compile_lit_multi(texts.data(), nullptr, numbers.data(),
                                               lengths.data(), static_cast<unsigned>(texts.size()),
                                               HS_MODE_BLOCK, nullptr, &database_, &error);
    if (compiled != HS_SUCCESS || hs_alloc_scratch(database_, &scratch_) != HS_SUCCESS) {
      std::fputs("Hyperscan did not take the names.\n", stderr);
      std::exit(EXIT_FAILURE);
    }
  }

  hs_database_t* database_ = nullptr;
  hs_scratch_t* scratch_ = nullptr;
};

/// The seconds of processor time that this takes.
template <class Work>
double seconds(const Work& work) {
  const std::clock_t before = std::clock();
  work();
  return static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
}

/// The microseconds that one of the two searches takes on average.
template <class Search>
double cost(const std::string& with, const std::string& without, const Search& search) {
  const double taken = seconds([&] {
    for (int i = 0; i < TIMES_A_ROUND; ++i) search(i % 2 == 0 ? with : without);
  });
  return 1e6 * taken / TIMES_A_ROUND;
}

void check(bool fits, const char* kind) {
  if (fits) return;
  std::fprintf(stderr, "%s: the name was not found where it is, or found where it is not\n", kind);
  std::exit(EXIT_FAILURE);
}

void searchRound(const NameMatcher& matcher, const Hyperscan& hyperscan) {
  for (const Text& text : TEXTS) {
    const std::string with = withName(text), without = cut(text.titles);
    const std::string foldedWith = folded(with), foldedWithout = folded(without);
    check(!matcher.match(with).empty() && matcher.match(without).empty(), text.kind);
    check(hyperscan.hitsIn(foldedWith) > 0, text.kind);
    std::size_t found = 0;
    const double own =
        cost(with, without, [&](const auto& searched) { found += matcher.match(searched).size(); });
    const double beside = cost(foldedWith, foldedWithout, [&](const auto& searched) {
      found += static_cast<std::size_t>(hyperscan.hitsIn(searched));
    });
    check(found > 0, text.kind);
    std::printf("%s %.4f %.4f\n", text.kind, own, beside);
  }
}

std::size_t heap() {
  const auto used = mallinfo2();
  return used.uordblks + used.hblkhd;
}

void buildIndex(const std::vector<Participant>& list) {
  const std::size_t before = heap();
  std::unique_ptr<NameMatcher> matcher;
  const double taken = seconds([&] { matcher = std::make_unique<NameMatcher>(list); });
  std::printf("%.4f %.3f\n", taken, static_cast<double>(heap() - before) / 1e6);
}

}  // namespace
}  // namespace notewick

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 2) return EXIT_FAILURE;
  const auto list = notewick::participants(std::stoul(arguments[1]));
  if (arguments[0] == "index") {
    notewick::buildIndex(list);
    return EXIT_SUCCESS;
  }
  const notewick::NameMatcher matcher(list);
  const notewick::Hyperscan hyperscan(list);
  for (int left = std::stoi(arguments.at(2)); left > 0; --left) {
    notewick::searchRound(matcher, hyperscan);
  }
}
