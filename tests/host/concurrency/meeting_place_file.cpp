#include <filesystem>

#include "tests/host/concurrency/meetings.h"
#include "tests/host/store/temporary_folder.h"
#include "tests/host/store/whole_copy.h"

namespace qorhost::test {

const int kUsualStepOfMeetings = 1;
const int kUsualStepOfInterruptions = 4;

namespace {

class FilePlace final : public MeetingPlace {
 public:
  explicit FilePlace(int capacity) : capacity_(capacity) {
    MakeBuilding(folder_.File("new.db"), capacity);
    std::filesystem::copy_file(folder_.File("new.db"), folder_.File("building.db"));
    new_ = std::make_unique<sqlite::Database>(folder_.File("new.db"), OpenMode::kReadWrite);
  }

  [[nodiscard]] std::unique_ptr<Seat> NewSeat(const std::string& who) override {
    auto seat = std::make_unique<Seat>(folder_.File("building.db"), who);
    seat->database().Run("PRAGMA synchronous=OFF");  // nothing is lost here
    seen_ = seen_ == nullptr ? &seat->database() : seen_;
    return seat;
  }
  // Faster than to open them again.
  void Renew() override { CopyWhole(*new_, *seen_); }
  [[nodiscard]] std::vector<std::string> Content() override { return ContentOf(*seen_); }
  [[nodiscard]] std::vector<std::string> Wrong() override { return WrongIn(*seen_, capacity_); }
  [[nodiscard]] std::int64_t Entries() override {
    return seen_->Number("SELECT count(*) FROM AuditEntries");
  }

 private:
  int capacity_;
  TemporaryFolder folder_;
  std::unique_ptr<sqlite::Database> new_;
  sqlite::Database* seen_ = nullptr;  // the first seat's
};

}  // namespace

std::unique_ptr<MeetingPlace> NewMeetingPlace(int capacity) {
  return std::make_unique<FilePlace>(capacity);
}

}  // namespace qorhost::test
