// Files that are turned away, made of the sample databases: damaged, cut, empty, or none at all.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace qorhost::test {

inline constexpr std::size_t kDesktopPage = 4096;

inline std::string BytesOfFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// The bytes of a file with one page overwritten.
inline std::string WithPageOfChance(std::string bytes, std::size_t page) {
  std::minstd_rand random(7);
  for (std::size_t at = page * kDesktopPage; at < (page + 1) * kDesktopPage; ++at) {
    bytes[at] = static_cast<char>(random() >> 8U);
  }
  return bytes;
}

/// A page of building-2010.accdb with 32 places of rows of its tenants: 27 rows, three pointers to
/// rows on another page, and two that are deleted.
inline constexpr std::size_t kPageOfTenants = 136;

struct RefusedFile {
  std::filesystem::path file;
  std::string says;  ///< what the refusal has among its words
};

/// Puts such files into a folder.
inline std::vector<RefusedFile> MakeRefusedFiles(const std::filesystem::path& samples,
                                                 const std::filesystem::path& folder) {
  const std::string old = BytesOfFile(samples / "building-2000.mdb");
  const std::string later = BytesOfFile(samples / "building-2010.accdb");
  constexpr std::size_t kCut = 279'762;  // within a page
  std::vector<RefusedFile> files{{samples / "password-2000.mdb", "has a password"},
                                 {samples / "password-2010.accdb", "has a password"},
                                 {samples / "other-application.mdb", "another application"}};
  const auto put = [&](const char* name, const std::string& bytes, const char* says) {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    files.push_back({folder / name, says});
  };
  put("empty.mdb", "", "is empty");
  put("text.mdb", "Standard Jet DB is only text here\n", "is no desktop database");
  put("truncated.mdb", old.substr(0, kCut), "ends within a page");
  put("pages.mdb", old.substr(0, old.size() / kDesktopPage / 2 * kDesktopPage), "is damaged");
  put("flipped.accdb", WithPageOfChance(later, kPageOfTenants), "says that it has 120 rows");
  return files;
}

}  // namespace qorhost::test
