// A file that is made under a name of its own and put in its place when it is whole.
#pragma once

#include <cstdint>
#include <filesystem>

namespace qorhost {

/// What may happen to a file that stands where another one is to be put.
enum class Standing : std::uint8_t {
  kStays,     ///< nothing may be there
  kReplaced,  ///< it makes room
};

/// An empty file in the folder of its place, made under a name that nobody guesses and that nothing
/// had, readable by its owner alone. Gone with the object unless it was put in place; what a killed
/// process has left of its own in that folder, the next one here removes. Everything raises
/// FileError with the system's own reason, naming the place.
class FreshFile {
 public:
  explicit FreshFile(std::filesystem::path place);
  ~FreshFile();
  FreshFile(const FreshFile&) = delete;
  FreshFile& operator=(const FreshFile&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
  /// Open for writing until the file is put in place.
  [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

  /// Gives it the rights, the owner and the group of another file, as far as the system lets it.
  void TakeRightsOf(const std::filesystem::path& other) const;
  /// Moves it to its place, in one step and to last a power failure. What appeared there meanwhile
  /// is not replaced with kStays: FileProblem::kExists.
  void PutInPlace(Standing standing);

 private:
  void Make();
  [[noreturn]] void Fail(int reason) const;

  std::filesystem::path place_;
  std::filesystem::path path_;
  int descriptor_ = -1;
  bool placed_ = false;
};

/// Makes the contents of a file last a power failure; 0, or the system's own reason.
[[nodiscard]] int SyncFile(const std::filesystem::path& file) noexcept;
/// Makes the names that were changed in a folder last a power failure, where its system can.
void SyncFolder(const std::filesystem::path& folder) noexcept;

/// The folder that a file stands in: "." for a bare name.
[[nodiscard]] std::filesystem::path FolderOf(const std::filesystem::path& file);
/// Raises FileError, kUnreachable, where that is none.
void RequireFolderOf(const std::filesystem::path& file);

}  // namespace qorhost
