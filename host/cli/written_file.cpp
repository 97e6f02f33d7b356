#include "host/cli/written_file.h"

#include <fmt/format.h>

#include "host/desks/store_file.h"
#include "host/files/whole_file.h"

namespace qorhost {

void RequireNoTraceIn(const std::string& file, std::string_view option,
                      const GlobalOptions& global) {
  if (global.traceFile && AreOneFile(*global.traceFile, file)) {
    throw UsageError(
        fmt::format("{} and --trace-file name the same file: name another one", option));
  }
}

void WriteUnlessTried(const FileToWrite& file, std::string_view advice, const GlobalOptions& global,
                      const std::function<void(Standing)>& write) {
  AdvisingOnExisting(advice, [&] {
    if (!file.trial) {
      write(StandingOf(file.force));
    } else if (file.place != kStandardStream) {
      RequirePlace(file.place, {StandingOf(file.force), FilesOfStore(global.file)});
    }
  });
}

void WriteFileOfTo(const FileToWrite& file, const GlobalOptions& global,
                   const std::function<void(std::ostream&)>& print) {
  RequireNoTraceIn(file.place, "--to", global);
  WriteUnlessTried(file, kAdviceOnTo, global, [&](Standing existing) {
    WriteWholeFile(file.place, {existing, FilesOfStore(global.file)}, print);
  });
}

}  // namespace qorhost
