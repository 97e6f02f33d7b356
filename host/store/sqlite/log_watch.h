// Whether a store's log was written for the file that it stands beside. The engine does not look: a
// log that is left when another file is put over the store's own would be mixed with that.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "host/store/sqlite/database_files.h"

namespace qorhost::sqlite {

/// What each stored unit of work writes anew: two states of a store are equal where it is, and each
/// follows the one that it names.
struct Seal {
  using Mark = std::array<std::uint8_t, 16>;
  Mark mark{};
  Mark previous{};
  friend bool operator==(const Seal&, const Seal&) = default;
};

enum class LogVerdict : std::uint8_t {
  kBelongs,     ///< and what the connection has cached is what the files hold
  kBelongsNow,  ///< but the cache may be of another file
  kForeign,     ///< or gone, or replaced
};

/// Looks at the files of a connection, which must have read and outlive this. The file holds a seal
/// of the log, or the one that the log's first names; all of the log being copied, it is the last.
/// What was copied stands in the file as it does in the log.
class LogWatch {
 public:
  /// `sealPage` holds the table of the seal; 0 for a store without one.
  LogWatch(sqlite3* database, std::uint32_t sealPage) : files_(database), sealPage_(sealPage) {}

  /// kForeign is told only of a state that stayed while it was looked at.
  [[nodiscard]] LogVerdict Look();
  /// The table of the seal has another page, as after a VACUUM.
  void LookForSealsOn(std::uint32_t sealPage) { sealPage_ = sealPage; }
  /// Whether the file holds the seal that it held at the last look.
  [[nodiscard]] bool IsFileAsBefore() const;

 private:
  struct Accepted {
    LogState state;
    std::optional<Seal> inFile;
    DatabaseFiles::Stamp stamp;
  };
  using LastFrames = std::unordered_map<std::uint32_t, std::uint32_t>;  // of each page of the log

  [[nodiscard]] std::optional<Seal> SealInFile() const;
  [[nodiscard]] LogVerdict Judge(const LogState& state, const std::optional<Seal>& inFile,
                                 const DatabaseFiles::Stamp& stamp) const;
  [[nodiscard]] LogVerdict JudgeSeals(const LogState& state,
                                      const std::optional<Seal>& inFile) const;
  [[nodiscard]] std::uint32_t WhereTheFileWas(const LogState& state, std::uint32_t firstSeal) const;
  [[nodiscard]] std::uint32_t FindSeal(const LogState& state, const std::optional<Seal>& seal,
                                       std::uint32_t from) const;
  [[nodiscard]] std::uint32_t LastSealUpTo(std::uint32_t frame) const;
  [[nodiscard]] std::uint32_t FirstSealIn(const LogState& state) const;
  [[nodiscard]] std::optional<Seal> SealAt(std::uint32_t frame) const;
  [[nodiscard]] bool HoldsAnySeal(const LogState& state) const;
  [[nodiscard]] LastFrames LastFramesIn(const LogState& state) const;
  [[nodiscard]] std::uint32_t PagesInAll(const LogState& state) const;
  [[nodiscard]] bool FileHoldsWhatWasCopied(const LogState& state) const;
  [[nodiscard]] bool HoldsEveryPage(const LogState& state) const;

  DatabaseFiles files_;
  std::uint32_t sealPage_;
  std::optional<Accepted> accepted_;
};

}  // namespace qorhost::sqlite
