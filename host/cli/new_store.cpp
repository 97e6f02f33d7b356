#include "host/cli/new_store.h"

#include <fmt/format.h>

#include <string>

#include "host/cli/operator.h"
#include "host/cli/written_file.h"
#include "host/files/file_error.h"

namespace qorhost {

void PutNewStore(const GlobalOptions& global, const NewStorePlace& place, bool demo,
                 const std::function<void(SqlSession&)>& contents, Console& console) {
  const auto asks = [&](const std::string& found) {
    return Operator(console, global.answer, TrialOf(place.trial))
        .Asks(found + ". Replace it all the same?");
  };
  Replaced replaced = Replaced::kIsGone;
  const std::string another = fmt::format("name another file with {}", place.namedBy);
  try {
    AdvisingOnExisting(another + ", or replace it with --force", [&] {
      replaced = PutStore(global.file,
                          {demo, console.environment.clock, console.environment.author,
                           TrialOf(place.trial), contents, place.distributed, place.roles},
                          StandingOf(place.force), PatienceOf(global, console), asks);
    });
  } catch (const DoubtfulStore& doubtful) {
    throw RefusedError(fmt::format("{}: {}, or say --yes as well", doubtful.what(), another));
  } catch (const ForeignFile& foreign) {
    throw RefusedError(fmt::format("{}: {}, or move it away", foreign.what(), another));
  } catch (const FileError& failure) {
    if (failure.problem() != FileProblem::kOccupied) {
      throw;
    }
    throw RefusedError(fmt::format("{}: name a file with {}", failure.what(), place.namedBy));
  }
  if (replaced == Replaced::kIsLeft) {
    console.err << "The store that was replaced could not be removed, for somebody goes on reading "
                   "it: the next 'init --force' does that, or, in the database, DROP SCHEMA "
                   "qorhost_replaced, desktop_replaced CASCADE\n";
  }
}

}  // namespace qorhost
