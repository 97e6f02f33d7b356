#include "host/desks/moving_in/spilled_cells.h"

#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "host/files/desktop_file/nameless_file.h"
#include "host/files/desktop_file/reader_message.h"
#include "host/files/file_error.h"

namespace qorhost {

namespace {

using desktop_file::Payload;
using desktop_file::PayloadReader;

constexpr std::string_view kPurpose = "keep what is odd in the file until it is reported";
constexpr std::size_t kLengthSize = 4;

[[noreturn]] void CannotReadBack() {
  throw FileError(FileProblem::kUnreachable,
                  "cannot read back what is odd in the file: try it again");
}

std::string BytesOf(const SettledCell& cell) {
  Payload payload;
  payload.AddByte(static_cast<std::uint8_t>(cell.settlement));
  payload.AddLarge(cell.row);
  for (const std::string* text : {&cell.table, &cell.identity, &cell.column, &cell.kind,
                                  &cell.value, &cell.reason, &cell.instead}) {
    payload.AddText(*text);
  }
  Payload whole;
  whole.AddText(payload.bytes());
  return whole.bytes();
}

SettledCell CellOf(std::string_view bytes) {
  PayloadReader payload(bytes);
  SettledCell cell;
  cell.settlement = static_cast<Settlement>(payload.Byte());
  cell.row = payload.Large();
  for (std::string* text : {&cell.table, &cell.identity, &cell.column, &cell.kind, &cell.value,
                            &cell.reason, &cell.instead}) {
    *text = payload.Text();
  }
  if (!payload.IsAtItsEnd()) CannotReadBack();
  return cell;
}

void ReadAt(int file, std::uint64_t begin, char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t read = pread(file, bytes, count, static_cast<off_t>(begin));
    if (read < 0 && errno == EINTR) continue;
    if (read <= 0) CannotReadBack();
    bytes += read;
    begin += static_cast<std::uint64_t>(read);
    count -= static_cast<std::size_t>(read);
  }
}

}  // namespace

SpilledCells::SpilledCells() : file_(desktop_file::NamelessFile(kPurpose)) {}

std::uint8_t SpilledCells::TableOf(std::string_view name) {
  const auto found = std::find(tables_.begin(), tables_.end(), name);
  const auto place = static_cast<std::uint8_t>(found - tables_.begin());
  if (found == tables_.end()) tables_.emplace_back(name);
  return place;
}

void SpilledCells::Add(const SettledCell& cell) {
  constexpr std::size_t kRoom = std::size_t{1} << 16;
  const std::string bytes = BytesOf(cell);
  places_.push_back(
      {end_, static_cast<std::uint32_t>(cell.row), TableOf(cell.table), cell.settlement});
  end_ += bytes.size();
  waiting_ += bytes;
  if (waiting_.size() >= kRoom) Flush();
}

void SpilledCells::Flush() {
  desktop_file::AppendAll(file_.number(), waiting_, kPurpose);
  waiting_.clear();
}

void SpilledCells::Sort(const std::vector<std::string_view>& tables) {
  Flush();
  std::vector<std::ptrdiff_t> orders;
  for (const std::string& table : tables_) {
    orders.push_back(std::find(tables.begin(), tables.end(), table) - tables.begin());
  }
  // Where they begin is the order in which they were added.
  std::sort(places_.begin(), places_.end(), [&](const Place& one, const Place& other) {
    if (one.table != other.table) return orders[one.table] < orders[other.table];
    return std::pair(one.row, one.begin) < std::pair(other.row, other.begin);
  });
}

SettledCell SpilledCells::At(std::size_t index) const {
  const std::uint64_t begin = places_[index].begin;
  std::string bytes(kLengthSize, '\0');
  ReadAt(file_.number(), begin, bytes.data(), kLengthSize);
  bytes.resize(PayloadReader(bytes).Number());
  ReadAt(file_.number(), begin + kLengthSize, bytes.data(), bytes.size());
  return CellOf(bytes);
}

}  // namespace qorhost
