// How a desktop database file is read.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace qorhost {

struct DesktopReading {
  /// Tables of which the rows are wanted, in any letter case of ASCII; others have none.
  std::vector<std::string> wanted;
  /// The code page of the oldest format's texts, 1250 for example; 0: the one that the file tells,
  /// or 1252. Of later formats it must be 0.
  unsigned codePage = 0;
  std::uintmax_t largestFile = std::uintmax_t{2} << 30;  ///< bytes: no such file has more
  std::size_t mostBytes = std::size_t{128} << 20;        ///< of rows; what is made of it takes more
  /// Of cells, with one for each row and column itself: an empty cell takes few bytes of those
  /// above, and as much memory as a number.
  std::size_t mostCells = 5'000'000;
  std::size_t mebibytes = 512;                 ///< of memory, at most
  std::chrono::seconds processorTime{120};     ///< at most
  std::chrono::milliseconds longest{300'000};  ///< from its beginning to its end
  std::filesystem::path reader;  ///< the program that reads it; none: the one that belongs to this
};

}  // namespace qorhost
