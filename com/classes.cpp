#include "com/classes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "credentials/cls_credential.h"
#include "dircodes/cls_dir_code.h"
#include "reports/cls_credential_report.h"
#include "reports/cls_dir_code_report.h"

namespace qorcred::com {

namespace {

// The digits of an identifier, as many as are asked for.
constexpr std::uint32_t Digits(std::string_view id, std::size_t first, std::size_t count) {
  std::uint32_t number = 0;
  for (const char digit : id.substr(first, count)) {
    const char base = digit <= '9' ? '0' : 'A' - 10;
    number = number * 16 + static_cast<std::uint32_t>(digit - base);
  }
  return number;
}

constexpr GUID GuidOf(std::string_view id) {
  GUID guid{Digits(id, 1, 8),
            static_cast<WORD>(Digits(id, 10, 4)),
            static_cast<WORD>(Digits(id, 15, 4)),
            {}};
  constexpr std::array<std::size_t, 8> kPlaces{20, 22, 25, 27, 29, 31, 33, 35};
  for (std::size_t at = 0; at < kPlaces.size(); ++at) {
    guid.Data4[at] = static_cast<BYTE>(Digits(id, kPlaces[at], 2));
  }
  return guid;
}

template <typename Class>
ComClass Make(const Identity& identity, const wchar_t* name, const wchar_t* programmaticId) {
  return {GuidOf(identity.classId), GuidOf(identity.interfaceId), name, programmaticId, identity,
          Class::MemberTable,       ControllerMaker::For<Class>()};
}

const std::array kClasses{
    Make<clsCredential>(kIdentities[0], L"clsCredential", L"qorCred.clsCredential"),
    Make<clsDirCode>(kIdentities[1], L"clsDirCode", L"qorCred.clsDirCode"),
    Make<clsDirCodeReport>(kIdentities[2], L"clsDirCodeReport", L"qorCred.clsDirCodeReport"),
    Make<clsCredentialReport>(kIdentities[3], L"clsCredentialReport",
                              L"qorCred.clsCredentialReport"),
};

}  // namespace

const GUID kTypeLibrary = GuidOf(kTypeLibraryId);

std::span<const ComClass> Classes() {
  return kClasses;
}

const ComClass* FindClass(REFCLSID id) {
  const auto found = std::find_if(kClasses.begin(), kClasses.end(),
                                  [&id](const ComClass& one) { return IsEqualCLSID(one.id, id); });
  return found == kClasses.end() ? nullptr : &*found;
}

}  // namespace qorcred::com
