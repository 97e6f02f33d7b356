// Many seats at one server for a long time: processes that do mixed operations on four units,
// killed in between, as are the server's processes and now and then the server itself, and
// connections that are cut. In the end what each of them was told is what is stored.
//
// server_soak [SECONDS] [SEATS]; it starts itself as a seat, with --seat.
#include <fmt/format.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "host/desks/store_check.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"
#include "host/store/store_error.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/server_building.h"
#include "tests/host/store/postgres/server_proxy.h"
#include "tests/host/store/postgres/test_server.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using postgres::test::ServerProxy;
using postgres::test::TestServer;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kUnits = 4;
constexpr int kCapacity = 400;

using Random = std::mt19937;

int Any(Random& random, int first, int last) {
  return std::uniform_int_distribution<int>(first, last)(random);
}

// ---- A seat, which is a process of its own.

std::string Number(Random& random) {
  return std::to_string(Any(random, 101, 260));
}

/// One of all that a seat does; most of it may be refused, for others are at it, too.
SeatOperation AnyOperation(Random& random) {
  constexpr std::array kTenants{"Adam", "Berg", "Cole", "Dahl", "Eder", "Falk"};
  const auto tenant = [&] { return std::string(kTenants.at(random() % kTenants.size())); };
  const int first = Any(random, 101, 258);
  switch (Any(random, 0, 27)) {
    case 0:
    case 1:
      return IssueCards(std::to_string(first), std::to_string(first + Any(random, 0, 2)));
    case 2:
      return IssueCardsWithTenants(std::to_string(first), std::to_string(first + 1));
    case 3:
    case 4:
      return DeleteCard(Number(random));
    case 5:
      return RenumberCard(Number(random), Any(random, 101, 260));
    case 6:
      return AddCode(Number(random));
    case 7:
    case 8:
      return EditPhone(Number(random), fmt::format("555-{}", Any(random, 1000, 9999)));
    case 9:
      return RenumberCode(Number(random), Number(random));
    case 10:
      return DeleteCode(Number(random));
    case 11:
      return AddTenant(tenant());
    case 12:
      return GiveTenant(tenant(), Number(random));
    case 13:
      return MoveTenant(tenant(), Number(random));
    case 14:
      return DeleteTenant(tenant());
    case 15:
      return ImportCards(fmt::format("card26,{},7,\ncard26,{},7,\n", first, first + 1));
    case 16:
      return MarkStepsSent();
    case 17:
      return NameSchedule("Weekdays", "Weekdays");
    case 18:
      return WriteByHand(
          fmt::format("UPDATE DIRECTORYCODE SET DISPLAYNAME='{}' WHERE "
                      "DIRECTORYCODE={}",
                      random() % 1000, first));
    case 19:
    case 20:
      return UndoLatest();
    case 21:
      return MergeUnit();
    case 22:
    case 23:
      return ImportCodes(
          fmt::format("{},555-{}\n{},555-1\n", first, Any(random, 1000, 9999), first + 1));
    case 24:
      return EndTenant(tenant());
    case 25:
      return ImportPeople(fmt::format("{},{},555-2,{}\n", tenant(), first, Any(random, 101, 260)));
    case 26:
      return NameTenant(tenant(), tenant());
    default:
      return ReplaceCard(Number(random), Number(random));
  }
}

volatile sig_atomic_t hasToEnd = 0;

