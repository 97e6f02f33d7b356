#include "host/files/desktop_file/desktop_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <utility>

#include "frame/text.h"
#include "host/files/desktop_file/desktop_text.h"
#include "host/files/desktop_file/reader_frames.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/desktop_file/reader_process.h"
#include "host/files/file_error.h"
#include "host/files/file_kind.h"

namespace qorhost {

namespace fs = std::filesystem;
using namespace desktop_file;

namespace {

void RequireCodePage(unsigned codePage) {
  if (codePage != 0 && !IsKnownCodePage(codePage)) {
    throw FileError(
        FileProblem::kUnusable,
        fmt::format("there is no code page {}: 1250 and 1252 are usual ones", codePage));
  }
}

/// A reader that was ended, by a limit or by what the file made of it.
[[noreturn]] void RefuseUnended(const ReaderOutput& output, const fs::path& file,
                                const DesktopReading& reading) {
  if (output.ranOutOfTime) {
    throw FileError(
        FileProblem::kUnusable,
        fmt::format("'{}' was not read within {} s: it is damaged or too large", file.string(),
                    std::chrono::duration_cast<std::chrono::seconds>(reading.longest).count()));
  }
  if (output.ranOutOfProcessorTime) {
    throw FileError(FileProblem::kUnusable,
                    fmt::format("'{}' was not read within {} s of processor time: it is damaged or "
                                "too large",
                                file.string(), reading.processorTime.count()));
  }
  if (output.ranOutOfMemory) {
    throw FileError(FileProblem::kUnusable,
                    fmt::format("'{}' was not read within {} MB of memory: it is damaged or too "
                                "large",
                                file.string(), reading.mebibytes));
  }
  throw FileError(FileProblem::kUnusable,
                  fmt::format("'{}' is damaged: it cannot be read; have the program that it comes "
                              "from repair it, or take an older copy",
                              file.string()));
}

/// The reader looks at this itself, and is not trusted more than its file.
void RequireAllRows(const DesktopFile& read, const DesktopReading& reading) {
  for (const DesktopTable& table : read.tables) {
    const bool isWanted =
        std::any_of(reading.wanted.begin(), reading.wanted.end(), [&](const std::string& name) {
          return qorcred::UpperAscii(name) == qorcred::UpperAscii(table.name);
        });
    if (isWanted && table.rows.size() != table.count) throw BrokenFrames();
  }
}

}  // namespace

bool IsDesktopFile(const fs::path& file) {
  if (KindOf(file, Links::kAreFollowed) != FileKind::kFile) return false;
  std::string begin(kMagicLength, '\0');
  std::ifstream(file, std::ios::binary).read(begin.data(), kMagicLength);
  return IsMagic(begin);
}

DesktopFile ReadDesktopFile(const fs::path& file, const DesktopReading& reading) {
  RequireCodePage(reading.codePage);
  const ReaderOutput output = RunReader(file, reading);
  if (!output.endedWell) {
    RefuseUnended(output, file, reading);
  }
  try {
    DesktopFile read = TablesIn(output.frames, file.string(), reading);
    RequireAllRows(read, reading);
    return read;
  } catch (const BrokenFrames&) {
    RefuseUnended(output, file, reading);
  }
}

}  // namespace qorhost
