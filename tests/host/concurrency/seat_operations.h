// What the seats of a test do.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/host/concurrency/seat.h"

namespace qorhost::test {

[[nodiscard]] SeatOperation IssueCards(const std::string& first, const std::string& last);
[[nodiscard]] SeatOperation IssueCardsWithTenants(const std::string& first,
                                                  const std::string& last);
/// `tenant` as the list has it: "Berg Bea"; none takes the card from its holder.
[[nodiscard]] SeatOperation AssignCard(const std::string& card, std::optional<std::string> tenant);
[[nodiscard]] SeatOperation DeleteCard(const std::string& card);
[[nodiscard]] SeatOperation RenumberCard(const std::string& card, std::int32_t number);
[[nodiscard]] SeatOperation ImportCards(const std::string& lines);

/// Cards by their rows, as "3,4".
[[nodiscard]] SeatOperation DeleteInReport(const std::string& rids);

[[nodiscard]] SeatOperation AddCode(const std::string& code);
[[nodiscard]] SeatOperation EditPhone(const std::string& code, const std::string& phone);
/// Forwards the calls of a code to its own number, which the controller asks about.
[[nodiscard]] SeatOperation ForwardToItself(const std::string& code);
[[nodiscard]] SeatOperation RenumberCode(const std::string& code, const std::string& number);
[[nodiscard]] SeatOperation DeleteCode(const std::string& code);
[[nodiscard]] SeatOperation ImportCodes(const std::string& lines);
/// With a unit that has another phone for 102, no 103, and 300.
[[nodiscard]] SeatOperation MergeUnit();

[[nodiscard]] SeatOperation AddTenant(const std::string& lastName);
/// A tenant who is chosen by name gets another last name, another card, another directory code.
[[nodiscard]] SeatOperation NameTenant(const std::string& tenant, const std::string& lastName);
[[nodiscard]] SeatOperation GiveTenant(const std::string& tenant, const std::string& card);
[[nodiscard]] SeatOperation MoveTenant(const std::string& tenant, const std::string& code);
/// With the cards taken at once.
[[nodiscard]] SeatOperation EndTenant(const std::string& tenant);
[[nodiscard]] SeatOperation DeleteTenant(const std::string& tenant);
/// Of last name, directory code and card number.
[[nodiscard]] SeatOperation ImportPeople(const std::string& lines);
[[nodiscard]] SeatOperation ReplaceCard(const std::string& card, const std::string& successor);
[[nodiscard]] SeatOperation MarkStepsSent();
[[nodiscard]] SeatOperation NameSchedule(const std::string& schedule, const std::string& name);

// As a screen does it that has shown the row before: with what the row held then.

[[nodiscard]] SeatOperation NameShownDoor(std::int32_t door, const std::string& name);
[[nodiscard]] SeatOperation NameShownSchedule(std::int32_t schedule, const std::string& name);
[[nodiscard]] SeatOperation DeleteShownSchedule(std::int32_t schedule);
[[nodiscard]] SeatOperation NameShownUnit(const std::string& name);
[[nodiscard]] SeatOperation SetDigitsOfShownUnit(const std::string& codeDigits);
[[nodiscard]] SeatOperation DeleteShownUnit();

[[nodiscard]] SeatOperation WriteByHand(const std::string& statement);
/// Takes an entry of the audit back.
[[nodiscard]] SeatOperation UndoEntry(std::int64_t entry);
/// The latest of the seat's unit, whosever it is.
[[nodiscard]] SeatOperation UndoLatest();

struct NamedOperation {
  std::string name;  ///< in letters alone
  SeatOperation operation;
};

/// One of each kind, all of which change a new building in which FirstEntry() was done before.
[[nodiscard]] std::vector<NamedOperation> OperationsOfEveryKind();
/// Leaves the entry 1, which one of them takes back.
[[nodiscard]] SeatOperation FirstEntry();

}  // namespace qorhost::test
