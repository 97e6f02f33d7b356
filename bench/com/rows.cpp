#include "bench/com/rows.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace qorbench {

namespace {

constexpr int kRounds = 21;

/// Nanoseconds for one of `items` that `work` deals with.
double TimeOf(const std::function<void()>& work, double items) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<double, std::nano>(end - begin).count() / items;
}

double Median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

}  // namespace

void Fail(const char* what) {
  std::fprintf(stderr, "com_bench: %s\n", what);
  std::exit(EXIT_FAILURE);
}

DISPID IdOf(IDispatch* object, const wchar_t* name) {
  std::wstring copy(name);
  LPOLESTR names = copy.data();
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id))) {
    Fail("a member is missing");
  }
  return id;
}

void Call(IDispatch* object, DISPID id, WORD flags, VARIANT* arguments, UINT count,
          VARIANT* result) {
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = flags == DISPATCH_PROPERTYPUT;
  DISPPARAMS parameters{arguments, isPut ? &put : nullptr, count, isPut ? 1U : 0U};
  if (FAILED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, nullptr,
                            nullptr))) {
    Fail("a call failed");
  }
}

Row Compare(std::string name, const std::function<void()>& ours, const std::function<void()>& floor,
            double items) {
  ours();
  floor();
  std::vector<double> oursTimes;
  std::vector<double> floorTimes;
  for (int round = 0; round < kRounds; ++round) {
    oursTimes.push_back(TimeOf(ours, items));
    floorTimes.push_back(TimeOf(floor, items));
  }
  return {std::move(name), Median(oursTimes), Median(floorTimes)};
}

void Print(const std::vector<Row>& rows) {
  std::printf("%-28s %10s %10s %6s %6s  %s\n", "name", "ours ns", "floor ns", "ratio", "goal", "");
  for (const Row& row : rows) {
    const double ratio = row.oursNs / row.floorNs;
    std::printf("%-28s %10.1f %10.1f %6.2f %6.2f  %s\n", row.name.c_str(), row.oursNs, row.floorNs,
                ratio, row.goal, ratio <= row.goal ? "met" : "not met");
  }
}

void WriteJson(const std::vector<Row>& rows, const char* file) {
  std::FILE* out = std::fopen(file, "w");
  if (out == nullptr) Fail("the JSON file cannot be written");
  std::fputs("[", out);
  for (std::size_t at = 0; at < rows.size(); ++at) {
    const Row& row = rows[at];
    std::fprintf(out,
                 "%s\n  {\"name\": \"%s\", \"ours_ns\": %.1f, \"floor_ns\": %.1f, \"ratio\": %.3f, "
                 "\"goal\": %.2f}",
                 at == 0 ? "" : ",", row.name.c_str(), row.oursNs, row.floorNs,
                 row.oursNs / row.floorNs, row.goal);
  }
  std::fputs("\n]\n", out);
  std::fclose(out);
}

}  // namespace qorbench
