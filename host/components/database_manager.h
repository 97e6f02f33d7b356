// qorDBI.clsDBManager: statements in the dialect, without exceptions.
#pragma once

#include "frame/object.h"

namespace qorhost {

/// Late-bound members (every argument list starts with the connection):
/// ExecuteSelect(conn, sql, flag, text) -> table; ExecuteScalar(conn, sql, flag, text) -> value;
/// ExecuteUpdate(conn, sql, table, flag, text[, lastModified[, rid]]) -> rows;
/// ExecuteInsert(conn, sql, lastModified, table, flag, text) -> RID;
/// ExecuteDelete(conn, table, rid, flag, text), ExecuteQueryDelete(conn, sql, flag, text) -> rows;
/// pbGetRowIDStringConstant, pbGetLastModifiedDateStringConstant.
///
/// A statement that fails or is of another kind than the operation's name says raises nothing: flag
/// and text, cleared at each call, are set and the result is empty (one cell "", Empty, 0). Only an
/// unusable connection and a wrong number of arguments raise.
class DatabaseManagerObject final : public qorcred::Object {
 public:
  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  qorcred::Value ExecuteSelect(qorcred::Arguments arguments);
  qorcred::Value ExecuteScalar(qorcred::Arguments arguments);
  qorcred::Value ExecuteUpdate(qorcred::Arguments arguments);
  qorcred::Value ExecuteInsert(qorcred::Arguments arguments);
  qorcred::Value ExecuteDelete(qorcred::Arguments arguments);
  qorcred::Value ExecuteQueryDelete(qorcred::Arguments arguments);
  qorcred::Value RowIdText(qorcred::Arguments arguments);
  qorcred::Value LastModifiedText(qorcred::Arguments arguments);
};

}  // namespace qorhost
