#include "host/desks/import_run.h"

#include <fmt/format.h>

#include <memory>
#include <utility>

#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

/// Every line is a part.
WorkOrder InParts(WorkOrder order) {
  order.inParts = true;
  return order;
}

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

ImportRun::ImportRun(DeskSession& session, const WorkOrder& order, const ImportRules& rules,
                     std::span<const FieldWord> columns)
    : session_(session),
      rules_(rules),
      columns_(columns),
      unseen_(session, rules.answerYes),
      all_(session.sql().work(), InParts(order)) {
  session_.sql().work().Lock();
  for (const std::int32_t unitKey : order.units) {
    session.sql().units().KeepCounts(unitKey);  // every save asks how many codes it has
  }
}

ImportReport ImportRun::Run(ImportFile& file, const LineEntry& enter, const Progress& progress,
                            const std::function<void()>& finish) {
  report_.dryRun = rules_.dryRun;
  try {
    EnterAll(file, enter, progress);
    if (finish) {
      FinishAll(finish);
    }
  } catch (const CancelledError&) {
    all_.Undo();
    ImportReport cancelled;
    cancelled.ending = Ending::kCancelled;
    return cancelled;
  }
  if (rules_.dryRun) {
    all_.Undo();
  } else {
    all_.Commit();
  }
  report_.ending = failed_                ? Ending::kFailed
                   : report_.refused == 0 ? Ending::kDone
                                          : Ending::kRefused;
  return std::move(report_);
}

void ImportRun::FinishAll(const std::function<void()>& finish) {
  try {
    finish();
  } catch (const StoreError& error) {
    throw FailureError(fmt::format("{}; nothing was imported", error.what()));
  }
}

void ImportRun::EnterAll(ImportFile& file, const LineEntry& enter, const Progress& progress) {
  const auto total = static_cast<std::int64_t>(file.lineCount());
  ImportLine line;
  for (std::int64_t entered = 0;; ++entered) {
    if (progress && !progress(entered, total)) {
      throw CancelledError();
    }
    if (!file.Next(line)) {
      if (entered > 0 && !file.endsWithALine()) {
        Remember(line.number(), false,
                 "the file ends within this line: if it was cut off there, the last cell is not "
                 "whole");
      }
      return;
    }
    EnterLine(file, line, enter);
  }
}

void ImportRun::EnterLine(const ImportFile& file, const ImportLine& line, const LineEntry& enter) {
  messages_.clear();
  failures_.clear();
  wrong_.reset();
  if (!line.fault().empty()) {
    messages_.push_back(line.fault());
    Refuse(line);
    return;
  }
  SqlSession& sql = session_.sql();
  ImportNotes notes;
  {
    Undoable one(sql.savepoint());
    bool unchanged = false;
    if (TryLine(file, line, enter, notes, unchanged)) {
      one.Keep();
      wrong_.reset();
      ++(unchanged ? report_.unchanged : report_.done);
      for (const std::string& note : notes) {
        Remember(line.number(), false, note);
      }
      return;
    }
    one.Undo();
  }
  if (!sql.inTransaction()) {
    throw FailureError(fmt::format("line {}: {}; the store gave up there and nothing was imported",
                                   line.number(),
                                   failures_.empty() ? "not stored" : failures_.front()));
  }
  Refuse(line);
}

bool ImportRun::TryLine(const ImportFile& file, const ImportLine& line, const LineEntry& enter,
                        ImportNotes& notes, bool& unchanged) {
  try {
    const Outcome outcome = enter(line, notes);
    TakeMessages(outcome);
    unchanged = outcome.unchanged;
    return outcome.done();
  } catch (const RefusedLine& refused) {
    TakeMessages(refused.outcome());
    if (!refused.because().empty()) {
      messages_.push_back(refused.because());
    }
    wrong_ = refused.column() ? file.PlaceOf(*refused.column()) : std::nullopt;
  } catch (const InputFault& fault) {
    messages_.push_back(InWords(fault, columns_));
    wrong_ = file.PlaceCalled(WordOf(fault, columns_));
  } catch (const RefusedCell& refused) {
    messages_.emplace_back(refused.what());
    wrong_ = file.PlaceCalled(refused.heading());
  } catch (const RefusedError& error) {
    messages_.emplace_back(error.what());
  } catch (const FailureError& error) {
    failures_.emplace_back(error.what());
  } catch (const StoreError& error) {
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

void ImportRun::Refuse(const ImportLine& line) {
  ++report_.refused;
  for (const std::string& failure : failures_) {
    failed_ = true;
    messages_.push_back(failure);
  }
  if (messages_.empty()) {
    messages_.emplace_back("it was not stored");
  }
  const std::string reason = fmt::format("{}", fmt::join(messages_, " "));
  Remember(line.number(), true, reason);
  if (rules_.onRefused) {
    rules_.onRefused(line, reason);
  }
}

void ImportRun::Remember(std::size_t line, bool refused, const std::string& text) {
  const auto [place, isNew] = placeOfText_.emplace(Shortened(text), report_.texts.size());
  if (isNew) {
    report_.texts.push_back(place->first);
  }
  report_.remarks.push_back({line, refused, place->second, wrong_});
}

}  // namespace qorhost
