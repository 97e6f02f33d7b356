#include "host/desks/import_run.h"

#include <fmt/format.h>

#include <utility>

#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/store/sqlite/kept_counts.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

/// A part of the store's work that can be undone alone.
class Undoable {
 public:
  Undoable(Database& database, const char* begin, std::string undo)
      : database_(database), undo_(std::move(undo)) {
    database_.Run(begin);
  }
  ~Undoable() {
    if (!ended_) {
      try {
        Undo();
      } catch (const StoreError&) {
        // The store undoes what is open when it is closed.
        return;
      }
    }
  }
  Undoable(const Undoable&) = delete;
  Undoable& operator=(const Undoable&) = delete;

  void Keep(const char* keep) {
    ended_ = true;
    database_.Run(keep);
  }
  void Undo() {
    ended_ = true;
    if (database_.inTransaction()) {
      database_.Run(undo_);
    }
  }

 private:
  Database& database_;
  std::string undo_;
  bool ended_ = false;
};

/// A message without the middle when a huge cell stands there.
std::string Shortened(std::string text) {
  constexpr std::size_t kPart = 200;
  if (qorcred::Utf16Length(text) <= 2 * kPart) {
    return text;
  }
  return std::string(qorcred::LeftUtf16(text, kPart)) + " ... " +
         std::string(qorcred::RightUtf16(text, kPart));
}

}  // namespace

ImportRun::ImportRun(DeskSession& session, const ImportRules& rules,
                     std::span<const FieldWord> columns)
    : session_(session), rules_(rules), columns_(columns) {
  session_.AnswerUnseen(rules.answerYes);
}

ImportReport ImportRun::Run(std::int32_t unitKey, ImportFile& file, const LineEntry& enter,
                            const Progress& progress) {
  report_.dryRun = rules_.dryRun;
  Database& database = session_.store().database();
  // Every save asks how many codes the unit has.
  KeptCounts counts(session_.sql());
  Undoable all(database, "BEGIN IMMEDIATE", "ROLLBACK");
  counts.Count(unitKey);
  try {
    EnterAll(file, enter, progress);
  } catch (const CancelledError&) {
    all.Undo();
    ImportReport cancelled;
    cancelled.ending = Ending::kCancelled;
    return cancelled;
  }
  if (rules_.dryRun) {
    all.Undo();
  } else {
    all.Keep("COMMIT");
  }
  report_.ending = failed_                ? Ending::kFailed
                   : report_.refused == 0 ? Ending::kDone
                                          : Ending::kRefused;
  return std::move(report_);
}

void ImportRun::EnterAll(ImportFile& file, const LineEntry& enter, const Progress& progress) {
  const auto total = static_cast<std::int64_t>(file.lineCount());
  ImportLine line;
  for (std::int64_t entered = 0;; ++entered) {
    if (progress && !progress(entered, total)) {
      throw CancelledError();
    }
    if (!file.Next(line)) {
      return;
    }
    EnterLine(line, enter);
  }
}

void ImportRun::EnterLine(const ImportLine& line, const LineEntry& enter) {
  messages_.clear();
  failures_.clear();
  if (!line.fault().empty()) {
    messages_.push_back(line.fault());
    Refuse(line.number());
    return;
  }
  Database& database = session_.store().database();
  ImportNotes notes;
  {
    Undoable one(database, "SAVEPOINT line", "ROLLBACK TO line; RELEASE line");
    if (TryLine(line, enter, notes)) {
      one.Keep("RELEASE line");
      ++report_.done;
      for (const std::string& note : notes) {
        Remember(line.number(), false, note);
      }
      return;
    }
    one.Undo();
  }
  if (!database.inTransaction()) {
    throw FailureError(fmt::format("line {}: {}; the store gave up there and nothing was imported",
                                   line.number(),
                                   failures_.empty() ? "not stored" : failures_.front()));
  }
  Refuse(line.number());
}

bool ImportRun::TryLine(const ImportLine& line, const LineEntry& enter, ImportNotes& notes) {
  try {
    const Outcome outcome = enter(line, notes);
    TakeMessages(outcome);
    return outcome.done();
  } catch (const InputFault& fault) {
    messages_.push_back(InWords(fault, columns_));
  } catch (const RefusedError& error) {
    messages_.emplace_back(error.what());
  } catch (const FailureError& error) {
    failures_.emplace_back(error.what());
  }
  return false;
}

void ImportRun::TakeMessages(const Outcome& outcome) {
  for (const ShownMessage& message : outcome.messages) {
    if (message.style != qorcred::MessageStyle::kQuestion) {
      messages_.push_back(message.text);
    } else if (message.answer == qorcred::MessageButton::kNo) {
      messages_.push_back(fmt::format("{} ({})", message.text, rules_.answeredNo));
    }
  }
  failures_ = outcome.failures;
}

void ImportRun::Refuse(std::size_t line) {
  ++report_.refused;
  for (const std::string& failure : failures_) {
    failed_ = true;
    messages_.push_back(failure);
  }
  if (messages_.empty()) {
    messages_.emplace_back("it was not stored");
  }
  Remember(line, true, fmt::format("{}", fmt::join(messages_, " ")));
}

void ImportRun::Remember(std::size_t line, bool refused, const std::string& text) {
  const auto [place, isNew] = placeOfText_.emplace(Shortened(text), report_.texts.size());
  if (isNew) {
    report_.texts.push_back(place->first);
  }
  report_.remarks.push_back({line, refused, place->second});
}

}  // namespace qorhost
