#include "host/store/sqlite/log_watch.h"

#include <algorithm>
#include <string_view>

namespace qorhost::sqlite {

namespace {

constexpr std::string_view kToken = "qorhost store s!";  // as the migration has it

/// The seal in the only row of a page, if there is one.
std::optional<Seal> SealIn(const DatabaseFiles::Page& page) {
  constexpr std::uint8_t kLeafOfTable = 13;
  constexpr std::size_t kPlaceOfFirstRow = 8;  // where its place stands
  constexpr std::size_t kLongestHeader = 24;   // of a row that short
  if (page.size() < kPlaceOfFirstRow + 2 || page[0] != kLeafOfTable) {
    return std::nullopt;
  }
  const std::size_t row = page[kPlaceOfFirstRow] * std::size_t{256} + page[kPlaceOfFirstRow + 1];
  const std::size_t end = std::min(page.size(), row + kLongestHeader + kToken.size());
  if (row >= end) {
    return std::nullopt;
  }
  const auto first = page.begin() + static_cast<std::ptrdiff_t>(row);
  const auto last = page.begin() + static_cast<std::ptrdiff_t>(end);
  const auto token = std::search(
      first, last, kToken.begin(), kToken.end(),
      [](std::uint8_t byte, char letter) { return byte == static_cast<std::uint8_t>(letter); });
  Seal seal;
  const auto behind = static_cast<std::size_t>(page.end() - token);
  if (token == last || behind < kToken.size() + seal.mark.size() + seal.previous.size()) {
    return std::nullopt;
  }
  const auto mark = token + static_cast<std::ptrdiff_t>(kToken.size());
  std::copy_n(mark, seal.mark.size(), seal.mark.begin());
  std::copy_n(mark + static_cast<std::ptrdiff_t>(seal.mark.size()), seal.previous.size(),
              seal.previous.begin());
  return seal;
}

}  // namespace

LogVerdict LogWatch::Look() {
  constexpr int kMostLooks = 5;
  if (!files_.hasLog()) {
    return LogVerdict::kBelongs;
  }
  for (int looks = 1;; ++looks) {
    // The state before the file: that goes forward only, when the log is copied into it.
    const LogState state = files_.State();
    const DatabaseFiles::Stamp stamp = files_.StampOfFile();
    const std::optional<Seal> inFile = SealInFile();
    const LogVerdict verdict =
        files_.logIsInPlace() ? Judge(state, inFile, stamp) : LogVerdict::kForeign;
    if (verdict != LogVerdict::kForeign) {
      accepted_ = {state, inFile, stamp};
      return verdict;
    }
    if (files_.State() == state || looks == kMostLooks) {
      return verdict;
    }
  }
}

bool LogWatch::IsFileAsBefore() const {
  return !files_.hasLog() || (accepted_ && accepted_->inFile == SealInFile());
}

std::optional<Seal> LogWatch::SealInFile() const {
  return sealPage_ == 0 ? std::nullopt : SealIn(files_.PageOfFile(sealPage_));
}

LogVerdict LogWatch::Judge(const LogState& state, const std::optional<Seal>& inFile,
                           const DatabaseFiles::Stamp& stamp) const {
  const bool isPartlyInFile = state.inFile > 0 && state.inFile < state.frames;
  if (accepted_ && accepted_->inFile == inFile && accepted_->state.salts == state.salts &&
      accepted_->state.inFile == state.inFile && accepted_->state.frames <= state.frames &&
      (!isPartlyInFile || accepted_->stamp == stamp)) {
    return LogVerdict::kBelongs;  // only more of the log has come
  }
  if (state.frames > 0 && !files_.LogReaches(state)) {
    return LogVerdict::kForeign;
  }
  // The seal alone does not tell then: its page is not among those that were copied.
  if (isPartlyInFile && !FileHoldsWhatWasCopied(state)) {
    return LogVerdict::kForeign;
  }
  const LogVerdict verdict = JudgeSeals(state, inFile);
  return verdict == LogVerdict::kForeign && HoldsEveryPage(state) ? LogVerdict::kBelongs : verdict;
}

LogVerdict LogWatch::JudgeSeals(const LogState& state, const std::optional<Seal>& inFile) const {
  // Without a seal in the log nothing tells whether the file is still the one that was read.
  const LogVerdict withoutSeals = accepted_ ? LogVerdict::kBelongsNow : LogVerdict::kBelongs;
  if (state.frames == 0) {
    return withoutSeals;
  }
  // A checkpoint leaves out pages that come again behind its end, as the seal's does with every
  // unit of work: it is copied only by one that reaches the end of the log.
  const bool isAllInFile = state.inFile == state.frames;
  const std::uint32_t first = isAllInFile ? LastSealUpTo(state.frames) : FirstSealIn(state);
  if (first == 0) {
    return HoldsAnySeal(state) ? LogVerdict::kForeign : withoutSeals;
  }
  const std::uint32_t known = WhereTheFileWas(state, first);
  if (!isAllInFile && known == 0) {
    const Seal seal = SealAt(first).value_or(Seal{});
    const bool isFirstOfStore = seal.previous == Seal::Mark{};
    if (inFile ? inFile->mark == seal.previous : isFirstOfStore) {
      return LogVerdict::kBelongs;
    }
  }
  return FindSeal(state, inFile, std::max(first, known)) != 0 ? LogVerdict::kBelongs
                                                              : LogVerdict::kForeign;
}

/// The frame with the seal that the file held when it was looked at last: it never goes back. 0
/// when that was before this log.
std::uint32_t LogWatch::WhereTheFileWas(const LogState& state, std::uint32_t firstSeal) const {
  return accepted_ && accepted_->state.salts == state.salts
             ? FindSeal(state, accepted_->inFile, firstSeal)
             : 0;
}

/// The first frame with a seal, 0 for none.
std::uint32_t LogWatch::FindSeal(const LogState& state, const std::optional<Seal>& seal,
                                 std::uint32_t from) const {
  for (std::uint32_t frame = from; seal && frame <= state.frames; ++frame) {
    if (SealAt(frame) == seal) {
      return frame;
    }
  }
  return 0;
}

std::uint32_t LogWatch::LastSealUpTo(std::uint32_t frame) const {
  while (frame > 0 && !SealAt(frame)) {
    --frame;
  }
  return frame;
}

std::uint32_t LogWatch::FirstSealIn(const LogState& state) const {
  std::uint32_t frame = 1;
  while (frame <= state.frames && !SealAt(frame)) {
    ++frame;
  }
  return frame <= state.frames ? frame : 0;
}

std::optional<Seal> LogWatch::SealAt(std::uint32_t frame) const {
  return sealPage_ != 0 && files_.FrameAt(frame).page == sealPage_
             ? SealIn(files_.PageOfFrame(frame))
             : std::nullopt;
}

/// A log of a sealed store whose seal stands on another page than this one's, or beside a file that
/// has none.
bool LogWatch::HoldsAnySeal(const LogState& state) const {
  for (std::uint32_t frame = 1; frame <= state.frames; ++frame) {
    if (SealIn(files_.PageOfFrame(frame))) {
      return true;
    }
  }
  return false;
}

LogWatch::LastFrames LogWatch::LastFramesIn(const LogState& state) const {
  LastFrames last;
  for (std::uint32_t frame = 1; frame <= state.frames; ++frame) {
    last[files_.FrameAt(frame).page] = frame;
  }
  return last;
}

/// How many the store has behind the log's last transaction.
std::uint32_t LogWatch::PagesInAll(const LogState& state) const {
  for (std::uint32_t frame = state.frames; frame > 0; --frame) {
    if (const std::uint32_t pages = files_.FrameAt(frame).pagesInAll; pages != 0) {
      return pages;
    }
  }
  return 0;
}

/// The engine reads these pages from the file: where they are not those of the log, it is another.
bool LogWatch::FileHoldsWhatWasCopied(const LogState& state) const {
  const LastFrames last = LastFramesIn(state);
  const std::uint32_t pagesInAll = PagesInAll(state);
  return std::all_of(last.begin(), last.end(), [&](const auto& entry) {
    const auto [page, frame] = entry;
    const bool isCopied = frame <= state.inFile && page <= pagesInAll;
    return !isCopied || files_.PageOfFile(page) == files_.PageOfFrame(frame);
  });
}

/// A whole store was written into this one through the engine, as VACUUM does: no matter what else
/// the file holds.
bool LogWatch::HoldsEveryPage(const LogState& state) const {
  const std::uint32_t pagesInAll = PagesInAll(state);
  const LastFrames last = LastFramesIn(state);
  const auto inStore = std::count_if(last.begin(), last.end(), [pagesInAll](const auto& entry) {
    return entry.first != 0 && entry.first <= pagesInAll;
  });
  return pagesInAll != 0 && static_cast<std::uint32_t>(inStore) == pagesInAll &&
         (state.inFile == 0 || FileHoldsWhatWasCopied(state));
}

}  // namespace qorhost::sqlite
