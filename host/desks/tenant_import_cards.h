// The cards in the lines of a file of tenants: those that the unit has, and those that are issued.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/desks/credential_desk.h"
#include "host/desks/credential_line.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

/// What is stored already, in the eyes of one line.
enum class StoredAlready : std::uint8_t {
  kTaken,    ///< is used as it is
  kChanged,  ///< becomes what the line says
  kRefused,  ///< is a mistake
};

/// In the place of a tenant's row: whoever holds a card, the line wants nothing of them.
inline constexpr std::int32_t kAnyHolder = -1;

/// Reads the unit's cards once, and keeps up with what the lines do. What a line has issued or
/// taken counts for the next ones with Keep() only: a refused line leaves nothing behind.
class TenantImportCards {
 public:
  /// The session and the file must live as long; the unit is written by nobody else.
  TenantImportCards(DeskSession& session, std::int32_t unitKey, const ImportFile& file,
                    const std::vector<TenantRow>& tenants, CredentialDefaults defaults);

  /// The row of the card in a slot of the line, 0 for none. One that is not stored is issued
  /// through the controller. `holder` is the row of the line's tenant, 0 for a new one, or
  /// kAnyHolder. Raises RefusedError, and RefusedLine where the controller says no.
  [[nodiscard]] std::int32_t Take(const ImportLine& line, std::size_t slot, std::int32_t holder,
                                  StoredAlready stored);
  /// The tenant holds the cards now; `described` is for people.
  void Hold(const TenantRow& tenant, const std::string& described);

  void Keep();
  void Drop();

 private:
  struct Card {
    std::int32_t rid = 0;
    std::int32_t type = 0;
    std::int32_t number = 0;
    std::int32_t facility = 0;
    std::array<std::int32_t, 3> ofTransmitter{};  // ID code, sequence and button
    std::optional<std::int32_t> door;
  };
  struct Holder {
    std::int32_t tenant = 0;
    std::string described;
  };
  struct Slot {
    std::size_t first = 0;
    std::size_t door = 0;
    std::size_t entry = 0;
    std::vector<FieldWord> words;
  };

  void ReadCards(const std::vector<TenantRow>& tenants);
  [[nodiscard]] std::int32_t TakeIn(const ImportLine& line, const Slot& slot, std::int32_t holder,
                                    StoredAlready stored);
  /// The stored card that a list calls so.
  [[nodiscard]] std::int32_t TakeListed(std::string_view entry, std::int32_t holder) const;
  [[nodiscard]] const Card* Find(const ImportLine& line, const Slot& slot) const;
  [[nodiscard]] bool Fits(const Card& card, const ImportLine& line, const Slot& slot,
                          std::int32_t type) const;
  void RequireFree(const Card& card, std::string_view given, std::int32_t holder,
                   std::string_view input) const;
  [[nodiscard]] const Card& Issue(const ImportLine& line, const Slot& slot);
  void OpenDoor(Card& card, std::string_view given);

  DeskSession& session_;
  std::int32_t unitKey_;
  CredentialDefaults defaults_;
  CredentialDesk desk_;
  ScreenSnapshot fresh_;  // the screen as every line finds it
  Subscription typeChosen_;
  std::array<Slot, kTenantCards> slots_;
  std::unordered_map<std::int32_t, std::vector<Card>> byNumber_;
  std::unordered_map<std::int32_t, Holder> holders_;  // by the card's row
  std::vector<Card> issued_;                          // by this line
  std::vector<std::pair<std::int32_t, Holder>> held_;
};

}  // namespace qorhost
