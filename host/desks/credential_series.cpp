#include "host/desks/credential_series.h"

#include <fmt/format.h>

#include <memory>
#include <string_view>
#include <utility>

#include "host/desks/desk_error.h"
#include "host/desks/desk_series.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

using CredentialSeries = DeskSeries<CredentialDesk>;

CredentialSeries CredentialsIn(DeskSession& session, std::int32_t unitKey) {
  return CredentialSeries([&session, unitKey] {
    return std::make_unique<CredentialDesk>(session, unitKey, DeskScreen::kCredentials);
  });
}

WorkOrder OrderOnCredentials(std::int32_t unitKey, std::string_view verb, std::size_t count) {
  return {{unitKey}, fmt::format("{} {}", verb, Counted(count, "credential", "credentials")), {}};
}

std::string NameOf(const ShownCredential& credential) {
  return WithRid(credential.entry, credential.rid);
}

/// Raises RefusedError for a tenant who has lost one of them to another.
void RequireAllHeld(CredentialSeries& series, const std::vector<EditedCredential>& edited) {
  for (std::size_t at = 0; at < series.count(); ++at) {
    const ShownCredential now = series.At(at).Shown();
    const ShownCredential& meant = edited[at].changed.credential;
    if (now.tenant != meant.tenant) {
      throw RefusedError(fmt::format(
          "{} cannot hold all of them: a tenant has two credentials at most; nothing was changed",
          meant.tenant));
    }
  }
}

}  // namespace

SeveralOutcome EditCredentials(DeskSession& session, std::int32_t unitKey,
                               const std::vector<std::string>& names,
                               const CredentialChange& change, const Consent& consent,
                               std::vector<EditedCredential>& edited) {
  CredentialSeries series = CredentialsIn(session, unitKey);
  SeveralOperations operations;
  operations.begin = [&] {
    edited.clear();
    return series.Begin(names);
  };
  operations.run = [&](std::size_t at, OpenQuestions& questions) {
    CredentialDesk& desk = series.At(at);
    EnterChange(desk, change);
    const AssignmentLosses losses = desk.LossesOfSaving();
    const ShownCredential before = desk.Shown();
    if (const auto question = QuestionOf(losses, NameOf(before), before.tenant)) {
      questions.Add(NameOf(before), *question);
    }
    edited.push_back({desk.SaveEdited(), losses});
    return PartOutcome{WithoutFacts(edited.back().changed), NameOf(before)};
  };
  operations.end = [&] {
    if (change.tenant) {
      RequireAllHeld(series, edited);
    }
  };
  return RunSeveral(session, OrderOnCredentials(unitKey, "edit", names.size()), operations,
                    consent);
}

SeveralOutcome DeleteCredentials(DeskSession& session, std::int32_t unitKey,
                                 const std::vector<std::string>& names, const Consent& consent,
                                 std::vector<ShownCredential>& deleted) {
  CredentialSeries series = CredentialsIn(session, unitKey);
  SeveralOperations operations;
  operations.begin = [&] {
    deleted.clear();
    return series.Begin(names);
  };
  operations.run = [&](std::size_t at, OpenQuestions&) {
    CredentialDesk& desk = series.At(at);
    deleted.push_back(desk.Shown());
    return PartOutcome{desk.Delete(), NameOf(deleted.back())};
  };
  return RunSeveral(session, OrderOnCredentials(unitKey, "delete", names.size()), operations,
                    consent);
}

}  // namespace qorhost
