#include "tests/support/surface_record.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <istream>
#include <ostream>
#include <stdexcept>

namespace qortest {

namespace {

constexpr char kEscape = '\\';
constexpr char kBetween = '\t';

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char each : text) {
    switch (each) {
      case '\t':
        escaped += "\\t";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case kEscape:
        escaped += "\\\\";
        break;
      default:
        escaped += each;
    }
  }
  return escaped;
}

/// Takes a field and the mark behind it from the beginning of `line`.
std::string TakeField(std::string_view& line) {
  std::string field;
  std::size_t at = 0;
  while (at < line.size() && line[at] != kBetween) {
    if (line[at] != kEscape || at + 1 == line.size()) {
      field += line[at++];
      continue;
    }
    const char marked = line[at + 1];
    field += marked == 't' ? '\t' : marked == 'n' ? '\n' : marked;
    at += 2;
  }
  line.remove_prefix(at < line.size() ? at + 1 : at);
  return field;
}

std::string CurrentTest() {
  const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
  if (test == nullptr) return {};
  return std::string(test->test_suite_name()) + "." + test->name();
}

/// Writes the record when all tests have run.
class Writing : public ::testing::Environment {
 public:
  void TearDown() override {
    const char* path = std::getenv("QORCRED_SURFACE");
    if (path == nullptr) return;
    std::ofstream file(path, std::ios::binary);
    WriteTouches(file, SurfaceRecord::Instance().Touches());
    file.close();
    ASSERT_TRUE(file) << "cannot write " << path;
  }
};

const ::testing::Environment* const kWriting = ::testing::AddGlobalTestEnvironment(new Writing);

}  // namespace

SurfaceRecord& SurfaceRecord::Instance() {
  static SurfaceRecord record;
  return record;
}

SurfaceRecord::Operation::Operation(std::string_view className, std::string_view operation) {
  Instance().running_.push_back({className, operation, 0, {}});
}

SurfaceRecord::Operation::~Operation() {
  Instance().running_.pop_back();
}

SurfaceRecord::HostsTurn::HostsTurn() {
  auto& running = Instance().running_;
  if (!running.empty()) ++running.back().hostCalls;
}

SurfaceRecord::HostsTurn::~HostsTurn() {
  auto& running = Instance().running_;
  if (!running.empty()) --running.back().hostCalls;
}

void SurfaceRecord::Note(std::string_view part, std::string_view what) {
  if (running_.empty() || running_.back().hostCalls > 0) return;
  const Running& now = running_.back();
  const bool isHandedOver = !what.empty() && what == now.handedStatement;
  Touch touch{std::string(now.className),
              std::string(now.operation),
              std::string(part),
              std::string(isHandedOver ? kHandedOver : what),
              {}};
  if (firstTests_.find(touch) == firstTests_.end()) {
    firstTests_.emplace(std::move(touch), CurrentTest());
  }
}

void SurfaceRecord::HandOver(std::string_view statement) {
  running_.back().handedStatement = statement;
}

std::vector<Touch> SurfaceRecord::Touches() const {
  std::vector<Touch> touches;
  touches.reserve(firstTests_.size());
  for (const auto& [touch, test] : firstTests_) {
    touches.push_back(touch);
    touches.back().test = test;
  }
  return touches;
}

void WriteTouches(std::ostream& out, const std::vector<Touch>& touches) {
  for (const Touch& touch : touches) {
    out << Escaped(touch.className) << kBetween << Escaped(touch.operation) << kBetween
        << Escaped(touch.part) << kBetween << Escaped(touch.what) << kBetween << Escaped(touch.test)
        << '\n';
  }
}

std::vector<Touch> ReadTouches(std::istream& in) {
  std::vector<Touch> touches;
  for (std::string text; std::getline(in, text);) {
    std::string_view line = text;
    Touch touch;
    for (std::string* field :
         {&touch.className, &touch.operation, &touch.part, &touch.what, &touch.test}) {
      *field = TakeField(line);
    }
    if (touch.className.empty() || touch.operation.empty() || touch.part.empty() || !line.empty()) {
      throw std::runtime_error("not a touch: " + text);
    }
    touches.push_back(std::move(touch));
  }
  return touches;
}

}  // namespace qortest
