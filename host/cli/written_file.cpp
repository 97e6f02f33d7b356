#include "host/cli/written_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "host/desks/store_file.h"
#include "host/files/whole_file.h"

namespace qorhost {

namespace {

bool IsThere(const std::string& file) {
  std::error_code unreachable;
  return std::filesystem::exists(std::filesystem::symlink_status(file, unreachable));
}

}  // namespace

void RequireNoTraceIn(const std::string& file, std::string_view option,
                      const GlobalOptions& global) {
  if (global.traceFile && AreOneFile(*global.traceFile, file)) {
    throw UsageError(
        fmt::format("{} and --trace-file name the same file: name another one", option));
  }
}

void WriteUnlessTried(const FileToWrite& file, std::string_view advice,
                      const std::function<void(Standing)>& write) {
  if (!file.trial) {
    AdvisingOnExisting(advice, [&] { write(StandingOf(file.force)); });
  } else if (!file.force && file.place != kStandardStream && IsThere(file.place)) {
    throw RefusedError(fmt::format("'{}' is there already: {}", file.place, advice));
  }
}

void WriteFileOfTo(const FileToWrite& file, const GlobalOptions& global,
                   const std::function<void(std::ostream&)>& print) {
  RequireNoTraceIn(file.place, "--to", global);
  WriteUnlessTried(file, kAdviceOnTo, [&](Standing existing) {
    WriteWholeFile(file.place, {existing, FilesOfStore(global.file)}, print);
  });
}

}  // namespace qorhost
