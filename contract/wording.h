// What the descriptions of several operations have in common.
#pragma once

#include <string_view>

#include "contract/contract.h"

namespace qorcred::contract {

inline constexpr std::string_view kManager = "qorDBI.clsDBManager";
inline constexpr std::string_view kStepSender = "qorSPS.clsSendProgSteps";
inline constexpr std::string_view kTenants = "qorTent.clsTenant";
inline constexpr std::string_view kApplication = "qorAppln.clsApplication";
inline constexpr std::string_view kLink = "qorCommn.clsConnectionManager";

// How components are called.
inline constexpr std::string_view kRowIdText = "pbGetRowIDStringConstant()";
inline constexpr std::string_view kLastModifiedText = "pbGetLastModifiedDateStringConstant()";
inline constexpr std::string_view kSelect =
    "ExecuteSelect(conn V, sql V, errorFlag B, errorText B)";
inline constexpr std::string_view kScalar =
    "ExecuteScalar(conn V, sql V, errorFlag B, errorText B)";
inline constexpr std::string_view kInsert =
    "ExecuteInsert(conn V, sql V, lastModified, table, errorFlag B, errorText B)";
inline constexpr std::string_view kUpdate =
    "ExecuteUpdate(conn V, sql V, table, errorFlag B, errorText B)";
inline constexpr std::string_view kUpdateOfARow =
    "ExecuteUpdate(conn V, sql V, table, errorFlag B, errorText B, lastModified, rid)";
inline constexpr std::string_view kDelete =
    "ExecuteDelete(conn V, table, rid V, errorFlag B, errorText B)";
inline constexpr std::string_view kQueryDelete =
    "ExecuteQueryDelete(conn V, sql V, errorFlag B, errorText B)";
inline constexpr std::string_view kUnitStatus =
    "pbGetUnitStatus(conn V, unitKey B, status V, text4 V, text5 V, credentials B, entryCodes B, "
    "directoryCodes B, text9 V)";
inline constexpr std::string_view kProgramTenant =
    "pvCreateProgramSteps(conn V, unitKey V, tenant V)";
inline constexpr std::string_view kProgramCode = "pbGenDirCodePrgStep(conn V, unitKey B, rid)";

// How result tables are used.
inline constexpr std::string_view kCell = "(row, column) get";
inline constexpr std::string_view kPutCell = "(row, column) put";
inline constexpr std::string_view kFirst = "LowerBound(dimension) get";
inline constexpr std::string_view kLast = "UpperBound(dimension) get";
inline constexpr std::string_view kReDim = "ReDim(lowRow, highRow, lowColumn, highColumn)";

// What the surroundings give.
inline constexpr std::string_view kNow = "Now()";
inline constexpr std::string_view kDateText = "DateText(date)";
inline constexpr std::string_view kToAnsi = "TextToAnsi(text)";
inline constexpr std::string_view kFromAnsi = "AnsiToText(bytes)";

// Arguments.
inline constexpr Argument kConn{"objConn",
                                "the open connection; goes to the components and is not looked at"};
inline constexpr Argument kCon{"objCon",
                               "the open connection; goes to the components and is not looked at"};
inline constexpr Argument kUnit{"lngUnitKey", "key of the unit that is being worked on"};

inline Operation DecodeBase64() {
  return {
      .name = "pbBase64Dec",
      .purpose = "Decodes a Base64 text, for example UNITTYPES.TOTAL, in the ANSI code page.",
      .arguments = {{"Base64String", "the text"}},
      .result = "the decoded text",
      .failures =
          "Raised: 6 for a wrong character at the start of a group, 9 for an empty text or "
          "a length that is no multiple of 4.",
      .others = {{kSurroundings, {kToAnsi, kFromAnsi}}},
  };
}

}  // namespace qorcred::contract
