// The rows of the component's benchmark: how two ways are measured, printed and written.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace qorbench {

inline constexpr double kGoal = 1.3;

struct Row {
  std::string name;
  double oursNs = 0;
  double floorNs = 0;
  double goal = kGoal;
};

/// Says what is wrong and ends the program.
[[noreturn]] void Fail(const char* what);

/// The identifier of a member; ends the program when it is missing.
[[nodiscard]] DISPID IdOf(IDispatch* object, const wchar_t* name);

/// Calls a member with arguments in automation's order; ends the program when that fails.
void Call(IDispatch* object, DISPID id, WORD flags, VARIANT* arguments, UINT count,
          VARIANT* result);

/// Medians for one of `items` that each way deals with. Both take turns, so that the machine's
/// moods meet both.
[[nodiscard]] Row Compare(std::string name, const std::function<void()>& ours,
                          const std::function<void()>& floor, double items);

void Print(const std::vector<Row>& rows);
void WriteJson(const std::vector<Row>& rows, const char* file);

}  // namespace qorbench
