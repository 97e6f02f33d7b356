// The store's side of a merge with a unit.
#include <algorithm>

#include "dircodes/cls_dir_code.h"
#include "frame/date.h"
#include "frame/sql_text.h"
#include "frame/trap.h"

namespace qorcred {

namespace {

/// The unit drops a link on which it hears nothing for longer.
constexpr std::int64_t kSecondsBetweenPings = 6;

/// Columns of the table for a merge: unit key, RID and code.
constexpr std::int32_t kLastMergeColumn = 2;

}  // namespace

bool clsDirCode::pbFetchDirForMerge(const ObjectRef& objConn, std::int32_t lngUnitKey,
                                    ObjectRef& arrXDBDirCode) {
  bool done = false;
  Trap(host_, "pbFetchDirForMerge", [&] {
    const TableView codes = Manager().ExecuteSelect(
        objConn,
        Concat("SELECT UNITKEY,RID,DIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=", lngUnitKey,
               " AND DIRECTORYCODE >=0 ORDER BY DIRECTORYCODE"),
        error_);
    arrXDBDirCode = codes.reference();
    const TableView previous = Manager().ExecuteSelect(
        objConn,
        Concat("SELECT UNITKEY,RID,OLDDIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY=", lngUnitKey,
               " AND DIRECTORYCODE >=0 AND OLDDIRECTORYCODE<> NULL  ORDER BY OLDDIRECTORYCODE"),
        error_);
    if (!previous.HasNoRows()) AppendPreviousCodes(previous, codes);
    done = true;
  });
  return done;
}

void clsDirCode::AppendPreviousCodes(const TableView& previous, const TableView& codes) {
  Date lastSign = host_.Now();
  const std::int32_t lowRow = codes.LowerRow();
  const std::int32_t lowColumn = codes.LowerColumn();
  // A query without rows left a single column.
  const std::int32_t highColumn = std::max(codes.UpperColumn(), kLastMergeColumn);
  std::int32_t target = codes.UpperRow();

  for (std::int32_t row = previous.LowerRow(), last = previous.UpperRow(); row <= last; ++row) {
    if (SecondsBetween(lastSign, host_.Now()) >= kSecondsBetweenPings) {
      host_.LetEventsRun();
      ConnectionManager(connectionManager_).Ping();
      lastSign = host_.Now();
    }
    ++target;
    codes.ReDim(lowRow, target, lowColumn, highColumn);
    for (std::int32_t column = 0; column <= kLastMergeColumn; ++column) {
      codes.SetCell(target, column, previous.Cell(row, column));
    }
  }
}

}  // namespace qorcred
