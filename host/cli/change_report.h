// What a command has changed, as the one object that programs read of every change.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"
#include "host/files/json_writer.h"

namespace qorhost {

/// A thing that was added, changed or deleted.
struct TouchedThing {
  std::string_view type;  ///< "credential", "tenant", "directory code", "unit", ...
  qorcred::Value id;      ///< what names it: its row, a unit's key, a door's or schedule's number
  std::string name;
};

struct ChangeReport {
  qorcred::Value unit = qorcred::Null{};  ///< Null for what concerns the whole store
  bool trial = false;                     ///< everything in it only would be
  bool stored = false;                    ///< false for a trial, and for what was so before
  std::vector<TouchedThing> added;
  std::vector<TouchedThing> changed;
  std::vector<TouchedThing> deleted;
  JsonObject facts;  ///< the command's own, behind these
};

/// {"unit":2,"stored":true,"dry_run":false,"added":[...],"changed":[...],"deleted":[...],...}
void PrintChange(std::ostream& out, const ChangeReport& report);

}  // namespace qorhost
