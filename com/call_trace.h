// The trace of a process: written when the environment variable QORCRED_TRACE names a file.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "com/controller_room.h"
#include "frame/member_table.h"
#include "trace/traced_host.h"
#include "trace/tracer.h"

namespace qorcred::com {

/// What one thread writes. Lines of a second thread begin with "[2] ", and so on: each thread's are
/// a trace of its own.
class ThreadTrace {
 public:
  ThreadTrace(Host& host, trace::TraceSink sink);

  [[nodiscard]] trace::Tracer& tracer() const { return *tracer_; }
  [[nodiscard]] Host& host() { return host_; }

 private:
  std::shared_ptr<trace::Tracer> tracer_;
  trace::TracedHost host_;
};

/// That of the calling thread; null unless traces are written. The variable is looked at once in a
/// process. The file's name gets the number of the process in front of its ending, and a file that
/// is there is written on. Failures end the trace and nothing else.
[[nodiscard]] std::shared_ptr<ThreadTrace> TraceOfThread() noexcept;

/// "C:\traces\calls.txt" of process 4711: "C:\traces\calls.4711.txt".
[[nodiscard]] std::wstring TraceFileOf(std::wstring_view named, unsigned long process);

/// A controller, traced or not.
class TraceableController {
 public:
  /// Makes it in `room`, which outlives it. Raises what the maker raises.
  TraceableController(std::string_view className, const ControllerMaker& maker, void* room,
                      Host& host);
  ~TraceableController();
  TraceableController(const TraceableController&) = delete;
  TraceableController& operator=(const TraceableController&) = delete;

  /// Runs the member as Member::run does.
  Value Run(const Member& member, InvokeKind kind, Arguments arguments) {
    if (traced_ != nullptr) [[unlikely]]
      return RunTraced(member, kind, arguments);
    return member.run(*controller_, kind, arguments);
  }

 private:
  Value RunTraced(const Member& member, InvokeKind kind, Arguments arguments);

  struct Traced {
    std::shared_ptr<ThreadTrace> trace;
    std::string name;
  };

  std::unique_ptr<Traced> traced_;  // null unless traces are written
  ControllerInPlace controller_;
};

}  // namespace qorcred::com
