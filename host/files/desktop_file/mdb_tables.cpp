#include "host/files/desktop_file/mdb_tables.h"

#include <mdbtools.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <utility>

namespace qorhost::desktop_file {

namespace {

constexpr int kOffsetMask = 0x1FFF;  // of a row's place; the bits above it are flags
constexpr int kRowIsElsewhere = 0x4000;
constexpr int kRowIsHidden = 0x8000;  // deleted, or moved here and found by its pointer
constexpr std::size_t kPointerSize = 4;
constexpr int kMostSteps = 8;  // from pointer to pointer
constexpr int kOwnerAt = 4;    // of a data page: the page of its table's definition
constexpr std::string_view kOwnerOfLongValues = "LVAL";

constexpr std::size_t kLongHeader = 12;
constexpr std::uint32_t kLongLength = 0x3FFFFFFF;
constexpr std::uint32_t kLongIsHere = 0x80000000;
constexpr std::uint32_t kLongIsOneRow = 0x40000000;

struct CloseHandle {
  void operator()(MdbHandle* handle) const { mdb_close(handle); }
};
using Handle = std::unique_ptr<MdbHandle, CloseHandle>;

struct FreeTable {
  void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TableDef = std::unique_ptr<MdbTableDef, FreeTable>;

std::uint32_t NumberAt(const void* bytes, std::size_t at) {
  std::array<unsigned char, 4> parts{};
  std::memcpy(parts.data(), static_cast<const char*>(bytes) + at, parts.size());
  return static_cast<std::uint32_t>(parts[0]) | static_cast<std::uint32_t>(parts[1]) << 8U |
         static_cast<std::uint32_t>(parts[2]) << 16U | static_cast<std::uint32_t>(parts[3]) << 24U;
}

bool SameLetters(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](unsigned char left, unsigned char right) {
                      return std::tolower(left) == std::tolower(right);
                    });
}

// ---- The file
// ------------------------------------------------------------------------------------

/// Looked at before the library is: it takes an empty file for an old one, and a cut one for whole.
void RequireDatabase(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  std::array<char, kMagicLength> begin{};
  in.read(begin.data(), begin.size());
  const auto count = static_cast<std::size_t>(in.gcount());
  if (count == 0) {
    throw UnreadableFile(ReadFault::kEmpty);
  }
  if (!IsMagic({begin.data(), count})) {
    throw UnreadableFile(ReadFault::kForeign);
  }
}

void RequireWholePages(const std::string& file, std::size_t pageSize) {
  std::ifstream in(file, std::ios::binary | std::ios::ate);
  if (static_cast<std::size_t>(in.tellg()) % pageSize != 0) {
    throw UnreadableFile(ReadFault::kCut);
  }
}

/// Whether the first page, which the library has just read and deciphered, tells of a password. It
/// opens such files all the same.
bool HasPassword(const MdbHandle& handle) {
  constexpr std::size_t kPasswordAt = 0x42;
  constexpr std::size_t kOldestSize = 20;
  constexpr std::size_t kSize = 40;
  constexpr std::size_t kMadeAt = 0x72;
  constexpr std::size_t kCipherAt = 0x299;  // the length of what tells how pages are encrypted
  const unsigned char* page = handle.pg_buf;
  const bool isOldest = handle.f->jet_version == MDB_VER_JET3;
  std::array<unsigned char, 4> mask{};
  if (!isOldest) {
    // Newer formats lay the day on which the file was made over the password.
    double made = 0;
    std::memcpy(&made, page + kMadeAt, sizeof made);
    const bool isDay = made > -1e9 && made < 1e9;
    const auto day = static_cast<std::uint32_t>(isDay ? static_cast<std::int32_t>(made) : 0);
    for (std::size_t at = 0; at < mask.size(); ++at) {
      mask[at] = static_cast<unsigned char>(day >> (8 * at));
    }
  }
  for (std::size_t at = 0; at < (isOldest ? kOldestSize : kSize); ++at) {
    if ((page[kPasswordAt + at] ^ mask[at % mask.size()]) != 0) {
      return true;
    }
  }
  return handle.f->jet_version >= MDB_VER_ACCDB_2007 &&
         (page[kCipherAt] != 0 || page[kCipherAt + 1] != 0);
}

Handle Open(const std::string& file) {
  RequireDatabase(file);
  Handle handle(mdb_open(file.c_str(), MDB_NOFLAGS));
  if (!handle) {
    throw UnreadableFile(ReadFault::kFormat);
  }
  if (HasPassword(*handle)) {
    throw UnreadableFile(ReadFault::kPassword);
  }
  RequireWholePages(file, static_cast<std::size_t>(handle->fmt->pg_size));
  return handle;
}

// ---- Rows
// ----------------------------------------------------------------------------------------

/// A cell as it was found: its bytes, or nothing for Null.
using RawCell = std::optional<std::string>;

/// The rows of one table, in the order of the file. A row that has grown stands elsewhere, and a
/// pointer in its place.
class RowWalk {
 public:
  RowWalk(MdbHandle& handle, MdbTableDef& table) : handle_(handle), table_(table) {}

