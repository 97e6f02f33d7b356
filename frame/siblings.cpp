#include "frame/siblings.h"

#include <array>
#include <string>
#include <utility>

#include "frame/convert.h"

namespace qorcred {

namespace {

constexpr Passing kUnitStatus[] = {Passing::kVariable, Passing::kReadBack, Passing::kVariable,
                                   Passing::kVariable, Passing::kVariable, Passing::kReadBack,
                                   Passing::kReadBack, Passing::kReadBack, Passing::kVariable};

std::int16_t CountOf16Bits(const Value& count) {
  return IsEmptyText(count) ? std::int16_t{0} : ToInteger(count);
}

std::int32_t CountOf32Bits(const Value& count) {
  return IsEmptyText(count) ? 0 : ToLong(count);
}

}  // namespace

std::int32_t TenantComponent::NextLinkCode(std::int32_t unitKey,
                                           const ObjectRef& connection) const {
  return ToLong(
      Call(object(), "pbGetMaxGroupIDOrLinkID", Variable(unitKey), Variable(connection), true));
}

void TenantComponent::TakeLinkCode(std::int32_t unitKey, const ObjectRef& connection) const {
  Call(object(), "pbIncrementMaxGroupIDOrLinkIDByOne", Variable(unitKey), Variable(connection),
       true, 1);
}

std::int32_t TenantComponent::TenantId(const ObjectRef& connection, std::int32_t unitKey,
                                       std::int32_t rid) const {
  return ToLong(
      Call(object(), "pbGetTenantID", Variable(connection), Variable(unitKey), Variable(rid)));
}

void TenantComponent::CreateProgramSteps(const ObjectRef& connection, std::int32_t unitKey,
                                         std::int32_t tenant) const {
  Call(object(), "pvCreateProgramSteps", Variable(connection), Variable(unitKey), Variable(tenant));
}

std::int16_t CodeCounts::Sum16() const {
  const std::int32_t first = CountOf16Bits(credentials);
  const std::int32_t second = CountOf16Bits(entryCodes);
  const std::int32_t third = CountOf16Bits(directoryCodes);
  return RoundToInteger(RoundToInteger(first + second) + third);
}

std::int32_t CodeCounts::Sum32() const {
  const double first = CountOf32Bits(credentials);
  const double second = CountOf32Bits(entryCodes);
  const double third = CountOf32Bits(directoryCodes);
  return RoundToLong(RoundToLong(first + second) + third);
}

CodeCounts ApplicationComponent::CodesInUse(const ObjectRef& connection,
                                            std::int32_t& unitKey) const {
  // Connection, unit key, one 16-bit integer and six texts, all but the first filled in by the
  // component; the sixth, seventh and eighth are the counts.
  std::array<Value, 9> status{Value(connection), Value(unitKey), Value(std::int16_t{0}),
                              Value(""),         Value(""),      Value(""),
                              Value(""),         Value(""),      Value("")};
  object().Invoke("pbGetUnitStatus", InvokeKind::kCall, {status, kUnitStatus});
  unitKey = ToLong(status[1]);
  return {std::move(status[5]), std::move(status[6]), std::move(status[7])};
}

bool StepSender::IsDeletionPending(const ObjectRef& connection, std::int32_t& unitKey,
                                   double code) const {
  Value asked(code);
  return ToBoolean(
      Send("pbDeleteDirCodePrgStepExists", connection, unitKey, asked, Passing::kValue));
}

void StepSender::SendAndReadRow(std::string_view step, const ObjectRef& connection,
                                std::int32_t& unitKey, std::int32_t& rid) const {
  Value row(rid);
  Send(step, connection, unitKey, row, Passing::kReadBack);
  rid = ToLong(row);
}

Value StepSender::Send(std::string_view operation, const ObjectRef& connection,
                       std::int32_t& unitKey, Value& subject, Passing subjectPassing) const {
  const std::array passing{Passing::kVariable, Passing::kReadBack, subjectPassing};
  std::array<Value, 3> arguments{Value(connection), Value(unitKey), std::move(subject)};
  Value answer = object().Invoke(operation, InvokeKind::kCall, {arguments, passing});
  unitKey = ToLong(arguments[1]);
  subject = std::move(arguments[2]);
  return answer;
}

}  // namespace qorcred
