// Making a store at the command line.
#pragma once

#include <functional>
#include <string_view>

#include "host/cli/command_session.h"
#include "host/desks/store_file.h"

namespace qorhost {

/// What --force, --dry-run and --distributed say of it.
struct NewStorePlace {
  bool force = false;                 ///< replace a store that is there
  bool trial = false;                 ///< make it, and do not put it in its place
  bool distributed = false;           ///< of --distributed: spread its tables over several servers
  StoreRoles roles = {};              ///< of --operators and --administrators
  std::string_view namedBy = "--db";  ///< the option that names the place
};

/// Puts a store in the place that `global` names: empty, with the demo building, or with what
/// `contents` stores. Raises RefusedError that says what to do about what stands there.
void PutNewStore(const GlobalOptions& global, const NewStorePlace& place, bool demo,
                 const std::function<void(SqlSession&)>& contents, Console& console);

}  // namespace qorhost