  /// Hands out each row and returns how many there were. Raises UnreadableFile.
  std::uint64_t Run(const std::function<void(std::vector<RawCell>&)>& take) {
    take_ = &take;
    mdb_rewind_table(&table_);
    while (mdb_read_next_dpg(&table_) != 0) {
      const int rows = mdb_get_int16(handle_.pg_buf, handle_.fmt->row_count_offset);
      for (int row = 0; row < rows; ++row) {
        ReadPlace(row);
      }
    }
    return count_;
  }

 private:
  [[noreturn]] void Fail(ReadFault fault) const { throw UnreadableFile(fault, table_.name); }

  void ReadPlace(int row) {
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_row(&handle_, row, &start, &size) != 0) {
      Fail(ReadFault::kRow);
    }
    if ((start & kRowIsHidden) != 0) {
      return;
    }
    if ((start & kRowIsElsewhere) != 0) {
      const KeptPage here(handle_);
      ReadElsewhere(start & kOffsetMask, size);
      return;
    }
    ReadRow(start & kOffsetMask, size);
  }

  /// The page that is walked over, put back at its end: other pages are read into its room.
  class KeptPage {
   public:
    explicit KeptPage(MdbHandle& handle) : handle_(handle) {
      std::memcpy(bytes_.data(), handle.pg_buf, bytes_.size());
    }
    ~KeptPage() { std::memcpy(handle_.pg_buf, bytes_.data(), bytes_.size()); }
    KeptPage(const KeptPage&) = delete;
    KeptPage& operator=(const KeptPage&) = delete;

   private:
    MdbHandle& handle_;
    std::array<unsigned char, MDB_PGSIZE> bytes_{};
  };

  void ReadElsewhere(int start, std::size_t size) {
    for (int step = 0; step < kMostSteps; ++step) {
      if (size < kPointerSize) {
        Fail(ReadFault::kRow);
      }
      const std::uint32_t pointer = NumberAt(handle_.pg_buf, static_cast<std::size_t>(start));
      void* page = nullptr;
      if (mdb_find_pg_row(&handle_, static_cast<int>(pointer), &page, &start, &size) != 0 ||
          !IsOwnPage(page)) {
        Fail(ReadFault::kRow);
      }
      std::memcpy(handle_.pg_buf, page, MDB_PGSIZE);
      const bool isPointer = (start & kRowIsElsewhere) != 0;
      start &= kOffsetMask;
      if (!isPointer) {
        ReadRow(start, size);
        return;
      }
    }
    Fail(ReadFault::kRow);
  }

  [[nodiscard]] bool IsOwnPage(const void* page) const {
    return *static_cast<const unsigned char*>(page) == MDB_PAGE_DATA &&
           NumberAt(page, kOwnerAt) == table_.entry->table_pg;
  }

  void ReadRow(int start, std::size_t size) {
    std::array<MdbField, MDB_MAX_COLS> fields{};
    if (size == 0 || table_.num_cols > fields.size()) {
      Fail(ReadFault::kRow);
    }
    const int count = mdb_crack_row(&table_, start, size, fields.data());
    if (count < 0 || static_cast<unsigned>(count) != table_.num_cols) {
      Fail(ReadFault::kRow);
    }
    cells_.assign(table_.num_cols, std::nullopt);
    for (unsigned at = 0; at < table_.num_cols; ++at) {
      TakeField(fields.at(at), start, size);
    }
    for (unsigned at = 0; at < table_.num_cols; ++at) {
      ReadLongValue(at);
    }
    if (++count_ > table_.num_rows) {
      throw UnreadableFile(ReadFault::kCount, table_.name, count_, table_.num_rows);
    }
    (*take_)(cells_);
  }

