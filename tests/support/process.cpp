#include "support/process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace lumisk::test {

namespace {

struct Pipe {
  int reader = -1;
  int writer = -1;
  Pipe() {
    std::array<int, 2> ends = {};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    reader = ends[0];
    writer = ends[1];
  }
};

[[noreturn]] void becomeProgram(const std::vector<std::string>& words,
                                const ProcessOptions& options, int out, int err) {
  std::vector<char*> argv;
  for (const std::string& word : words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  if (options.nonBlockingOutput) fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
  if (options.ignoreBrokenPipe) signal(SIGPIPE, SIG_IGN);
  const char* const folder = options.workingDirectory.c_str();
  if (*folder == '\0' || chdir(folder) == 0) execv(argv[0], argv.data());
  _exit(127);
}

// Reads both pipes until both writers are gone, so that neither can fill up and block the program.
void readBoth(int out, int err, ProcessResult& result) {
  std::array<pollfd, 2> ends = {{{out, POLLIN, 0}, {err, POLLIN, 0}}};
  std::array<std::string*, 2> texts = {&result.standardOutput, &result.standardError};
  std::array<char, 65536> buffer = {};
  while (ends[0].fd >= 0 || ends[1].fd >= 0) {
    poll(ends.data(), ends.size(), -1);
    for (std::size_t i = 0; i < ends.size(); ++i) {
      if (ends[i].fd < 0 || ends[i].revents == 0) continue;
      const ssize_t count = read(ends[i].fd, buffer.data(), buffer.size());
      if (count > 0) {
        texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
      } else {
        close(ends[i].fd);
        ends[i].fd = -1;
      }
    }
  }
}

}  // namespace

ProcessResult runProcess(const std::vector<std::string>& words, const ProcessOptions& options) {
  Pipe out;
  Pipe err;
  if (options.closeReader) {
    close(out.reader);
    out.reader = -1;
  }
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) becomeProgram(words, options, out.writer, err.writer);
  close(out.writer);
  close(err.writer);
  ProcessResult result;
  readBoth(out.reader, err.reader, result);
  int status = 0;
  waitpid(child, &status, 0);
  result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

}  // namespace lumisk::test
