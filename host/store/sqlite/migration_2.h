// The fields of the directory-code report.
#pragma once

#include <string_view>

namespace qorhost::sqlite {

// A migration stays as it is: what stores already have is told here, whatever new ones may get. The
// report knows its fields by these identities. A row that somebody put there before stays as it
// is, and a field that has a row under another identity gets no second one. The fields that are not
// displayed come last: the grid's columns and the report's match by position. Widths are in twips.
inline constexpr std::string_view kMigration2 = R"sql(
WITH Field (RID, Name, Caption, Width, Display, Seq) AS (VALUES
  (51, 'DirectoryCode', 'Directory Code', 1400, 1, 1),
  (52, 'PhoneNumber', 'Phone No.', 1700, 1, 2),
  (53, 'Extension', 'Phone No. Extension', 1800, 1, 3),
  (54, 'TimeDelay', 'Phone No. Delay', 1500, 1, 4),
  (65, 'DisplayName', 'Display Name', 2200, 1, 5),
  (62, 'Active', 'Directory Status', 1500, 1, 6),
  (63, 'StartDate', 'Directory Start Date', 1900, 1, 7),
  (64, 'EndDate', 'Directory End Date', 1900, 1, 8),
  (55, 'IsDNDChecked', 'Do Not Disturb', 1400, 1, 9),
  (56, 'DNDScheduleID', 'DND Schedule', 1600, 1, 10),
  (57, 'IsCFChecked', 'Call Forwarding', 1400, 1, 11),
  (58, 'CFScheduleID', 'CF Schedule', 1600, 1, 12),
  (59, 'CFPhoneNumber', 'CF Phone No.', 1700, 1, 13),
  (60, 'CFExtension', 'CF Extension', 1400, 1, 14),
  (61, 'CFTimeDelay', 'CF Time Delay', 1400, 1, 15),
  (66, 'ShowDisplayName', 'Show Display Name', 1700, 0, 16),
  (67, 'ShowDirectoryCode', 'Show Directory Code', 1800, 0, 17)
)
INSERT OR IGNORE INTO TenantSelectionFields
  (RID, FieldName, FieldNameDisplay, DisplayWidth, GridType, Display, DisplaySeq)
SELECT RID, 'DirectoryCode.' || Name, Caption, Width, 0, Display, Seq FROM Field
WHERE ('DirectoryCode.' || Name) COLLATE DESKTOP NOT IN (
  SELECT FieldName FROM TenantSelectionFields WHERE FieldName IS NOT NULL)
ORDER BY RID;
)sql";

}  // namespace qorhost::sqlite
