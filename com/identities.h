// What the component's classes are known by, in words that every compiler reads: also the one that
// makes the installers, on whatever system.
#pragma once

#include <array>
#include <string_view>

namespace qorcred::com {

/// The identifiers of one class, with braces. They never change.
struct Identity {
  std::string_view classId;
  std::string_view interfaceId;
  std::string_view name;  ///< "clsCredential"
  std::string_view description;
};

inline constexpr std::array<Identity, 4> kIdentities{{
    {"{0D5B98BD-B7DA-4381-90FB-09B3C40361CC}", "{A92AD42F-F836-4150-9B79-C785C98A1DB4}",
     "clsCredential", "Controller of the credential screen"},
    {"{27263EE8-0AC4-479E-ADFA-C73EACE5C9EF}", "{F4A13986-E4A3-47ED-BC91-C499EB22E1BF}",
     "clsDirCode", "Controller of the directory-code screen"},
    {"{94F4BCCB-3E4F-4739-8744-4293A6D2E28A}", "{DE658116-4341-4CAA-9F34-0420C11BDCC0}",
     "clsDirCodeReport", "Controller of the directory-code report screen"},
    {"{186411D4-3819-4472-9894-E6C69944880D}", "{3E1E7847-16A4-4C61-9B60-BB05F7C59BE7}",
     "clsCredentialReport", "Controller of the credential report screen"},
}};

inline constexpr std::string_view kTypeLibraryId = "{15454B9D-F853-42C9-81E6-2264AACD34E3}";

}  // namespace qorcred::com
