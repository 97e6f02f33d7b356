// A demo building in memory and a session on it whose surroundings the test plays.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/desks/input_fault.h"
#include "host/desks/session.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/database.h"
#include "host/store/sqlite/store.h"
#include "tests/host/store/whole_copy.h"
#include "tests/support/noted_by_name.h"
#include "tests/trace/trace_replay.h"

namespace qorhost::test {

/// Works on unit 2 unless a test says otherwise: its directory codes 101 to 106 stand in the rows
/// 11 to 16, and tenant 62 holds one credential.
class DeskFixture : public testing::Test {
 protected:
  static constexpr std::int32_t kUnit = 2;

  void SetUp() override { Open(false); }
  void TearDown() override { Close(); }

  /// A new session on a new demo building; calls_ has its trace when it is `traced`.
  void Open(bool traced) {
    Close();
    std::unique_ptr<Store> store = OpenMemoryStore();
    sqlite::Database& database = sqlite::DatabaseOf(*store);
    CopyWhole(sqlite::DatabaseOf(Demo()), database);
    Surroundings surroundings;
    surroundings.clock = [] { return qorcred::FromCivil({2026, 1, 31, 14, 5, 9}); };
    surroundings.messageBox = [this](std::string_view text, qorcred::MessageStyle style,
                                     std::string_view) {
      shown_.emplace_back(text);
      if (style != qorcred::MessageStyle::kQuestion) {
        return qorcred::MessageButton::kOk;
      }
      return yes_ ? qorcred::MessageButton::kYes : qorcred::MessageButton::kNo;
    };
    if (traced || replays_) {
      surroundings.trace = [this, traced](std::string_view line) {
        if (traced) calls_.emplace_back(line);
        if (replays_) trace_.emplace_back(line);
      };
    }
    database_ = &database;
    session_ = std::make_unique<DeskSession>(std::move(store), std::move(surroundings));
  }

  [[nodiscard]] DeskSession& session() { return *session_; }
  /// The first cell of a SELECT as text; "" for Null and without rows.
  [[nodiscard]] std::string Cell(const std::string& select) {
    return qorcred::TextOrEmpty(session_->sql().Scalar(select));
  }
  [[nodiscard]] std::size_t CountOf(const std::string& select) {
    return session_->sql().Select(select).rowCount;
  }
  /// Changes the store past every controller, also in ways in which it misbehaves.
  void Run(const std::string& statement) { database_->Run(statement); }

  std::vector<std::string> shown_;  // messages
  std::vector<std::string> calls_;  // the trace of a traced session
  bool yes_ = false;                // how questions are answered
  /// Whether the controllers run again, alone: not where a test calls the session's host itself.
  bool replays_ = false;

 private:
  // Whatever a test has its desks do is a case for the controllers alone as well: on a host that
  // answers as the trace has it they leave the same trace, and touch what they are described to.
  void Close() {
    session_.reset();
    EXPECT_NO_THROW(
        EXPECT_EQ(qortest::DifferenceInReplays(qortest::MakeNotedController, trace_), ""));
    trace_.clear();
  }

  /// The demo building as it is made, once.
  [[nodiscard]] static Store& Demo() {
    static const std::unique_ptr<Store> demo = [] {
      std::unique_ptr<Store> made = OpenMemoryStore();
      CreateDemoData(*made->StartSession(SystemClock()));
      return made;
    }();
    return *demo;
  }

  std::vector<std::string> trace_;
  std::unique_ptr<DeskSession> session_;
  sqlite::Database* database_ = nullptr;  // of the session
};

/// The fault that `work` raises: its field; "" when it raises none.
template <typename Work>
std::string FieldAtFault(Work&& work) {
  try {
    work();
  } catch (const InputFault& fault) {
    return std::string(fault.field());
  }
  return "";
}

}  // namespace qorhost::test
