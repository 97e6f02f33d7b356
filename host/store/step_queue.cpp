#include "host/store/step_queue.h"

namespace qorhost {

const std::shared_ptr<const dialect::AddedRow>& StepQueue::FormOfStep() {
  static const auto form = [] {
    const dialect::Table* const table = dialect::FindTable("ProgramSteps");
    auto row = std::make_shared<dialect::AddedRow>();
    row->table = table;
    for (const char* const column : {"UnitKey", "Kind", "SubjectRID", "Code", "QueuedAt"}) {
      row->cells.push_back({dialect::FindColumn(*table, column), std::nullopt});
    }
    row->cells.push_back({dialect::FindColumn(*table, "Sent"), qorcred::Value(0)});
    return std::shared_ptr<const dialect::AddedRow>(std::move(row));
  }();
  return form;
}

StepQueue::StepValues StepQueue::ValuesOfStep(std::int32_t unitKey, std::string_view kind,
                                              std::int32_t subjectRid, std::string_view code,
                                              std::string_view queuedAt) {
  return {unitKey, kind, subjectRid,
          code.empty() ? qorcred::Value(qorcred::Null{}) : qorcred::Value(code), queuedAt};
}

}  // namespace qorhost
