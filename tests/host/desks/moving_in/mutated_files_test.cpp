// Files that chance has changed: refused, or read with every row somewhere; no hang, no half
// import. QORHOST_FUZZ_SECONDS lets it go on for so long, from another beginning each time, which
// is told; QORHOST_FUZZ_SEED begins with that one.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <charconv>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/components/store_host.h"
#include "host/desks/desk_error.h"
#include "host/files/file_error.h"
#include "host/store/engines/opening.h"
#include "tests/host/desks/moving_in/moving_fixture.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using Time = std::chrono::steady_clock;

constexpr std::size_t kPage = 4096;
constexpr int kUsualFiles = 120;

/// What the surroundings ask for; nothing where they do not.
std::optional<unsigned> Asked(const char* name) {
  const char* text = std::getenv(name);
  if (text == nullptr) return std::nullopt;
  const std::string_view digits(text);
  unsigned number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (read.ec != std::errc() || read.ptr != digits.data() + digits.size()) {
    throw std::invalid_argument(std::string(name) + " is no number");
  }
  return number;
}

/// The first of the files: always the same, unless it goes on for longer.
unsigned FirstSeed(bool isLonger) {
  if (const std::optional<unsigned> asked = Asked("QORHOST_FUZZ_SEED")) return *asked;
  return isLonger ? static_cast<unsigned>(std::chrono::system_clock::now().time_since_epoch() /
                                          std::chrono::milliseconds(1))
                  : 1;
}

/// The most memory that this process has had at a time, in megabytes. The reader's is its own.
long MostMemory() {
  constexpr long kKilobytes = 1024;
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / kKilobytes;
}

/// Changes of the bytes of a file, each another kind of damage.
class Mutation {
 public:
  explicit Mutation(unsigned seed) : random_(seed) {}

  [[nodiscard]] std::string Of(std::string bytes, const std::string& other) {
    for (std::size_t changes = 1 + Below(4); changes > 0; --changes) Change(bytes, other);
    return bytes;
  }

 private:
  [[nodiscard]] std::size_t Below(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
  }

  void Change(std::string& bytes, const std::string& other) {
    if (bytes.size() < 2 * kPage) return;
    const std::size_t page = Below(bytes.size() / kPage) * kPage;
    switch (Below(8)) {
      case 0:
        bytes[Below(bytes.size())] = static_cast<char>(Below(256));
        break;
      case 1:  // among the definitions and lists at the beginning of a page
        bytes[page + Below(64)] = static_cast<char>(Below(256));
        break;
      case 2:
        PutNumber(bytes, Below(bytes.size() - 4));
        break;
      case 3:
        PutNumber(bytes, page + Below(16) * 4);
        break;
      case 4:
        bytes.replace(page, kPage, bytes, Below(bytes.size() / kPage) * kPage, kPage);
        break;
      case 5:
        bytes.replace(page, kPage, other, Below(other.size() / kPage) * kPage, kPage);
        break;
      case 6:
        for (std::size_t at = page; at < page + kPage; ++at)
          bytes[at] = static_cast<char>(random_());
        break;
      default:
        if (Below(8) == 0) bytes.resize(page);
        if (!bytes.empty()) bytes[Below(128) % bytes.size()] = static_cast<char>(Below(256));
        break;
    }
  }

  void PutNumber(std::string& bytes, std::size_t at) {
    const std::uint32_t numbers[] = {0,
                                     1,
                                     0x7FFFFFFF,
                                     0x80000000,
                                     0xFFFFFFFF,
                                     static_cast<std::uint32_t>(Below(bytes.size() / kPage)),
                                     static_cast<std::uint32_t>(Below(bytes.size() / kPage)) << 8U};
    const std::uint32_t number = numbers[Below(std::size(numbers))];
    for (int byte = 0; byte < 4; ++byte) {
      bytes[at + static_cast<std::size_t>(byte)] = static_cast<char>(number >> (8 * byte) & 0xFFU);
    }
  }

  std::mt19937 random_;  // of seeds side by side it makes things far apart
};

class MutatedFiles : public MovingFixture {
 protected:
  [[nodiscard]] static std::string BytesOfSample(const char* name) {
    std::ifstream in(SampleDatabase(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  /// Whether it could be read. Everything else than a refusal ends the test.
  bool Bring(const std::string& bytes) {
    const std::filesystem::path file = folder_.File("mutated.mdb");
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
    MovingOrder order = OrderFor("");
    order.file = file;
    order.reading.longest = std::chrono::seconds(30);
    order.reading.processorTime = std::chrono::seconds(10);
    try {
      const MovingPlan plan = PlanMoving(order);
      for (const MovedTable& table : plan.numbers()) {
        EXPECT_EQ(table.inFile, table.broughtIn + table.refused);
      }
      const std::unique_ptr<Store> store = OpenMemoryStore();
      const std::unique_ptr<SqlSession> session = store->StartSession(SystemClock());
      BringIn(*session, plan, "mutated.mdb");
      for (const MovedTable& table : plan.numbers()) {
        if (!table.isInFile) continue;  // a store has fields of the report without any
        EXPECT_EQ(session->Select(fmt::format("SELECT RID FROM {}", table.name)).rowCount,
                  table.broughtIn)
            << table.name;
      }
      return true;
    } catch (const FileError& refused) {
      EXPECT_NE(std::string(refused.what()), "");
    } catch (const RefusedError& refused) {
      EXPECT_NE(std::string(refused.what()), "");
    }
    return false;
  }

  TemporaryFolder folder_;
};

TEST_F(MutatedFiles, AreRefusedOrBroughtInWhole) {
  const std::vector<std::string> samples{
      BytesOfSample("building-2000.mdb"), BytesOfSample("building-2010.accdb"),
      BytesOfSample("building-odd.mdb"), BytesOfSample("encoded-2000.mdb"),
      BytesOfSample("password-2010.accdb")};
  const std::optional<unsigned> longer = Asked("QORHOST_FUZZ_SECONDS");
  const Time::time_point end = Time::now() + std::chrono::seconds(longer.value_or(0));
  const unsigned first = FirstSeed(longer.has_value());
  unsigned files = 0;
  unsigned read = 0;
  auto slowest = Time::duration::zero();
  // What the samples themselves take is no file's doing.
  for (const std::string& sample : samples) (void)Bring(sample);
  std::ofstream("/proc/self/clear_refs") << 5;  // nor what tests before this one have taken
  const long before = MostMemory();
  for (unsigned seed = first; files < kUsualFiles || Time::now() < end; ++seed, ++files) {
    SCOPED_TRACE(fmt::format("QORHOST_FUZZ_SEED={}", seed));
    const Time::time_point begin = Time::now();
    const std::string& sample = samples[seed % samples.size()];
    read += Bring(Mutation(seed).Of(sample, samples[(seed / 7) % samples.size()])) ? 1 : 0;
    slowest = std::max(slowest, Time::now() - begin);
    if (HasFailure()) break;
  }
  std::cout << files << " files from the seed " << first << " on, " << read
            << " of them read, the slowest in "
            << std::chrono::duration_cast<std::chrono::milliseconds>(slowest).count() << " ms; "
            << before << " MB of memory for the samples, " << MostMemory() - before
            << " MB more for these\n";
  // A file of less than a megabyte makes little; a sanitizer keeps 256 MB of what was freed.
  constexpr long kMostMore = 400;
  EXPECT_LT(MostMemory() - before, kMostMore);
  EXPECT_GT(read, 0U);
  EXPECT_LT(read, files);
}

}  // namespace
}  // namespace qorhost::test
