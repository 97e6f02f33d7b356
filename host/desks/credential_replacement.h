// One credential in the place of another one, which was lost.
#pragma once

#include <cstdint>
#include <string>

#include "host/desks/outcome.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What is replaced by what, as people name credentials: by the number, by the entry of the list as
/// in "Transmitter-301" or by the row as in "rid:17". A number alone as the successor means the
/// credential of the lost one's own kind (its type, facility code and, of a transmitter, other
/// codes): the stored one, or else a new one that is issued.
struct CredentialExchange {
  std::string lost;
  std::string successor;
  bool keepLost = false;  ///< it stays stored, held by nobody
};

/// A credential as the list shows it.
struct NamedCredential {
  std::string entry;  ///< "Transmitter-301"
  std::int32_t rid = 0;
};

struct ReplacedCredential : Outcome {
  NamedCredential lost;
  NamedCredential successor;
  std::string holder;   ///< who holds the successor now; "" when nobody held the lost one
  bool issued = false;  ///< the successor is new
};

/// The successor gets the lost one's door and its place with the tenant who holds it, whose step is
/// queued; the lost one is deleted first, so that a full unit has room for a new one. What nobody
/// holds is replaced likewise, without a step. One unit of work; of a trial nothing is stored.
/// Raises InputFault for credentials that are not there or are the same, and RefusedError when
/// somebody holds the successor, several hold the lost one, or none like it can be issued.
[[nodiscard]] ReplacedCredential ReplaceCredential(DeskSession& session, std::int32_t unitKey,
                                                   const CredentialExchange& replacement,
                                                   Trial trial);

}  // namespace qorhost
