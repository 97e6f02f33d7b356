#include "host/files/desktop_file/desktop_table.h"

#include <array>

namespace qorhost {

namespace {

struct NamedType {
  DesktopType type;
  std::string_view name;
};
constexpr std::array kTypes{
    NamedType{DesktopType::kYesNo, "Yes/No"},      NamedType{DesktopType::kByte, "Byte"},
    NamedType{DesktopType::kInteger, "Integer"},   NamedType{DesktopType::kLong, "Long"},
    NamedType{DesktopType::kCurrency, "Currency"}, NamedType{DesktopType::kSingle, "Single"},
    NamedType{DesktopType::kDouble, "Double"},     NamedType{DesktopType::kDateTime, "Date/Time"},
    NamedType{DesktopType::kBinary, "Binary"},     NamedType{DesktopType::kText, "Text"},
    NamedType{DesktopType::kOle, "OLE"},           NamedType{DesktopType::kMemo, "Memo"},
    NamedType{DesktopType::kGuid, "GUID"},         NamedType{DesktopType::kDecimal, "Decimal"},
};

}  // namespace

std::string_view NameOf(DesktopType type) {
  for (const NamedType& known : kTypes) {
    if (known.type == type) return known.name;
  }
  return "unknown";
}

DesktopType DesktopTypeOf(std::uint8_t number) {
  for (const NamedType& known : kTypes) {
    if (static_cast<std::uint8_t>(known.type) == number) return known.type;
  }
  return DesktopType::kUnknown;
}

}  // namespace qorhost
