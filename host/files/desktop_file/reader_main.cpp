// qorhost-desktop-reader MEMORY PROCESSOR BYTES TABLE...: reads a desktop database file for the
// program that starts it. The file comes as descriptor 3, the tables of which rows are wanted as
// arguments, and what it holds goes to standard output in the frames of reader_message.h. It is a
// program of its own because the library that reads such files was not made for hostile ones: it
// may use so many mebibytes and seconds, give so many bytes, write no file, and whatever becomes of
// it, only it dies.
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "host/files/desktop_file/mdb_tables.h"
#include "host/files/desktop_file/reader_limits.h"
#include "host/files/desktop_file/reader_message.h"

namespace {

using namespace qorhost::desktop_file;

constexpr int kDone = 0;
constexpr int kUsage = 2;
constexpr int kNoLimits = 3;
constexpr int kNoMemory = 4;
constexpr int kFailed = 5;

/// Frames to standard output; nobody who reads them ends the program.
class Output {
 public:
  explicit Output(std::size_t most) : most_(most) {}

  void Put(FrameKind kind, const std::string& payload) {
    const std::string header = FrameHeaderOf(kind, payload.size());
    bytes_ += header.size() + payload.size();
    if (payload.size() > kLongestFrame || bytes_ > most_) {
      throw UnreadableFile(ReadFault::kTooLarge);
    }
    Append(header);
    Append(payload);
    ++frames_;
  }

  void PutFault(const UnreadableFile& failure) {
    Payload payload;
    payload.AddByte(static_cast<std::uint8_t>(failure.fault()));
    payload.AddText(failure.table());
    payload.AddLarge(failure.read());
    payload.AddLarge(failure.counted());
    Append(FrameHeaderOf(FrameKind::kFault, payload.bytes().size()));
    Append(payload.bytes());
    ++frames_;
  }

  void PutEnd() {
    Payload payload;
    payload.AddLarge(frames_);
    payload.AddLarge(sum_.sum());
    Append(FrameHeaderOf(FrameKind::kEnd, payload.bytes().size()));
    Append(payload.bytes());
    Flush();
  }

 private:
  void Append(const std::string& bytes) {
    constexpr std::size_t kRoom = std::size_t{1} << 16;
    sum_.Add(bytes);
    waiting_ += bytes;
    if (waiting_.size() >= kRoom) {
      Flush();
    }
  }

  void Flush() {
    std::size_t at = 0;
    while (at < waiting_.size()) {
      const ssize_t count = write(STDOUT_FILENO, waiting_.data() + at, waiting_.size() - at);
      if (count < 0 && errno == EINTR) {
        continue;
      }
      if (count <= 0) {
        std::_Exit(kFailed);
      }
      at += static_cast<std::size_t>(count);
    }
    waiting_.clear();
  }

  std::size_t most_;
  std::string waiting_;
  RunningSum sum_;
  std::uint64_t frames_ = 0;
  std::size_t bytes_ = 0;
};

int Read(std::size_t most, const std::vector<std::string>& wanted) {
  Output output(most);
  try {
    ReadTables("/dev/fd/3", wanted,
               [&](FrameKind kind, const Payload& payload) { output.Put(kind, payload.bytes()); });
  } catch (const UnreadableFile& failure) {
    output.PutFault(failure);
  }
  output.PutEnd();
  return kDone;
}

}  // namespace

int main(int count, char** words) {
  constexpr int kFirstTable = 4;
  if (count < kFirstTable) {
    return kUsage;
  }
  const auto numberIn = [&](int word) { return std::strtoul(words[word], nullptr, 10); };
  if (!LimitThisProcess(numberIn(1), numberIn(2))) {
    return kNoLimits;
  }
  int status = kFailed;
  try {
    status = Read(numberIn(3), {words + kFirstTable, words + count});
  } catch (const std::bad_alloc&) {
    status = kNoMemory;
  } catch (const std::exception&) {
    status = kFailed;
  }
  // The library may have left its memory in disorder: nothing is tidied up.
  std::_Exit(status);
}
