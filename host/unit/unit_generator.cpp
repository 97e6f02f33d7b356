#include "host/unit/unit_generator.h"

#include <fmt/format.h>

#include <array>
#include <random>

namespace qorhost {

namespace {

using qorcred::unit_place::Place;
using namespace qorcred::unit_place;  // the places

constexpr std::array<std::string_view, 8> kNames{"Adler, K.",      "Brandt & Sons", "Čapek; Dr. J.",
                                                 "Dufrêne, Odile", "Ek \"Loft\"",   "Ferrari, M.",
                                                 "Groß, Uta",      "Hall #3"};

// Every unit has the schedules 0 and 1.
constexpr int kSchedules = 2;

// The standard fixes what the engine gives but not what a distribution makes of it.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}

  int Below(int end) { return static_cast<int>(engine_() % static_cast<std::uint32_t>(end)); }
  bool OneIn(int cases) { return Below(cases) == 0; }

 private:
  std::mt19937 engine_;
};

void PutDate(UnitCode& code, Dice& dice, Place used, Place date, Place time, int year) {
  code[used] = "1";
  code[date] = fmt::format("{:02}{:02}{:02}", year, 1 + dice.Below(12), 1 + dice.Below(28));
  code[time] = fmt::format("{:02}{:02}", dice.Below(24), dice.Below(60));
}

UnitCode MakeCode(std::int32_t number, Dice& dice) {
  UnitCode code;
  code[kCode] = fmt::format("{}", number);
  code[kPhone] = fmt::format("555{:04}", dice.Below(10000));
  for (const Place flag : {kStartDateUsed, kEndDateUsed, kIsDndChecked, kIsCfChecked}) {
    code[flag] = "0";
  }
  code[kActive] = dice.OneIn(10) ? "0" : "1";
  code[kTimeDelay] = code[kCfTimeDelay] = qorcred::kDelayWithoutExtension;
  if (dice.OneIn(3)) {
    code[kExtension] = fmt::format("{}", 100 + dice.Below(900));
    code[kTimeDelay] = fmt::format("{}", 1 + dice.Below(60));
  }
  if (dice.OneIn(4)) {
    code[kIsDndChecked] = "1";
    code[kDndSchedule] = fmt::format("{}", dice.Below(kSchedules));
  }
  if (dice.OneIn(5)) {
    code[kIsCfChecked] = "1";
    code[kCfSchedule] = fmt::format("{}", dice.Below(kSchedules));
    code[kCfPhone] = fmt::format("555{:04}", dice.Below(10000));
    if (dice.OneIn(2)) {
      code[kCfExtension] = fmt::format("{}", 100 + dice.Below(900));
      code[kCfTimeDelay] = fmt::format("{}", 1 + dice.Below(60));
    }
  }
  if (dice.OneIn(4)) PutDate(code, dice, kStartDateUsed, kStartDate, kStartTime, 20);
  if (dice.OneIn(4)) PutDate(code, dice, kEndDateUsed, kEndDate, kEndTime, 30 + dice.Below(60));
  if (!dice.OneIn(6)) {
    code[kDisplayName] = kNames[static_cast<std::size_t>(dice.Below(int{kNames.size()}))];
  }
  code[kDisplayMode] = fmt::format("{}", dice.Below(4));
  return code;
}

}  // namespace

UnitFile GenerateUnit(std::int32_t count, std::uint32_t seed) {
  Dice dice(seed);
  UnitFile unit;
  for (std::int32_t number = 1; number <= count; ++number) {
    unit.codes.push_back(MakeCode(number, dice));
  }
  return unit;
}

}  // namespace qorhost
