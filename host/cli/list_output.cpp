#include "host/cli/list_output.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <string_view>
#include <utility>

#include "frame/text.h"
#include "host/cli/written_file.h"
#include "host/desks/words.h"
#include "host/files/json_writer.h"
#include "host/terminal/display_text.h"

namespace qorhost {

namespace {

/// What a file's ending says of its format.
constexpr std::array kEndings{std::pair<std::string_view, std::string_view>{".html", "html"},
                              std::pair<std::string_view, std::string_view>{".htm", "html"},
                              std::pair<std::string_view, std::string_view>{".csv", "csv"},
                              std::pair<std::string_view, std::string_view>{".json", "json"},
                              std::pair<std::string_view, std::string_view>{".txt", "table"}};

std::string FormatOfFile(const std::string& file) {
  const std::string ending = std::filesystem::path(file).extension().string();
  for (const auto& [known, format] : kEndings) {
    if (qorcred::CompareIgnoringCase(ending, known) == 0) {
      return std::string(format);
    }
  }
  if (qorcred::CompareIgnoringCase(ending, ".pdf") == 0) {
    throw UsageError(
        fmt::format("--to '{}': no PDF is written here: write a page with a name that ends in "
                    ".html, and save it as a PDF from a browser's print dialogue "
                    "(docs/printing.md)",
                    file));
  }
  throw UsageError(
      fmt::format("--to '{}': say what to write with --format, or name a file that ends in .html, "
                  ".csv, .json or .txt",
                  file));
}

}  // namespace

std::string FormatOf(const GlobalOptions& global, const OutputOptions& output) {
  if (global.json && output.format && *output.format != "json") {
    throw UsageError(fmt::format("--json and --format {} exclude each other", *output.format));
  }
  if (global.json) {
    return "json";
  }
  if (output.format) {
    return *output.format;
  }
  return output.toFile() ? FormatOfFile(output.to) : "table";
}

void PrintTo(const GlobalOptions& global, const OutputOptions& output, std::size_t rows,
             Console& console, const std::function<void(std::ostream&)>& print) {
  if (!output.toFile()) {
    print(console.out);
    return;
  }
  WriteFileOfTo({output.to, output.force}, global, print);
  if (global.json || output.format == "json") {
    PrintJsonObject(console.out, {{"rows", CountCell(rows)}, {"file", output.to}});
  } else {
    console.Remarks() << fmt::format("Wrote {} to {}.\n", Counted(rows, "row", "rows"),
                                     Displayable(output.to));
  }
}

}  // namespace qorhost
