#include "host/store/postgres/connecting_words.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace qorhost::postgres {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kBegins = "connection to server ";
constexpr std::string_view kFails = " failed: ";

/// What has happened, and where.
struct Report {
  std::vector<std::string> places;  // "at HOST (ADDRESS), port PORT"; none of what tells none
  std::string what;
};

std::string_view Trimmed(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// Puts a further part behind a sentence.
void Append(std::string& sentence, std::string_view part) {
  if (!sentence.empty() && !part.empty()) {
    sentence +=
        std::string_view(".:;?!").find(sentence.back()) == std::string_view::npos ? "; " : " ";
  }
  sentence += part;
}

Report ReportIn(std::string_view line) {
  const std::size_t fails = line.find(kFails);
  if (!line.starts_with(kBegins) || fails == std::string_view::npos) {
    return {{}, std::string(line)};
  }
  return {{std::string(line.substr(kBegins.size(), fails - kBegins.size()))},
          std::string(line.substr(fails + kFails.size()))};
}

std::vector<Report> ReportsIn(std::string_view text) {
  std::vector<Report> reports;
  for (const std::string_view line : LinesOf(text)) {
    const std::string_view words = Trimmed(line);
    const bool goesOn = !line.empty() && kBlanks.find(line.front()) != std::string_view::npos;
    if (goesOn && !reports.empty()) {
      Append(reports.back().what, words);
    } else if (!words.empty()) {
      reports.push_back(ReportIn(words));
    }
  }
  return reports;
}

/// Those of the same words become one.
std::vector<Report> Gathered(const std::vector<Report>& reports) {
  std::vector<Report> gathered;
  for (const Report& report : reports) {
    const auto same = std::find_if(gathered.begin(), gathered.end(), [&](const Report& other) {
      return other.what == report.what && other.places.empty() == report.places.empty();
    });
    if (same == gathered.end()) {
      gathered.push_back(report);
      continue;
    }
    for (const std::string& place : report.places) {
      if (std::find(same->places.begin(), same->places.end(), place) == same->places.end()) {
        same->places.push_back(place);
      }
    }
  }
  return gathered;
}

}  // namespace

std::string InOneSentence(std::string_view text) {
  std::string sentence;
  std::vector<std::string> latest;
  for (const Report& report : Gathered(ReportsIn(text))) {
    const bool tellsPlaces = !report.places.empty() && report.places != latest;
    Append(sentence, tellsPlaces
                         ? fmt::format("{}{}{}{}", latest.empty() ? kBegins : "",
                                       fmt::join(report.places, " and "), kFails, report.what)
                         : report.what);
    latest = report.places.empty() ? latest : report.places;
  }
  return sentence;
}

}  // namespace qorhost::postgres