  void TakeField(const MdbField& field, int start, std::size_t size) {
    if (field.colnum < 0 || static_cast<unsigned>(field.colnum) >= table_.num_cols) {
      Fail(ReadFault::kRow);
    }
    RawCell& cell = cells_[static_cast<std::size_t>(field.colnum)];
    if (ColumnAt(field.colnum).col_type == MDB_BOOL) {
      // Its value stands where other columns say whether they are Null.
      cell = std::string(1, field.is_null != 0 ? '\0' : '\1');
      return;
    }
    if (field.is_null != 0) {
      return;
    }
    const int end = start + static_cast<int>(size);
    if (field.siz < 0 || field.start < start || field.start + field.siz > end) {
      Fail(ReadFault::kRow);
    }
    cell.emplace();
    for (int at = field.start; at < field.start + field.siz; ++at) {
      cell->push_back(static_cast<char>(handle_.pg_buf[at]));
    }
  }

  [[nodiscard]] const MdbColumn& ColumnAt(int at) const {
    return *static_cast<const MdbColumn*>(
        g_ptr_array_index(table_.columns, static_cast<guint>(at)));
  }

  /// Puts a long text in the place of what tells where it stands.
  void ReadLongValue(unsigned at) {
    const int type = ColumnAt(static_cast<int>(at)).col_type;
    RawCell& cell = cells_[at];
    if ((type != MDB_MEMO && type != MDB_OLE) || !cell) {
      return;
    }
    if (cell->size() < kLongHeader) {
      Fail(ReadFault::kLongValue);
    }
    const std::uint32_t head = NumberAt(cell->data(), 0);
    const std::uint32_t pointer = NumberAt(cell->data(), kPointerSize);
    const std::size_t length = head & kLongLength;
    if (length > kLongestText) {
      throw UnreadableFile(ReadFault::kTooLarge, table_.name);
    }
    std::string value;
    if ((head & kLongIsHere) != 0) {
      value = cell->substr(kLongHeader);
    } else if ((head & kLongIsOneRow) != 0) {
      value = PieceAt(pointer);
    } else {
      for (std::uint32_t next = pointer; next != 0 && value.size() < length;) {
        const std::string piece = PieceAt(next);
        if (piece.size() <= kPointerSize) {
          Fail(ReadFault::kLongValue);
        }
        next = NumberAt(piece.data(), 0);
        value.append(piece, kPointerSize);
      }
    }
    if (value.size() < length) {
      Fail(ReadFault::kLongValue);
    }
    value.resize(length);
    cell = std::move(value);
  }

  [[nodiscard]] std::string PieceAt(std::uint32_t pointer) {
    void* page = nullptr;
    int start = 0;
    std::size_t size = 0;
    if (mdb_find_pg_row(&handle_, static_cast<int>(pointer), &page, &start, &size) != 0) {
      Fail(ReadFault::kLongValue);
    }
    const auto* bytes = static_cast<const char*>(page);
    if (bytes[0] != MDB_PAGE_DATA ||
        std::string_view(bytes + kOwnerAt, kOwnerOfLongValues.size()) != kOwnerOfLongValues) {
      Fail(ReadFault::kLongValue);
    }
    return {bytes + (start & kOffsetMask), size};
  }

  MdbHandle& handle_;
  MdbTableDef& table_;
  const std::function<void(std::vector<RawCell>&)>* take_ = nullptr;
  std::vector<RawCell> cells_;
  std::uint64_t count_ = 0;
};

// ---- Tables
// --------------------------------------------------------------------------------------

/// Of a link, ODBC's ones among them, which the library knows by the number of reports.
bool IsLink(const MdbCatalogEntry& entry) {
  return entry.object_type == MDB_LINKED_TABLE || entry.object_type == MDB_REPORT;
}

TableDef Define(MdbCatalogEntry& entry) {
  TableDef table(mdb_read_table(&entry));
  if (!table || mdb_read_columns(table.get()) == nullptr || table->num_cols > MDB_MAX_COLS ||
      table->columns->len != table->num_cols) {
    throw UnreadableFile(ReadFault::kDefinition, entry.object_name);
  }
  return table;
}

