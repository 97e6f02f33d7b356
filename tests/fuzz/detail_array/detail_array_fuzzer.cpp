// Merges any number of texts of any bytes as the details of a unit's directory code. The first byte
// of an input chooses the mode; the texts behind it end at line feeds.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dircodes/cls_dir_code.h"
#include "frame/convert.h"
#include "tests/frame/plain_host.h"
#include "tests/fuzz/check.h"

namespace {

using qorcred::StringArray;
using qorcred::Value;
using qortest::Check;
using namespace qorcred::unit_place;  // the places

constexpr std::size_t kFields = 24;

// Keeps the last statement that it was handed.
class Manager final : public qorcred::Object {
 public:
  Value Invoke(std::string_view member, qorcred::InvokeKind,
               qorcred::Arguments arguments) override {
    if (member == "pbGetRowIDStringConstant") return "_ROWID_";
    if (member == "pbGetLastModifiedDateStringConstant") return "_LMDATE_";
    statement = *arguments[1].As<std::string>();
    ++statements;
    return std::int32_t{1};
  }
  std::string statement;
  int statements = 0;
};

class Host final : public qortest::PlainHost {
 public:
  qorcred::ObjectRef CreateComponent(std::string_view) override { return manager; }
  void ReportFailure(std::string_view, const qorcred::RuntimeError& failure) noexcept override {
    trapped = failure.number();
  }
  std::shared_ptr<Manager> manager = std::make_shared<Manager>();
  std::optional<qorcred::ErrorNumber> trapped;
};

class ConnectionScreen final : public qorcred::Object {
 public:
  Value Invoke(std::string_view, qorcred::InvokeKind, qorcred::Arguments) override {
    return "FC02.010";
  }
};

StringArray TextsIn(std::string_view bytes) {
  StringArray texts;
  std::size_t start = 0;
  while (start <= bytes.size()) {
    const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
    texts.emplace_back(bytes.substr(start, end - start));
    start = end + 1;
  }
  return texts;
}

void CheckConverted(const StringArray& before, const StringArray& after) {
  for (std::size_t place = 0; place < before.size(); ++place) {
    const bool flag = place == kActive || place == kIsDndChecked || place == kIsCfChecked;
    const bool dated = place >= kStartDate && place <= kEndTime && place != kEndDateUsed;
    if (flag) {
      Check(after[place] == "True" || after[place] == "False", "a flag becomes a word");
    } else if (!dated) {
      Check(after[place] == before[place], "the other texts stay");
    }
  }
  Check(before[kStartDateUsed] == "1" || after[kStartDate].empty(), "an unused start is blank");
  Check(before[kEndDateUsed] == "1" || after[kEndDate].empty(), "an unused end is blank");
  Check(before[kStartTime].empty() == after[kStartTime].empty(), "only a missing time stays away");
  std::size_t grown = 0;
  for (std::size_t place = 0; place < after.size(); ++place) {
    if (after[place].size() > before[place].size()) {
      grown += after[place].size() - before[place].size();
    }
  }
  // A date takes its time with it, and each may name a year with words of its own.
  Check(grown <= before[kStartTime].size() + before[kEndTime].size() +
                     2 * (before[kStartDate].size() + before[kEndDate].size()) + 64,
        "texts grow by no more than their own length");
}

void Merge(std::string_view mode, const StringArray& texts) {
  Host host;
  qorcred::clsDirCode controller(host);
  controller.set_mfrmConnectionScreen(std::make_shared<ConnectionScreen>());
  StringArray details = texts;
  const bool done = controller.pbMergeSave(nullptr, 1, mode, details, 7);
  Check(details.size() == texts.size(), "no text comes or goes");
  if (mode == "Delete") {
    Check(done && details == texts && host.manager->statements == 2, "a deletion reads no text");
    return;
  }
  if (!done) {
    Check(host.manager->statements == 0, "what cannot be converted is not written");
    // A flag may hold a number that no type can; it is met before a text that is missing.
    Check(host.trapped == qorcred::ErrorNumber::kOverflow ||
              (host.trapped == qorcred::ErrorNumber::kIndexOutOfRange && texts.size() < kFields),
          "only a missing text or a number too large ends the merge");
    return;
  }
  Check(texts.size() >= kFields, "too few texts end the merge");
  CheckConverted(texts, details);
  const bool writes = mode == "Insert" || mode == "Update";
  Check(host.manager->statements == (writes ? 1 : 0), "one statement for a mode that writes");
  Check(!writes || host.manager->statement.find("'_LMDATE_'") != std::string::npos,
        "the statement asks for the time stamp");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::array<std::string_view, 4> kModes{"Insert", "Update", "Delete", "insert"};
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  Merge(kModes[data[0] % kModes.size()], TextsIn(bytes));
  return 0;
}
