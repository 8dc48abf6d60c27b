#include "doctor/linux/check_run.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <memory>
#include <optional>

namespace notewick {
namespace {

// How an answer travels: the mark, the text, the end.
constexpr char OK = '+';
constexpr char TO_DO = '-';
constexpr char END = '\0';

using Steady = std::chrono::steady_clock;

constexpr const char* ASK_AGAIN =
    " Run notewick-doctor again; where this line stays, show it to whoever helps you.";
const Finding NO_ANSWER = toDo(std::string("did not answer in time.") + ASK_AGAIN);
const Finding NO_END = toDo(std::string("ended without an answer.") + ASK_AGAIN);

void beSilent() {
  const int nowhere = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, stream);
}

/// The process of a check; its end, with all that it has started, is this object's.
class CheckProcess {
 public:
  explicit CheckProcess(const Check& check) {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    answer_ = ends[0];
    process_ = fork();
    if (process_ == 0) answerAndEnd(check, ends[1]);
    if (process_ > 0) setpgid(process_, process_);
    close(ends[1]);
  }
  CheckProcess(const CheckProcess&) = delete;
  CheckProcess& operator=(const CheckProcess&) = delete;
  ~CheckProcess() {
    if (answer_ >= 0) close(answer_);
    if (process_ <= 0) return;
    kill(-process_, SIGKILL);
    waitpid(process_, nullptr, WNOHANG);
  }

  [[nodiscard]] Finding findingUntil(Steady::time_point end) const {
    std::string answer;
    while (!answer.ends_with(END)) {
      if (!isReadable(end)) return NO_ANSWER;
      char part[512];
      const auto count = read(answer_, part, sizeof part);
      if (count <= 0) return NO_END;
      answer.append(part, static_cast<std::size_t>(count));
    }
    answer.pop_back();
    return {answer.front() == OK, answer.substr(1)};
  }

 private:
  [[noreturn]] static void answerAndEnd(const Check& check, int to) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    beSilent();
    const Finding finding = check.look();
    const std::string answer = (finding.ok ? OK : TO_DO) + finding.text + END;
    const bool isWritten = write(to, answer.data(), answer.size()) >= 0;
    _exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
  }

  [[nodiscard]] bool isReadable(Steady::time_point end) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Steady::now()).count();
    pollfd waiting{answer_, POLLIN, 0};
    return poll(&waiting, 1, static_cast<int>(std::max<std::int64_t>(left, 0))) > 0;
  }

  int answer_ = -1;
  pid_t process_ = -1;
};

}  // namespace

bool runChecks(const std::vector<Check>& checks, std::chrono::milliseconds patience,
               std::ostream& out) {
  const auto end = Steady::now() + patience;
  std::vector<std::unique_ptr<CheckProcess>> running;
  for (const Check& check : checks) running.push_back(std::make_unique<CheckProcess>(check));
  bool isWell = true;
  for (std::size_t index = 0; index < checks.size(); ++index) {
    const Finding finding = running[index]->findingUntil(end);
    out << lineOf(checks[index].name, finding) << std::endl;
    isWell = isWell && finding.ok;
  }
  return isWell;
}

}  // namespace notewick