/// What a seat notes on a line of its own, which outlives it.
void Note(int file, const std::string& line) {
  if (write(file, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
    std::abort();
  }
}

/// The marks of the latest versions that the session's work has stored.
std::map<std::int32_t, UnitVersion> StoredBy(Seat& seat) {
  std::map<std::int32_t, UnitVersion> stored;
  for (std::int32_t unit = 1; unit <= kUnits; ++unit) {
    if (const auto version = seat.session().sql().work().Committed(unit)) {
      stored[unit] = *version;
    }
  }
  return stored;
}

/// Does operations until it is told to end. Its notes: "begun WHO", and "stored WHO", "nothing WHO"
/// or "unknown WHO" when it was told so, with the words behind.
int WorkAsSeat(const std::string& name, const std::string& store, const std::string& notes,
               unsigned seed) {
  (void)signal(SIGTERM, [](int) { hasToEnd = 1; });
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(notes.c_str(), "a"),
                                                             &std::fclose);
  const int to = fileno(file.get());
  Random random(seed);
  std::unique_ptr<Seat> seat;
  for (int nth = 0; hasToEnd == 0; ++nth) {
    try {
      if (seat == nullptr) {
        seat = std::make_unique<Seat>(
            std::make_unique<postgres::Store>(
                postgres::OpenServerStore(store, OpenMode::kReadWrite), Patience(), false),
            nullptr, name);
        seat->SetPatience({std::chrono::seconds(30), {}});
      }
    } catch (const StoreError&) {  // the server is starting
      std::this_thread::sleep_for(milliseconds(50));
      continue;
    }
    seat->unit = Any(random, 1, kUnits);
    const std::string who = fmt::format("{}.{}", name, nth);
    seat->session().sql().work().SignAs({who, "soak", {}});
    const auto before = StoredBy(*seat);
    const SeatOperation operation = AnyOperation(random);
    Note(to, "begun " + who + "\n");
    const Told told = RunAt(operation, *seat);
    const auto after = StoredBy(*seat);
    const bool stored = !after.empty() && after != before;
    const char* const word = told.ending == Ending::kUnknown ? "unknown"
                             : stored                        ? "stored"
                                                             : "nothing";
    std::string line = fmt::format("{} {} {}: {}", word, who, operation.name, TextOf(told));
    std::replace(line.begin(), line.end(), '\n', ' ');
    Note(to, line + "\n");
  }
  return 0;
}

// ---- The others: who starts the seats, disturbs them, and looks at what is stored.

struct SeatProcess {
  std::string store;
  pid_t process = 0;
  int incarnation = 0;
};

class Soak {
 public:
  explicit Soak(int seats) : server_(), proxy_(server_), seats_(static_cast<std::size_t>(seats)) {
    const std::string name = server_.Create("soak");
    (void)postgres::OpenServerStore(name, OpenMode::kCreate);
    postgres::Connection connection = postgres::OpenServerStore(name, OpenMode::kReadWrite);
    RenewBuilding(connection, kCapacity);
    connection.RunAll(R"sql(
      INSERT INTO "Units" ("UnitKey", "UnitName") SELECT n, 'Court ' || n FROM generate_series(2, 4) n;
      INSERT INTO "UnitSettings" SELECT nextval(pg_get_serial_sequence('"UnitSettings"', 'RID')), n,
        "UNITTYPE", "IGNOREFACILITYCODE", "RECORDDEACTIVATION", "DEACTIVATIONDATE",
        "DEACTIVATIONDAYS", "MaxDigitsDirectoryCode", "MaxDigitsEntryCode",
        "CARDDEFAULTFACILITYCODE", "RFDEFAULTFACILITYCODE", "CARDTYPE", "RFTYPE"
        FROM "UnitSettings", generate_series(2, 4) n WHERE "UnitKey" = 1;
      INSERT INTO "DOORS" ("UNITKEY", "DOORID", "DOORNAME") SELECT n, "DOORID", "DOORNAME"
        FROM "DOORS", generate_series(2, 4) n WHERE "UNITKEY" = 1;
      INSERT INTO "Schedules" ("ScheduleID", "ScheduleName", "UnitKey")
        SELECT "ScheduleID", "ScheduleName", n FROM "Schedules", generate_series(2, 4) n
        WHERE "UnitKey" = 1;
      INSERT INTO "TenantGroup" ("UnitKey", "IsGroupZero") SELECT n, -1 FROM generate_series(2, 4) n;
    )sql");
    // Half of the seats are connected through the proxy.
    for (std::size_t at = 0; at < seats_.size(); ++at) {
      seats_[at].store = at % 2 == 0 ? name : proxy_.NameOf("soak");
    }
    name_ = name;
  }

  int Run(std::chrono::seconds time) {
    proxy_.Ask([this](const ServerProxy::Message&) { return AnyWay(); });
    for (std::size_t at = 0; at < seats_.size(); ++at) {
      Start(at);
    }
    const steady_clock::time_point end = steady_clock::now() + time;
    int nth = 0;
    while (steady_clock::now() < end) {
      std::this_thread::sleep_for(milliseconds(Any(random_, 100, 300)));
      Disturb(++nth);
    }
    EndSeats();
    proxy_.Ask(nullptr);
    return Judge();
  }

