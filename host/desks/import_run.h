// Entering the lines of a file into a screen, one after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/import_words.h"
#include "host/desks/input_fault.h"
#include "host/desks/message_rules.h"
#include "host/desks/outcome.h"
#include "host/desks/progress.h"
#include "host/desks/session.h"
#include "host/desks/sheet_dates.h"
#include "host/files/import_file.h"

namespace qorhost {

/// How an import is done.
struct ImportRules {
  bool dryRun = false;     ///< does all of it, then undoes it
  bool answerYes = false;  ///< how every question is answered
  /// What is told, in brackets, behind a question that was answered No.
  std::string answeredNo = "answered No";
  Apostrophes apostrophes = Apostrophes::kRefused;  ///< in display names of directory codes
  /// What is told behind a refused apostrophe: ", or ..."; a sentence without its full stop.
  std::string howToReplace{};
  SheetDates dates{};
  /// Is handed every refused line with the reason, in the order of the file.
  std::function<void(const ImportLine& line, const std::string& reason)> onRefused = nullptr;
};

/// What a person is told of one line.
struct LineRemark {
  std::size_t line = 0;
  bool refused = false;  ///< else the line was imported without a part of it
  std::size_t text = 0;  ///< in the report's texts
  /// Where in the line the cell stands that is wrong, from 0; nothing where it is none of them.
  std::optional<std::size_t> place = std::nullopt;
};

/// What an import came to. Refused when a line was, failed when a statement of one failed; nothing
/// is kept of a cancelled one.
struct ImportReport {
  Ending ending = Ending::kDone;
  bool dryRun = false;
  std::size_t done = 0;             ///< lines that are stored now, or would be
  std::size_t unchanged = 0;        ///< lines that were stored so already, or passed over
  std::size_t refused = 0;          ///< lines of which nothing is stored
  std::vector<LineRemark> remarks;  ///< by line
  std::vector<std::string> texts;   ///< many lines of a file are refused alike

  [[nodiscard]] const std::string& TextOf(const LineRemark& remark) const {
    return texts[remark.text];
  }
};

/// What ended a line of several operations: one of them was not done.
class RefusedLine : public std::exception {
 public:
  /// `column` is that of the cell that the controller did not take, where that is known.
  /// `because` is a sentence of the host's own behind the controller's.
  explicit RefusedLine(Outcome outcome, std::optional<std::size_t> column = std::nullopt,
                       std::string because = {})
      : outcome_(std::move(outcome)), column_(column), because_(std::move(because)) {}
  [[nodiscard]] const Outcome& outcome() const noexcept { return outcome_; }
  [[nodiscard]] std::optional<std::size_t> column() const noexcept { return column_; }
  [[nodiscard]] const std::string& because() const noexcept { return because_; }
  [[nodiscard]] const char* what() const noexcept override { return "a line was not stored"; }

 private:
  Outcome outcome_;
  std::optional<std::size_t> column_;
  std::string because_;
};

/// A line that is refused for what stands under one of the file's headings.
class RefusedCell : public RefusedError {
 public:
  RefusedCell(const std::string& why, std::string_view heading)
      : RefusedError(why), heading_(heading) {}
  [[nodiscard]] const std::string& heading() const noexcept { return heading_; }

 private:
  std::string heading_;
};

/// Enters one line into the screen and saves it. Raises InputFault for what cannot be typed into
/// the screen, and RefusedLine.
using LineEntry = std::function<Outcome(const ImportLine& line, ImportNotes& notes)>;

/// Enters every line in one transaction of the store, in which a refused line leaves nothing
/// behind. A dry run undoes the transaction at the end. Raises FailureError, with nothing imported,
/// when the store gives up.
class ImportRun {
 public:
  /// Nobody else writes from now on until the end; what the screen shows is to be read behind it.
  /// `columns` are what the file calls the screen's inputs. Raises StoreError when others write for
  /// too long.
  ImportRun(DeskSession& session, const WorkOrder& order, const ImportRules& rules,
            std::span<const FieldWord> columns);

  /// `enter` works on the unit's screen; `finish` writes, behind the last line, what stands for
  /// all.
  [[nodiscard]] ImportReport Run(ImportFile& file, const LineEntry& enter, const Progress& progress,
                                 const std::function<void()>& finish = nullptr);

 private:
  static void FinishAll(const std::function<void()>& finish);
  void EnterAll(ImportFile& file, const LineEntry& enter, const Progress& progress);
  void EnterLine(const ImportFile& file, const ImportLine& line, const LineEntry& enter);
  bool TryLine(const ImportFile& file, const ImportLine& line, const LineEntry& enter,
               ImportNotes& notes, bool& unchanged);
  void TakeMessages(const Outcome& outcome);
  void Refuse(const ImportLine& line);
  void Remember(std::size_t line, bool refused, const std::string& text);

  DeskSession& session_;
  const ImportRules& rules_;
  std::span<const FieldWord> columns_;
  UnseenMessages unseen_;  // questions are answered by the rules
  WorkGuard all_;
  std::vector<std::string> messages_;  // about the line
  std::vector<std::string> failures_;  // of the line
  std::optional<std::size_t> wrong_;   // the place of the line's cell that is refused
  ImportReport report_;
  std::unordered_map<std::string, std::size_t> placeOfText_;
  bool failed_ = false;
};

}  // namespace qorhost
