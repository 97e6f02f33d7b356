#include "host/store/postgres/pipeline.h"

#include <fmt/format.h>
#include <libpq-fe.h>

#include <utility>

#include "host/store/postgres/engine_error.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr const char* kSending = "The statement failed";

bool SendText(pg_conn* handle, const char* text) {
  return PQsendQueryParams(handle, text, 0, nullptr, nullptr, nullptr, nullptr, 0) != 0;
}

/// The steps of one message, on their way there and back.
class Message {
 public:
  Message(pg_conn* handle, StatementNames& names, std::span<Step> steps, const Watch& watch,
          const std::function<void()>& answered)
      : handle_(handle),
        names_(names),
        steps_(steps),
        reader_(handle, watch),
        answeredOne_(answered) {}

  void Send() {
    bool isSent = PQenterPipelineMode(handle_) != 0;
    for (Step& step : steps_) {
      isSent = isSent && SendOne(step);
    }
    if (!isSent || PQpipelineSync(handle_) == 0) {
      throw LostError(handle_, kSending);
    }
  }

  Failure Read() {
    for (Step* const step : answered_) {
      if (!isLost()) {
        ReadAnswersTo(step);
        if (answeredOne_) {
          answeredOne_();
        }
      }
    }
    if (!isLost()) {
      (void)reader_.Next();  // the end of the message
    }
    PQexitPipelineMode(handle_);
    if (failure_.any()) {
      // Whether the server has read a statement before it refused one is not worth asking.
      for (Step& step : steps_) {
        if (step.prepared != nullptr) {
          step.prepared->name.clear();
        }
      }
    }
    failure_.isCutShort = reader_.isCutShort();
    return std::move(failure_);
  }

 private:
  bool SendOne(Step& step) {
    if (step.prepared == nullptr) {
      answered_.push_back(&step);
      return SendText(handle_, step.text);
    }
    PreparedText& text = *step.prepared;
    if (text.name.empty() || text.connection != names_.connection) {
      text.name = fmt::format("s{}", ++names_.given);
      text.connection = names_.connection;
      answered_.push_back(nullptr);
      if (PQsendPrepare(handle_, text.name.c_str(), text.sql.c_str(), 0, nullptr) == 0) {
        return false;
      }
    }
    answered_.push_back(&step);
    return PQsendQueryPrepared(handle_, text.name.c_str(), step.values.count(),
                               step.values.pointers(), nullptr, nullptr, 0) != 0;
  }

  /// The answers to one command end with none; `step` is null for a text that is only read.
  void ReadAnswersTo(Step* step) {
    if (step != nullptr && step->takeRow) {
      PQsetSingleRowMode(handle_);
    }
    for (Result answer = reader_.Next(); answer.get() != nullptr; answer = reader_.Next()) {
      const ExecStatusType status = PQresultStatus(answer.get());
      if (status == PGRES_SINGLE_TUPLE && step != nullptr) {
        Take(*step, answer);
      } else if (status == PGRES_FATAL_ERROR) {
        if (failure_.refusal.get() == nullptr) {
          failure_.refusal = std::move(answer);
        }
      } else if (step != nullptr && status != PGRES_PIPELINE_ABORTED) {
        step->answer = std::move(answer);
      }
    }
  }

  void Take(const Step& step, const Result& row) {
    if (failure_.raised != nullptr) {
      return;
    }
    try {
      step.takeRow(row);
    } catch (...) {
      failure_.raised = std::current_exception();
      reader_.End();
    }
  }

  [[nodiscard]] bool isLost() const { return PQstatus(handle_) != CONNECTION_OK; }

  pg_conn* handle_;
  StatementNames& names_;
  std::span<Step> steps_;
  AnswerReader reader_;
  const std::function<void()>& answeredOne_;
  std::vector<Step*> answered_;  // command by command, as they were sent
  Failure failure_;
};

}  // namespace

SentTexts::SentTexts(std::span<const Sent> values) {
  texts_.reserve(values.size());
  for (const Sent& value : values) {
    if (value && value->find('\0') != std::string_view::npos) {
      throw StoreError(
          "The statement failed: a text holds the character NUL, which a server cannot keep");
    }
    texts_.emplace_back(value ? std::optional<std::string>(*value) : std::nullopt);
  }
}

const char* const* SentTexts::pointers() {
  pointers_.clear();
  for (const std::optional<std::string>& text : texts_) {
    pointers_.push_back(text ? text->c_str() : nullptr);
  }
  return pointers_.data();
}

Failure RunTogether(pg_conn* handle, StatementNames& names, std::span<Step> steps,
                    const Watch& watch, const std::function<void()>& answered) {
  Message message(handle, names, steps, watch, answered);
  message.Send();
  return message.Read();
}

}  // namespace qorhost::postgres
