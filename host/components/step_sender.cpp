#include "host/components/step_sender.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "host/store/method_table.h"
#include "host/store/store_connection.h"

namespace qorhost {

namespace {

using qorcred::Arguments;
using qorcred::Value;

struct Subject {
  SqlSession& session;
  std::int32_t unitKey;
  std::int32_t rid;
};

Subject SubjectIn(Arguments arguments) {
  return {SessionOf(arguments[0]), qorcred::ToLong(arguments[1]), qorcred::ToLong(arguments[2])};
}

std::string CodeAtUnit(const Subject& subject) {
  return subject.session.steps().CodeAtUnit(subject.unitKey, subject.rid);
}

void QueueOnce(const Subject& subject, std::string_view kind, std::string_view code = {}) {
  subject.session.steps().QueueOnce(subject.unitKey, kind, subject.rid, code);
}

void WithdrawUnsent(const Subject& subject) {
  for (const std::string_view kind : {step::kProgramDirectoryCode, step::kChangeDirectoryCode}) {
    subject.session.steps().Withdraw(subject.unitKey, kind, subject.rid);
  }
}

}  // namespace

Value StepSenderObject::Invoke(std::string_view member, qorcred::InvokeKind kind,
                               Arguments arguments) {
  using Self = StepSenderObject;
  static constexpr std::array kMethods{
      Method<Self>{"pbGenDirCodePrgStep", 3, 3, &Self::ProgramCode},
      Method<Self>{"pbGenChgDirCodePrgStep", 3, 3, &Self::ChangeCode},
      Method<Self>{"pbGenDelDirCodePrgStep", 3, 3, &Self::DeleteCode},
      Method<Self>{"pbDeleteDirCodePrgStep", 3, 3, &Self::WithdrawCode},
      Method<Self>{"pbDeleteDirCodePrgStepExists", 3, 3, &Self::DeletionExists},
  };
  return RunMethod<Self>(*this, "The step sender", kMethods, member, kind, arguments);
}

Value StepSenderObject::ProgramCode(Arguments arguments) {
  const Subject subject = SubjectIn(arguments);
  QueueOnce(subject, step::kProgramDirectoryCode);
  return {};
}

Value StepSenderObject::ChangeCode(Arguments arguments) {
  const Subject subject = SubjectIn(arguments);
  QueueOnce(subject, step::kChangeDirectoryCode, CodeAtUnit(subject));
  return {};
}

Value StepSenderObject::DeleteCode(Arguments arguments) {
  const Subject subject = SubjectIn(arguments);
  WithdrawUnsent(subject);
  QueueOnce(subject, step::kDeleteDirectoryCode, CodeAtUnit(subject));
  return {};
}

Value StepSenderObject::WithdrawCode(Arguments arguments) {
  WithdrawUnsent(SubjectIn(arguments));
  return {};
}

Value StepSenderObject::DeletionExists(Arguments arguments) {
  SqlSession& session = SessionOf(arguments[0]);
  const std::int32_t unitKey = qorcred::ToLong(arguments[1]);
  const std::string code = qorcred::NumberText(qorcred::NumericValue(arguments[2]));
  return {session.steps().IsDeletionPending(unitKey, code)};
}

}  // namespace qorhost
