#include <fmt/format.h>

#include <utility>

#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "tests/host/concurrency/meeting_place.h"
#include "tests/host/concurrency/server_building.h"
#include "tests/host/store/postgres/needs_server.h"
#include "tests/host/store/postgres/quoted_names.h"
#include "tests/host/store/postgres/server_proxy.h"
#include "tests/host/store/postgres/test_server.h"

namespace qorhost::test {

// An order takes many times as long as on a file.
const int kUsualStepOfMeetings = 3;
const int kUsualStepOfInterruptions = 40;
const int kUsualStepOfReadings = 7;
const int kUsualRaces = 1;

namespace {

using postgres::test::ServerProxy;
using postgres::test::TestServer;

const auto* const kNeedsServer = postgres::test::NeedServer();

/// The messages by which a seat has its statements run.
class ServerSteps final : public Steps {
 public:
  explicit ServerSteps(ServerProxy& proxy) : proxy_(proxy) {}
  ~ServerSteps() override { proxy_.Ask(nullptr); }

  void Tell(std::function<void()> step) override {
    proxy_.Ask([step = std::move(step)](const ServerProxy::Message& message) {
      if (!message.isGuard) {
        step();
      }
      return ServerProxy::Way::kOn;
    });
  }

 private:
  ServerProxy& proxy_;
};

class ServerPlace final : public MeetingPlace {
 public:
  explicit ServerPlace(int capacity)
      : capacity_(capacity), beside_(postgres::OpenServerStore(Made(), OpenMode::kReadWrite)) {
    RenewBuilding(beside_, capacity_);
  }

  [[nodiscard]] std::unique_ptr<Seat> NewSeat(const std::string& who, bool traced) override {
    ServerProxy& proxy =
        *proxies_.emplace_back(std::make_unique<ServerProxy>(TestServer::Shared()));
    return std::make_unique<Seat>(
        std::make_unique<postgres::Store>(
            postgres::OpenServerStore(proxy.NameOf("meetings"), OpenMode::kReadWrite), Patience(),
            false),
        std::make_unique<ServerSteps>(proxy), who, traced);
  }
  [[nodiscard]] std::string Name() const override { return Made(); }
  void Renew() override { RenewBuilding(beside_, capacity_); }
  [[nodiscard]] std::vector<std::string> Content() override { return ContentOf(beside_); }
  [[nodiscard]] std::vector<std::string> Wrong() override {
    std::vector<std::string> wrong = WrongIn(beside_);
    const std::int64_t inUse = Number(
        "SELECT (SELECT count(*) FROM CredentialBank) + (SELECT count(*) FROM DirectoryCode)");
    if (inUse > capacity_) {
      wrong.push_back(fmt::format("{} codes in a unit of {}", inUse, capacity_));
    }
    return wrong;
  }
  [[nodiscard]] std::int64_t Entries() override {
    return Number("SELECT count(*) FROM AuditEntries");
  }
  [[nodiscard]] std::int64_t Number(const std::string& select) override {
    return beside_.Run(postgres::test::WithQuotedNames(select)).Number(0, 0);
  }
  [[nodiscard]] std::shared_ptr<void> Hold() override {
    auto writer = std::make_shared<postgres::Connection>(
        postgres::OpenServerStore(Made(), OpenMode::kReadWrite));
    writer->RunAll(R"(BEGIN; LOCK TABLE "UnitVersions" IN EXCLUSIVE MODE)");
    return writer;
  }

 private:
  /// One store for all that this program tries.
  static const std::string& Made() {
    static const std::string name = [] {
      std::string made = TestServer::Shared().Create("meetings");
      (void)postgres::OpenServerStore(made, OpenMode::kCreate);
      return made;
    }();
    return name;
  }

  int capacity_;
  postgres::Connection beside_;
  std::vector<std::unique_ptr<ServerProxy>> proxies_;
};

}  // namespace

std::unique_ptr<MeetingPlace> NewMeetingPlace(int capacity) {
  return std::make_unique<ServerPlace>(capacity);
}

}  // namespace qorhost::test