 private:
  /// One message in so many ends its connection, before or behind it.
  ServerProxy::Way AnyWay() {
    const std::lock_guard hold(cutting_);
    switch (Any(cuts_, 0, 2999)) {
      case 0:
        ++cut_;
        return ServerProxy::Way::kLostBefore;
      case 1:
        ++cut_;
        return ServerProxy::Way::kLostBehind;
      case 2:
        ++cut_;
        return ServerProxy::Way::kLostBehindAnswer;
      default:
        return ServerProxy::Way::kOn;
    }
  }

  void Start(std::size_t at) {
    SeatProcess& seat = seats_[at];
    const std::string name = fmt::format("s{}-{}", at, ++seat.incarnation);
    const std::string seed = std::to_string(random_());
    const std::string notes = folder_.File("notes").string();
    seat.process = fork();
    if (seat.process == 0) {
      execl("/proc/self/exe", "server_soak", "--seat", name.c_str(), seat.store.c_str(),
            notes.c_str(), seed.c_str(), static_cast<char*>(nullptr));
      _exit(127);
    }
  }

  void EndSeat(SeatProcess& seat, int by) {
    kill(seat.process, by);
    int status = 0;
    waitpid(seat.process, &status, 0);
    const bool isTold = WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM;  // before it could hear
    if (by == SIGTERM && status != 0 && !isTold) {
      Fault(fmt::format("a seat ended by itself, status {}", status));
    }
  }

  void EndSeats() {
    for (const SeatProcess& seat : seats_) {
      kill(seat.process, SIGTERM);
    }
    for (SeatProcess& seat : seats_) {
      EndSeat(seat, SIGTERM);
    }
  }

  void Disturb(int nth) {
    const std::size_t at = random_() % seats_.size();
    if (nth % 60 == 0) {
      server_.StartAgain();
      ++restarts_;
    } else if (nth % 20 == 0) {
      WithBackend([](postgres::Connection&, int backend) { kill(backend, SIGKILL); });
      ++killedBackends_;
    } else if (nth % 3 == 0) {
      WithBackend([](postgres::Connection& connection, int backend) {
        connection.Run(fmt::format("SELECT pg_terminate_backend({})", backend));
      });
      ++endedBackends_;
    } else {
      EndSeat(seats_[at], SIGKILL);
      ++killedSeats_;
      Start(at);
    }
  }

  /// Any of the server's processes that works for a seat.
  void WithBackend(const std::function<void(postgres::Connection&, int)>& work) {
    try {
      postgres::Connection connection(name_);
      const postgres::Result found = connection.Run(
          "SELECT pid FROM pg_stat_activity WHERE datname = 'soak' AND pid <> pg_backend_pid() "
          "ORDER BY random() LIMIT 1");
      if (found.rows() > 0) {
        work(connection, static_cast<int>(found.Number(0, 0)));
      }
    } catch (const StoreError&) {
      return;  // it is starting again
    }
  }

  void Fault(const std::string& what) {
    std::cerr << what << '\n';
    ++faults_;
  }

  /// What each operation was told, by who it was.
  struct Notes {
    std::map<std::string, std::string> told;  // "" for one that was killed before
    std::map<std::string, int> endings;
  };
  [[nodiscard]] Notes ReadNotes() {
    Notes notes;
    std::ifstream file(folder_.File("notes"));
    for (std::string line; std::getline(file, line);) {
      const std::size_t space = line.find(' ');
      const std::string word = line.substr(0, space);
      const std::string who = line.substr(space + 1, line.find(' ', space + 1) - space - 1);
      if (word == "begun") {
        notes.told[who] = "";
      } else {
        notes.told[who] = line;
        ++notes.endings[word];
      }
    }
    return notes;
  }

