#include "host/files/desktop_file/reader_process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>
#include <vector>

#include "host/files/desktop_file/descriptor.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/desktop_file/unwritten_copy.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"

namespace qorhost::desktop_file {

namespace fs = std::filesystem;

namespace {

constexpr int kFileInReader = 3;
constexpr int kStatusWithoutMemory = 4;
constexpr const char* kProgramName = "qorhost-desktop-reader";

// ---- The process
// ---------------------------------------------------------------------------------

/// What a started process gets in the place of its own descriptors.
class SpawnActions {
 public:
  SpawnActions() { posix_spawn_file_actions_init(&actions_); }
  ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;

  void OpenNothing(int number, int flags) {
    posix_spawn_file_actions_addopen(&actions_, number, "/dev/null", flags, 0);
  }
  void Give(int from, int number) { posix_spawn_file_actions_adddup2(&actions_, from, number); }
  [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

/// A descriptor of another number than those that a started process is given.
Descriptor BeyondGiven(const Descriptor& descriptor) {
  return Descriptor(fcntl(descriptor.number(), F_DUPFD_CLOEXEC, kFileInReader + 1));
}

/// Ends with its object, whatever it is at.
class ReaderProcess {
 public:
  ReaderProcess(const fs::path& program, const DesktopReading& reading, const Descriptor& copy)
      : words_(WordsFor(program, reading)) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
      Fail(errno);
    }
    output_ = Descriptor(ends[0]);
    const Descriptor input(ends[1]);
    const Descriptor given = BeyondGiven(copy);
    const Descriptor told = BeyondGiven(input);
    SpawnActions actions;
    actions.OpenNothing(STDIN_FILENO, O_RDONLY);
    actions.Give(told.number(), STDOUT_FILENO);
    actions.OpenNothing(STDERR_FILENO, O_WRONLY);
    actions.Give(given.number(), kFileInReader);
    std::vector<char*> arguments;
    for (std::string& word : words_) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    // Without the surroundings, which the library would read settings from.
    std::array<char*, 1> none{};
    if (const int failed = posix_spawn(&process_, program.c_str(), actions.get(), nullptr,
                                       arguments.data(), none.data());
        failed != 0) {
      process_ = -1;
      Fail(failed);
    }
  }
  ~ReaderProcess() {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      (void)Wait();
    }
  }
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  [[nodiscard]] int output() const { return output_.number(); }

  /// Its status as the system tells it.
  int Wait() {
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return status;
  }

 private:
  static std::vector<std::string> WordsFor(const fs::path& program, const DesktopReading& reading) {
    std::vector<std::string> words{program.string(), std::to_string(reading.mebibytes),
                                   std::to_string(reading.processorTime.count()),
                                   std::to_string(reading.mostBytes)};
    words.insert(words.end(), reading.wanted.begin(), reading.wanted.end());
    return words;
  }

  [[noreturn]] static void Fail(int reason) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("cannot start the program that reads such files: {}",
                                std::generic_category().message(reason)));
  }

  std::vector<std::string> words_;
  Descriptor output_;
  pid_t process_ = -1;
};

/// Reads to the end of what the process tells, or to more than it may; false when neither comes in
/// time.
bool ReadAll(int from, const DesktopReading& reading, std::string& all) {
  using Time = std::chrono::steady_clock;
  const Time::time_point end = Time::now() + reading.longest;
  std::vector<char> part(std::size_t{1} << 16);
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Time::now());
    if (left.count() <= 0) return false;
    pollfd waiting{from, POLLIN, 0};
    constexpr int kOneWait = 1000;
    const int ready =
        poll(&waiting, 1, static_cast<int>(std::min<std::int64_t>(left.count(), kOneWait)));
    if (ready == 0 || (ready < 0 && errno == EINTR)) continue;
    const ssize_t count = read(from, part.data(), part.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return true;
    all.append(part.data(), static_cast<std::size_t>(count));
    if (all.size() > reading.mostBytes + kLongestFrame) return true;
  }
}

fs::path FolderOfThisProgram() {
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  return failed ? fs::path() : program.parent_path();
}

bool CanBeRun(const fs::path& program) {
  return !program.empty() && access(program.c_str(), X_OK) == 0 &&
         KindOf(program, Links::kAreFollowed) == FileKind::kFile;
}

}  // namespace

fs::path ReaderProgram(const DesktopReading& reading) {
  if (!reading.reader.empty()) {
    return CanBeRun(reading.reader) ? reading.reader : fs::path();
  }
  const fs::path folder = FolderOfThisProgram();
  for (const fs::path& place :
       {folder / kProgramName, folder / ".." / "libexec" / "qorhost" / kProgramName}) {
    if (CanBeRun(place)) {
      return place;
    }
  }
  return {};
}

ReaderOutput RunReader(const fs::path& file, const DesktopReading& reading) {
  const fs::path program = ReaderProgram(reading);
  if (program.empty()) {
    throw FileError(FileProblem::kUnreachable,
                    fmt::format("'{}' is not there, which reads such files: build it where libmdb "
                                "is installed (Debian: mdbtools-dev)",
                                kProgramName));
  }
  const Descriptor copy = UnwrittenCopy(file, reading.largestFile);
  ReaderProcess process(program, reading, copy);
  ReaderOutput output;
  if (!ReadAll(process.output(), reading, output.frames)) {
    output.ranOutOfTime = true;
    return output;
  }
  if (output.frames.size() > reading.mostBytes + kLongestFrame) {
    return output;  // it may still be at it: no reader of this kind, or one that a file took over
  }
  const int status = process.Wait();
  output.endedWell = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  output.ranOutOfMemory = WIFEXITED(status) && WEXITSTATUS(status) == kStatusWithoutMemory;
  output.ranOutOfProcessorTime =
      WIFSIGNALED(status) && (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL);
  return output;
}

}  // namespace qorhost::desktop_file
