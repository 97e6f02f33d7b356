#include "host/tour/tour_guide.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <utility>

#include "frame/text.h"
#include "host/terminal/display_text.h"
#include "host/terminal/table_printer.h"

namespace qorhost {

using qorcred::MessageButton;
using qorcred::MessageStyle;

namespace {

constexpr std::size_t kNameWidth = 18;
constexpr std::int32_t kEntriesShown = 5;
constexpr std::string_view kBold = "1";
constexpr std::string_view kDim = "2";
constexpr std::string_view kGreen = "32";
constexpr std::string_view kRed = "31";
constexpr std::string_view kYellow = "33";

}  // namespace

std::string TourGuide::Coloured(std::string_view text, std::string_view code) const {
  return console_.environment.colours ? fmt::format("\x1B[{}m{}\x1B[0m", code, text)
                                      : std::string(text);
}

void TourGuide::Chapter(std::string_view title) {
  const std::string heading = fmt::format("{}. {}", ++chapters_, Displayable(title));
  console_.out << '\n'
               << Coloured(heading, kBold) << '\n'
               << std::string(DisplayWidth(heading), '=') << '\n';
}

void TourGuide::Say(std::string_view text) {
  console_.out << Coloured(Displayable(text), kDim) << '\n';
}

void TourGuide::Fact(std::string_view name, std::string_view shown) {
  console_.out << "  " << PaddedTo(std::string(name), kNameWidth) << Displayable(shown) << '\n';
}

void TourGuide::FactOfList(std::string_view name, const ListModel& list) {
  std::string shown;
  const std::int32_t entries = std::min(list.count(), kEntriesShown);
  for (std::int32_t index = 0; index < entries; ++index) {
    const std::string_view text = qorcred::Trim(list.Text(index));
    shown += index == 0 ? "" : " | ";
    shown += index == list.selected() ? fmt::format("[{}]", text) : std::string(text);
  }
  if (list.count() > entries) {
    shown += fmt::format(" | ... {} more", list.count() - entries);
  }
  Fact(name, shown);
}

void TourGuide::ShowTable(const Table& table) {
  std::stringstream rows;
  PrintTable(rows, table);
  for (std::string line; std::getline(rows, line);) {
    console_.out << "    " << line << '\n';
  }
}

void TourGuide::Act(std::string_view text) {
  console_.out << "\n  " << Coloured(fmt::format("> {}", Displayable(text)), kBold) << '\n';
}

void TourGuide::Result(std::string_view text) {
  console_.out << "    " << Coloured(Displayable(text), kGreen) << '\n';
}

MessageButton TourGuide::ShowMessage(std::string_view text, MessageStyle style,
                                     std::string_view title) {
  messages_.emplace_back(text);
  const bool question = style == MessageStyle::kQuestion;
  const std::string icon =
      style == MessageStyle::kNotice ? Coloured("(i)", kYellow) : Coloured("(!)", kRed);
  console_.out << fmt::format("    {} {}: {}\n", icon, Displayable(title), Displayable(text));
  if (!question) {
    return MessageButton::kOk;
  }
  MessageButton answer = MessageButton::kNo;
  if (!answers_.empty()) {
    answer = answers_.front();
    answers_.pop_front();
  }
  console_.out << (answer == MessageButton::kYes ? "        [ Yes ]   No\n"
                                                 : "          Yes   [ No ]\n");
  return answer;
}

std::vector<std::string> TourGuide::TakeMessages() {
  return std::exchange(messages_, {});
}

void TourGuide::Expect(bool asTold, std::string_view what) {
  if (!asTold) {
    ++surprises_;
    console_.err << fmt::format("qorhost: the tour did not come out as told: {}\n",
                                Displayable(what));
  }
}

}  // namespace qorhost
