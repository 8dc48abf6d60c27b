#include "tests/support/child_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <utility>

namespace notewick {
namespace {

std::array<int, 2> openPipe() {
  std::array<int, 2> ends{-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return {-1, -1};
  return ends;
}

[[noreturn]] void become(const std::vector<char*>& arguments, int input, int output) {
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  execvp(arguments.front(), arguments.data());
  _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const std::string& input) {
  const auto inputPipe = openPipe();
  const auto outputPipe = openPipe();
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  id_ = fork();
  if (id_ == 0) become(arguments, inputPipe[0], outputPipe[1]);
  output_ = outputPipe[0];
  close(outputPipe[1]);
  close(inputPipe[0]);
  (void)!::write(inputPipe[1], input.data(), input.size());
  close(inputPipe[1]);
}

ChildProcess::~ChildProcess() {
  close(output_);
  if (id_ <= 0) return;
  signal(SIGKILL);
  wait();
}

std::string ChildProcess::readLine() const {
  std::string line;
  for (char character = 0; ::read(output_, &character, 1) == 1 && character != '\n';) {
    line += character;
  }
  return line;
}

void ChildProcess::signal(int number) const {
  kill(id_, number);
}

int ChildProcess::wait() {
  int status = 0;
  if (waitpid(std::exchange(id_, -1), &status, 0) < 0) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace notewick
