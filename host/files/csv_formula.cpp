#include "host/files/csv_formula.h"

namespace qorhost {

namespace {

constexpr char kMark = '\'';

bool StartsOne(std::string_view text) {
  constexpr std::string_view kStarts = "=+-@\t\r'";
  return !text.empty() && kStarts.find(text.front()) != std::string_view::npos;
}

}  // namespace

std::string WithoutFormula(std::string_view text) {
  return (StartsOne(text) ? std::string(1, kMark) : std::string()).append(text);
}

std::string WithoutFormulaMark(std::string cell) {
  const std::string_view text = cell;
  if (text.starts_with(kMark) && StartsOne(text.substr(1))) {
    cell.erase(0, 1);
  }
  return cell;
}

}  // namespace qorhost
