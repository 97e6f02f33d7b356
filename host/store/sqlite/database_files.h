// What stands in a database's file and in its log, read past the engine's cache of pages.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_file;

namespace qorhost::sqlite {

/// How far a log goes, as its connections tell each other in the index (the engine's "WAL-index
/// format").
struct LogState {
  std::array<std::uint8_t, 8> salts{};  ///< others for each beginning of the log
  std::uint32_t frames = 0;             ///< that are stored
  std::uint32_t inFile = 0;             ///< how many of them were copied into the file
  friend bool operator==(const LogState&, const LogState&) = default;
};

/// The two files of a connection that has read; it must outlive this. Reading goes through the
/// descriptors that the engine has open: to open and close others would end its locks.
class DatabaseFiles {
 public:
  using Page = std::vector<std::uint8_t>;

  explicit DatabaseFiles(sqlite3* database);

  /// Whether changes go to a log, and this connection sees where that ends.
  [[nodiscard]] bool hasLog() const noexcept { return state_ != nullptr; }
  [[nodiscard]] LogState State() const noexcept;
  /// Another one whenever anything was written into the file, or was put in its place.
  struct Stamp {
    std::int64_t size = 0;
    std::int64_t written = 0;  // nanoseconds
    std::int64_t touched = 0;
    friend bool operator==(const Stamp&, const Stamp&) = default;
  };
  [[nodiscard]] Stamp StampOfFile() const;
  /// Whether log and index stand under their names as when this object was made.
  [[nodiscard]] bool logIsInPlace() const;

  /// A page of the file, counted from 1; what is missing is zero.
  [[nodiscard]] Page PageOfFile(std::uint32_t number) const;
  /// Whether the log begins with these salts and reaches to the frame, counted from 1.
  [[nodiscard]] bool LogReaches(const LogState& state) const;
  /// Which page a frame holds, and how many the file has behind it where that ends a transaction,
  /// else 0. Both are 0 for what cannot be read.
  struct Frame {
    std::uint32_t page = 0;
    std::uint32_t pagesInAll = 0;
  };
  [[nodiscard]] Frame FrameAt(std::uint32_t number) const;
  [[nodiscard]] Page PageOfFrame(std::uint32_t number) const;

 private:
  using Identity = std::pair<std::uint64_t, std::uint64_t>;  // device and number of a file
  static std::optional<Identity> IdentityOf(const std::string& path);
  [[nodiscard]] std::int64_t PlaceOfFrame(std::uint32_t number) const;
  [[nodiscard]] Page Read(sqlite3_file* file, std::int64_t place) const;

  sqlite3_file* file_ = nullptr;
  sqlite3_file* log_ = nullptr;
  const volatile std::uint8_t* state_ = nullptr;  // the first part of the index
  std::string path_;
  std::string logPath_;
  std::string indexPath_;
  std::optional<Identity> logIdentity_;
  std::optional<Identity> indexIdentity_;
  std::uint32_t pageSize_ = 0;
};

}  // namespace qorhost::sqlite