/// Of a catalogue that has lost a page whole tables would be missing.
void RequireWholeCatalogue(MdbHandle& handle) {
  constexpr const char* kCatalogue = "MSysObjects";
  MdbCatalogEntry* own = mdb_get_catalogentry_by_name(&handle, kCatalogue);
  if (own == nullptr) {
    throw UnreadableFile(ReadFault::kCatalogue);
  }
  const TableDef table = Define(*own);
  const std::uint64_t rows = RowWalk(handle, *table).Run([](std::vector<RawCell>&) {});
  if (rows != table->num_rows) {
    throw UnreadableFile(ReadFault::kCatalogue);
  }
}

/// The file's frames, one after the other.
class FileWalk {
 public:
  FileWalk(Handle handle, const std::vector<std::string>& wanted,
           const std::function<void(FrameKind, const Payload&)>& frame)
      : handle_(std::move(handle)), wanted_(wanted), frame_(frame) {}

  void Run() {
    TellFile();
    const GPtrArray* catalogue = mdb_read_catalog(handle_.get(), MDB_ANY);
    if (catalogue == nullptr) {
      throw UnreadableFile(ReadFault::kCatalogue);
    }
    RequireWholeCatalogue(*handle_);
    for (guint at = 0; at < catalogue->len; ++at) {
      auto& entry = *static_cast<MdbCatalogEntry*>(g_ptr_array_index(catalogue, at));
      if (mdb_is_user_table(&entry) != 0) {
        ReadTable(entry);
      } else if (IsLink(entry)) {
        TellLink(entry);
      }
    }
  }

 private:
  void TellFile() {
    payload_.Clear();
    payload_.AddNumber(kFormNumber);
    payload_.AddNumber(handle_->f->jet_version);
    payload_.AddNumber(handle_->f->code_page);
    frame_(FrameKind::kFile, payload_);
  }

  void TellLink(const MdbCatalogEntry& entry) {
    payload_.Clear();
    payload_.AddText(entry.object_name);
    payload_.AddByte(1);
    payload_.AddNumber(0);
    payload_.AddNumber(0);
    frame_(FrameKind::kTable, payload_);
  }

  void TellTable(const MdbTableDef& table) {
    payload_.Clear();
    payload_.AddText(table.name);
    payload_.AddByte(0);
    payload_.AddNumber(table.num_rows);
    payload_.AddNumber(table.num_cols);
    for (guint at = 0; at < table.columns->len; ++at) {
      const auto& column = *static_cast<const MdbColumn*>(g_ptr_array_index(table.columns, at));
      payload_.AddText(column.name);
      payload_.AddByte(static_cast<std::uint8_t>(column.col_type));
      payload_.AddByte(column.is_long_auto);
      payload_.AddNumber(static_cast<std::uint32_t>(column.col_size));
    }
    frame_(FrameKind::kTable, payload_);
  }

  void ReadTable(MdbCatalogEntry& entry) {
    const TableDef table = Define(entry);
    TellTable(*table);
    if (std::none_of(wanted_.begin(), wanted_.end(),
                     [&](const std::string& name) { return SameLetters(name, table->name); })) {
      return;
    }
    const std::uint64_t rows = RowWalk(*handle_, *table).Run([this](std::vector<RawCell>& cells) {
      payload_.Clear();
      for (const RawCell& cell : cells) {
        if (cell) {
          payload_.AddText(*cell);
        } else {
          payload_.AddNullCell();
        }
      }
      frame_(FrameKind::kRow, payload_);
    });
    if (rows != table->num_rows) {
      throw UnreadableFile(ReadFault::kCount, table->name, rows, table->num_rows);
    }
  }

  Handle handle_;
  const std::vector<std::string>& wanted_;
  const std::function<void(FrameKind, const Payload&)>& frame_;
  Payload payload_;
};

}  // namespace

void ReadTables(const std::string& file, const std::vector<std::string>& wanted,
                const std::function<void(FrameKind, const Payload&)>& frame) {
  FileWalk(Open(file), wanted, frame).Run();
}

}  // namespace qorhost::desktop_file
