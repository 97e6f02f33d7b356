// qorSPS.clsSendProgSteps: programming steps of directory codes.
#pragma once

#include "frame/object.h"

namespace qorhost {

/// Late-bound members, each with (conn, unitKey, rid of the DirectoryCode row):
/// pbGenDirCodePrgStep queues the step that programs the row;
/// pbGenChgDirCodePrgStep the step that changes its code from the one that the unit has;
/// pbGenDelDirCodePrgStep the step that deletes that code from the unit, and withdraws what is
/// still to be sent for the row; pbDeleteDirCodePrgStep only withdraws: the unit never had the row.
/// A step that waits unsent already moves to the end of the queue. The last member,
/// pbDeleteDirCodePrgStepExists(conn, unitKey, code), tells whether an unsent step deletes that
/// code.
class StepSenderObject final : public qorcred::Object {
 public:
  qorcred::Value Invoke(std::string_view member, qorcred::InvokeKind kind,
                        qorcred::Arguments arguments) override;

 private:
  qorcred::Value ProgramCode(qorcred::Arguments arguments);
  qorcred::Value ChangeCode(qorcred::Arguments arguments);
  qorcred::Value DeleteCode(qorcred::Arguments arguments);
  qorcred::Value WithdrawCode(qorcred::Arguments arguments);
  qorcred::Value DeletionExists(qorcred::Arguments arguments);
};

}  // namespace qorhost
