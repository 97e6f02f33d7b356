#include "dircodes/unit_notation.h"

#include "frame/convert.h"
#include "frame/format.h"
#include "frame/runtime_error.h"
#include "frame/sql_text.h"
#include "frame/text.h"

namespace qorcred {

namespace {

std::string& At(StringArray& details, unit_place::Place place) {
  if (place >= details.size()) throw RuntimeError(ErrorNumber::kIndexOutOfRange);
  return details[place];
}

void ConvertFlag(std::string& flag) {
  flag = Val(flag) == 1 ? "True" : "False";
}

// hhmm to hh:mm; an empty time stays empty.
void ConvertTime(std::string& time) {
  if (time.empty()) return;
  time = Concat(LeftUtf16(time, 2), ":", RightUtf16(time, 2));
}

// YYMMDD to mm/dd/yyyy and the converted time; the blank between them stays without a time.
void ConvertDate(StringArray& details, unit_place::Place datePlace, unit_place::Place timePlace) {
  std::string& date = At(details, datePlace);
  if (date.empty()) return;
  date = Concat(MidUtf16(date, 2, 2), "/", RightUtf16(date, 2), "/20", LeftUtf16(date, 2));
  date = Format(Value(date), "mm/dd/yyyy");
  date += Concat(" ", At(details, timePlace));
}

void BlankUnusedDate(StringArray& details, unit_place::Place usedPlace,
                     unit_place::Place datePlace) {
  if (At(details, usedPlace) != "1") At(details, datePlace).clear();
}

}  // namespace

DisplayOptions ConvertToStoreNotation(StringArray& details) {
  using namespace unit_place;
  for (const Place flag : {kIsDndChecked, kIsCfChecked, kActive}) ConvertFlag(At(details, flag));
  // The dates take the converted times, and only then are the unused ones blanked.
  for (const Place time : {kStartTime, kEndTime}) ConvertTime(At(details, time));
  ConvertDate(details, kStartDate, kStartTime);
  ConvertDate(details, kEndDate, kEndTime);
  BlankUnusedDate(details, kStartDateUsed, kStartDate);
  BlankUnusedDate(details, kEndDateUsed, kEndDate);
  return DisplayOptionsOf(At(details, kDisplayMode));
}

DisplayOptions DisplayOptionsOf(std::string_view mode) {
  if (mode == "1") return {"True", "False"};
  if (mode == "2") return {"False", "True"};
  if (mode == "3") return {"False", "False"};
  return {"True", "True"};
}

}  // namespace qorcred
