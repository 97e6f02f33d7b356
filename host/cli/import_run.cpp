#include "host/cli/import_run.h"

#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "frame/text.h"
#include "host/cli/display_text.h"
#include "host/cli/progress.h"

namespace qorhost {

namespace {

using qorcred::MessageButton;
using qorcred::MessageStyle;

constexpr std::size_t kWorthABar = 1000;  // lines from which an import takes noticeable time

/// A message on one line, without the middle when a huge cell stands there.
std::string Shortened(std::string_view text) {
  constexpr std::size_t kPart = 200;
  if (qorcred::Utf16Length(text) <= 2 * kPart) {
    return Displayable(text);
  }
  return Displayable(qorcred::LeftUtf16(text, kPart)) + " ... " +
         Displayable(qorcred::RightUtf16(text, kPart));
}

std::string Counted(std::size_t count, std::string_view one, std::string_view many) {
  return fmt::format("{} {}", count, count == 1 ? one : many);
}

}  // namespace

bool WentWell(bool succeeded, const OperationLog& log) {
  return succeeded && log.refusals == 0 && log.failures.empty();
}

ImportRun::ImportRun(StoreSession& session, const GlobalOptions& global,
                     const ImportOptions& options)
    : session_(session), global_(global), options_(options) {
  session_.OnMessage([this](std::string_view text, MessageStyle style, std::string_view) {
    if (style != MessageStyle::kQuestion) {
      ++session_.log().refusals;
      messages_.emplace_back(text);
      return MessageButton::kOk;
    }
    ++session_.log().questions;
    if (global_.answer.value_or(false)) {
      return MessageButton::kYes;
    }
    messages_.push_back(
        fmt::format("{} (answered No{})", text, global_.answer ? "" : ": --yes answers Yes"));
    return MessageButton::kNo;
  });
}

ExitStatus ImportRun::Run(std::int32_t unitKey, ImportFile& file, const LineEntry& enter,
                          const ImportedKind& kind, Console& console) {
  SqlSession& sql = session_.sql();
  // Every save asks how many codes the unit has.
  const std::unique_ptr<KeptCounts> counts = sql.units().KeepCounts();
  Undoable all(sql.outerTransaction());
  counts->Follow(unitKey);
  EnterAll(file, enter, console);
  if (options_.dryRun) {
    all.Undo();
  } else {
    all.Keep();
  }
  Report(kind, console);
  if (failed_) {
    return ExitStatus::kFailure;
  }
  return refused_ == 0 ? ExitStatus::kDone : ExitStatus::kRefused;
}

void ImportRun::EnterAll(ImportFile& file, const LineEntry& enter, Console& console) {
  std::unique_ptr<ProgressBar> bar;
  if (console.environment.errorIsTerminal && !session_.traced() && file.lineCount() >= kWorthABar) {
    bar = std::make_unique<ProgressBar>(console.err, static_cast<std::int64_t>(file.lineCount()));
  }
  ImportLine line;
  while (file.Next(line)) {
    EnterLine(line, enter);
    if (bar != nullptr) {
      bar->Advance();
    }
  }
}

void ImportRun::EnterLine(const ImportLine& line, const LineEntry& enter) {
  session_.log().Clear();
  messages_.clear();
  if (!line.fault().empty()) {
    messages_.push_back(line.fault());
    Refuse(line.number());
    return;
  }
  SqlSession& sql = session_.sql();
  ImportNotes notes;
  {
    Undoable one(sql.savepoint());
    if (TryLine(line, enter, notes)) {
      one.Keep();
      ++done_;
      for (const std::string& note : notes) {
        Remember(line.number(), false, note);
      }
      return;
    }
    one.Undo();
  }
  if (!sql.inTransaction()) {
    throw FailureError(fmt::format(
        "line {}: {}; the store gave up there and nothing was imported", line.number(),
        session_.log().failures.empty() ? "not stored" : session_.log().failures.front()));
  }
  Refuse(line.number());
}

bool ImportRun::TryLine(const ImportLine& line, const LineEntry& enter, ImportNotes& notes) {
  try {
    return WentWell(enter(line, notes), session_.log());
  } catch (const UsageError& error) {
    messages_.emplace_back(error.what());
  } catch (const RefusedError& error) {
    messages_.emplace_back(error.what());
  } catch (const FailureError& error) {
    session_.log().failures.emplace_back(error.what());
  }
  return false;
}

void ImportRun::Refuse(std::size_t line) {
  ++refused_;
  for (const std::string& failure : session_.log().failures) {
    failed_ = true;
    messages_.push_back(failure);
  }
  if (messages_.empty()) {
    messages_.emplace_back("it was not stored");
  }
  Remember(line, true, fmt::format("{}", fmt::join(messages_, " ")));
}

void ImportRun::Remember(std::size_t line, bool refused, std::string_view text) {
  remarks_.push_back({line, refused, &*texts_.insert(Shortened(text)).first});
}

void ImportRun::Report(const ImportedKind& kind, Console& console) const {
  for (const Remark& remark : remarks_) {
    if (!remark.refused || !global_.json) {
      console.err << "qorhost: line " << remark.line << ": " << *remark.text << '\n';
    }
  }
  if (global_.json) {
    ReportAsJson(console);
    return;
  }
  const std::string done = Counted(done_, kind.one, kind.many);
  if (options_.dryRun) {
    console.out << fmt::format("Would import {}, {} refused. Nothing was written.\n", done,
                               Counted(refused_, "line", "lines"));
  } else {
    console.out << fmt::format("Imported {}, {} refused.\n", done,
                               Counted(refused_, "line", "lines"));
  }
}

void ImportRun::ReportAsJson(Console& console) const {
  nlohmann::ordered_json lines = nlohmann::ordered_json::array();
  for (const Remark& remark : remarks_) {
    if (remark.refused) {
      lines.push_back({{"line", remark.line}, {"message", *remark.text}});
    }
  }
  const nlohmann::ordered_json report{{"done", done_}, {"refused", refused_}, {"lines", lines}};
  console.out << report.dump(2) << '\n';
}

}  // namespace qorhost
