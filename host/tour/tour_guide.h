// How the tour tells what happens.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "host/files/table.h"
#include "host/screens/list_model.h"
#include "host/terminal/console.h"

namespace qorhost {

/// Prints chapters, facts and what operators do; shows the messages of controllers in between,
/// answering questions as the tour plans. Counts what did not come out as told.
class TourGuide {
 public:
  explicit TourGuide(Console& console) : console_(console) {}

  /// A numbered heading.
  void Chapter(std::string_view title);
  /// One paragraph of explanation.
  void Say(std::string_view text);
  /// A name and what the screen shows under it.
  void Fact(std::string_view name, std::string_view shown);
  /// A list's first entries, the selected one in brackets.
  void FactOfList(std::string_view name, const ListModel& list);
  /// Rows, moved to the right like everything below a heading.
  void ShowTable(const Table& table);
  /// What the operator does.
  void Act(std::string_view text);
  /// What came of it.
  void Result(std::string_view text);

  /// The next question is answered so; without a plan the answer is No.
  void PlanAnswer(qorcred::MessageButton button) { answers_.push_back(button); }
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title);
  /// The messages shown since the last call.
  [[nodiscard]] std::vector<std::string> TakeMessages();

  /// Notes it when something did not come out as told.
  void Expect(bool asTold, std::string_view what);
  [[nodiscard]] int surprises() const { return surprises_; }

 private:
  [[nodiscard]] std::string Coloured(std::string_view text, std::string_view code) const;

  Console& console_;
  std::deque<qorcred::MessageButton> answers_;
  std::vector<std::string> messages_;
  int chapters_ = 0;
  int surprises_ = 0;
};

}  // namespace qorhost
