// What the columns of the reports are called, and the headings of the files that an import reads:
// a report that was saved can be imported again.
#pragma once

#include <string_view>

namespace qorhost {

/// The directory-code report. A store has these captions as rows of its own
/// (TenantSelectionFields), which migrations put there and its owner may change; files keep to
/// these.
namespace dir_code_caption {
inline constexpr std::string_view kCode = "Directory Code";
inline constexpr std::string_view kPhone = "Phone No.";
inline constexpr std::string_view kExtension = "Phone No. Extension";
inline constexpr std::string_view kDelay = "Phone No. Delay";
inline constexpr std::string_view kDisplayName = "Display Name";
inline constexpr std::string_view kStatus = "Directory Status";
inline constexpr std::string_view kActiveWord = "Active";
inline constexpr std::string_view kInactiveWord = "Inactive";
inline constexpr std::string_view kStart = "Directory Start Date";
inline constexpr std::string_view kEnd = "Directory End Date";
inline constexpr std::string_view kDnd = "Do Not Disturb";
inline constexpr std::string_view kDndSchedule = "DND Schedule";
inline constexpr std::string_view kForwarding = "Call Forwarding";
inline constexpr std::string_view kCfSchedule = "CF Schedule";
inline constexpr std::string_view kCfPhone = "CF Phone No.";
inline constexpr std::string_view kCfExtension = "CF Extension";
inline constexpr std::string_view kCfDelay = "CF Time Delay";
inline constexpr std::string_view kShowName = "Show Display Name";
inline constexpr std::string_view kShowCode = "Show Directory Code";
}  // namespace dir_code_caption

/// The credential report.
namespace credential_caption {
inline constexpr std::string_view kType = "Credential Type";
inline constexpr std::string_view kNumber = "Card Number";
inline constexpr std::string_view kFacility = "Facility Code";
inline constexpr std::string_view kIdCode = "ID Code";
inline constexpr std::string_view kSequence = "Sequence Number";
inline constexpr std::string_view kButton = "Button Number";
inline constexpr std::string_view kAssignedTo = "Assigned To";
inline constexpr std::string_view kRid = "RID";
inline constexpr std::string_view kTenantRid = "Tenant RID";
}  // namespace credential_caption

}  // namespace qorhost