  int Judge() {
    const Notes notes = ReadNotes();
    postgres::Connection connection = postgres::OpenServerStore(name_, OpenMode::kReadOnly);
    std::map<std::string, int> entries;
    const postgres::Result read =
        connection.Run(R"(SELECT "Who", count(*) FROM "AuditEntries" GROUP BY "Who")");
    for (int row = 0; row < read.rows(); ++row) {
      entries[std::string(read.Text(row, 0))] = static_cast<int>(read.Number(row, 1));
    }
    int killed = 0;
    for (const auto& [who, told] : notes.told) {
      const auto found = entries.find(who);
      const int stored = found == entries.end() ? 0 : found->second;
      const bool mayBeEither = told.empty() || told.starts_with("unknown ");
      killed += told.empty() ? 1 : 0;
      if (stored > 1 || (!mayBeEither && stored != (told.starts_with("stored ") ? 1 : 0))) {
        Fault(fmt::format("{} entries of {}, which was told: {}", stored, who, told));
      }
    }
    // A seat is told of one that others are writing.
    if (server_.Log().find("deadlock detected") != std::string::npos) {
      Fault("the server's log tells of a deadlock");
    }
    for (const auto& [who, number] : entries) {
      if (!notes.told.contains(who)) {
        Fault(fmt::format("{} entries of {}, who has begun nothing", number, who));
      }
    }
    for (const std::string& wrong : WrongIn(connection)) {
      if (!wrong.starts_with("entry without rows")) {  // steps that were sent are in no entry
        Fault(wrong);
      }
    }
    Seat seat(std::make_unique<postgres::Store>(
                  postgres::OpenServerStore(name_, OpenMode::kReadWrite), Patience(), false),
              nullptr, "judge");
    for (std::int32_t unit = 1; unit <= kUnits; ++unit) {
      for (const Finding& finding : FindingsIn(seat.session(), unit)) {
        Fault(fmt::format("unit {}: {}", finding.unitKey, finding.what));
      }
    }
    for (const ChainFault& fault : seat.session().sql().audit().Check()) {
      Fault(fmt::format("the history at entry {}", fault.entry));
    }
    const auto count = [&](const char* word) {
      const auto found = notes.endings.find(word);
      return found == notes.endings.end() ? 0 : found->second;
    };
    std::cout << fmt::format(
        "{} operations by {} seats: {} stored, {} not, {} unknown, {} killed; seats killed {}, "
        "backends ended {}, killed {}, connections cut {}, servers started again {}\n",
        notes.told.size(), seats_.size(), count("stored"), count("nothing"), count("unknown"),
        killed, killedSeats_, endedBackends_, killedBackends_, cut_.load(), restarts_);
    if (count("stored") < static_cast<int>(seats_.size())) {
      Fault("hardly anything was stored");
    }
    std::cout << (faults_ == 0 ? "What was told is what is stored.\n" : "There are faults.\n");
    return faults_ == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  }

  TestServer server_;
  ServerProxy proxy_;
  TemporaryFolder folder_;
  std::string name_;
  std::vector<SeatProcess> seats_;
  Random random_{std::random_device{}()};
  std::mutex cutting_;
  Random cuts_{std::random_device{}()};
  std::atomic<int> cut_ = 0;
  int killedSeats_ = 0;
  int endedBackends_ = 0;
  int killedBackends_ = 0;
  int restarts_ = 0;
  int faults_ = 0;
};

int Main(const std::vector<std::string>& words) {
  constexpr int kUsualSeconds = 600;
  constexpr int kUsualSeats = 16;
  if (words.size() == 5 && words[0] == "--seat") {
    return WorkAsSeat(words[1], words[2], words[3], static_cast<unsigned>(std::stoul(words[4])));
  }
  if (const std::string missing = TestServer::Missing(); !missing.empty()) {
    std::cerr << missing << '\n';
    return EXIT_FAILURE;
  }
  const int seconds = words.empty() ? kUsualSeconds : std::stoi(words[0]);
  const int seats = words.size() < 2 ? kUsualSeats : std::stoi(words[1]);
  return Soak(seats).Run(std::chrono::seconds(seconds));
}

}  // namespace
}  // namespace qorhost::test

int main(int count, char** words) {
  try {
    return qorhost::test::Main({words + 1, words + count});
  } catch (const std::exception& failure) {
    std::cerr << "server_soak: " << failure.what() << '\n';
    return EXIT_FAILURE;
  }
}
