#include <filesystem>

#include "host/store/sqlite/schema.h"
#include "tests/host/concurrency/meeting_place.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"
#include "tests/host/store/whole_copy.h"

namespace qorhost::test {

const int kUsualStepOfMeetings = 1;
const int kUsualStepOfInterruptions = 4;
const int kUsualStepOfReadings = 1;
const int kUsualRaces = 3;

namespace {

class FilePlace final : public MeetingPlace {
 public:
  explicit FilePlace(int capacity) : capacity_(capacity) {
    MakeBuilding(folder_.File("new.db"), capacity);
    std::filesystem::copy_file(folder_.File("new.db"), file_);
    new_ = std::make_unique<sqlite::Database>(folder_.File("new.db"), OpenMode::kReadWrite);
  }

  [[nodiscard]] std::unique_ptr<Seat> NewSeat(const std::string& who, bool traced) override {
    auto seat = std::make_unique<Seat>(file_, who, traced);
    seat->database().Run("PRAGMA synchronous=OFF");  // nothing is lost here
    seen_ = seen_ == nullptr ? &seat->database() : seen_;
    return seat;
  }
  [[nodiscard]] std::string Name() const override { return file_.string(); }
  // Faster than to open them again.
  void Renew() override { CopyWhole(*new_, Seen()); }
  [[nodiscard]] std::vector<std::string> Content() override { return ContentOf(Seen()); }
  [[nodiscard]] std::vector<std::string> Wrong() override { return WrongIn(Seen(), capacity_); }
  [[nodiscard]] std::int64_t Entries() override {
    return Number("SELECT count(*) FROM AuditEntries");
  }
  [[nodiscard]] std::int64_t Number(const std::string& select) override {
    return Seen().Number(select);
  }
  [[nodiscard]] std::shared_ptr<void> Hold() override {
    auto writer = std::make_shared<sqlite::Database>(file_, OpenMode::kReadWrite);
    writer->Run("BEGIN IMMEDIATE; UPDATE DOORS SET DOORNAME='Attic'");
    return writer;  // whose end takes it back
  }

 private:
  /// The first seat's, or one of its own where there is none.
  [[nodiscard]] sqlite::Database& Seen() {
    if (seen_ == nullptr) {
      own_ = std::make_unique<sqlite::Database>(sqlite::OpenDatabase(file_, OpenMode::kReadWrite));
      seen_ = own_.get();
    }
    return *seen_;
  }

  int capacity_;
  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
  std::unique_ptr<sqlite::Database> new_;
  std::unique_ptr<sqlite::Database> own_;
  sqlite::Database* seen_ = nullptr;
};

}  // namespace

std::unique_ptr<MeetingPlace> NewMeetingPlace(int capacity) {
  return std::make_unique<FilePlace>(capacity);
}

}  // namespace qorhost::test
