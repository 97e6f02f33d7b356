#include "host/cli/command_run.h"

#include <fmt/format.h>

#include <exception>
#include <new>
#include <ostream>

#include "frame/runtime_error.h"
#include "host/cli/operator.h"
#include "host/cli/written_file.h"
#include "host/desks/desk_error.h"
#include "host/desks/outcome.h"
#include "host/desks/store_file.h"
#include "host/files/file_error.h"
#include "host/files/whole_file.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

ExitStatus StatusOf(FileProblem problem) {
  switch (problem) {
    case FileProblem::kHeadings:
    case FileProblem::kUnknownHeadings:
      return ExitStatus::kUsage;
    case FileProblem::kUnusable:
    case FileProblem::kExists:
    case FileProblem::kOccupied:
    case FileProblem::kLikeUtf16:
    case FileProblem::kNotUtf8:
      return ExitStatus::kRefused;
    case FileProblem::kUnreachable:
      break;
  }
  return ExitStatus::kFailure;
}

/// Runs the command. With --trace-file its trace is written, also that of a command that fails.
ExitStatus RunTraced(const CommandRun& run, const GlobalOptions& global, Console& console) {
  console.quiet = global.quiet;
  if (!global.traceFile) {
    return run(console);
  }
  const Writing writing{StandingOf(global.replaceTraceFile), FilesOfStore(global.file)};
  ExitStatus status = ExitStatus::kDone;
  std::exception_ptr failure;
  try {
    WriteWholeFile(*global.traceFile, writing, [&](std::ostream& file) {
      console.traceFile = &file;
      try {
        status = run(console);
      } catch (...) {
        failure = std::current_exception();
      }
      console.traceFile = nullptr;
    });
  } catch (const FileError& unwritten) {
    if (console.stored) {
      throw FailureError(fmt::format("{}; the change is stored", unwritten.what()));
    }
    if (failure != nullptr) {  // why the command ended says more
      console.err << fmt::format("qorhost: {}\n", Displayable(unwritten.what()));
      std::rethrow_exception(failure);
    }
    if (unwritten.problem() == FileProblem::kExists) {
      throw RefusedError(
          fmt::format("{}: name another trace file, or replace it with --force in "
                      "front of the command",
                      unwritten.what()));
    }
    throw;
  }
  if (failure != nullptr) {
    std::rethrow_exception(failure);
  }
  return status;
}

}  // namespace

Ended RunChosen(const CommandRun& run, const GlobalOptions& global, Console& console) {
  try {
    return {RunTraced(run, global, console)};
  } catch (const UsageError& error) {
    return {ExitStatus::kUsage, error.what(), error.field(), error.value()};
  } catch (const RefusedError& error) {
    return {ExitStatus::kRefused, error.what()};
  } catch (const FileError& error) {
    return {StatusOf(error.problem()), error.what()};
  } catch (const std::bad_alloc&) {
    return {ExitStatus::kFailure, "out of memory"};
  } catch (const qorcred::RuntimeError& error) {
    // It was written past the store's own checks.
    return {ExitStatus::kFailure,
            error.what() == console.told
                ? std::string()
                : fmt::format("the store holds a value that cannot be used here: {} (error {})",
                              error.what(), static_cast<int>(error.number()))};
  } catch (const std::exception& error) {
    return {StatusOf(EndingBy(error)),
            error.what() == console.told ? std::string() : std::string(error.what())};
  }
}

}  // namespace qorhost
