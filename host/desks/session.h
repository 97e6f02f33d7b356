// A store opened for work at desks, and the host that controllers see on it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "frame/date.h"
#include "host/components/store_host.h"
#include "host/desks/attendance.h"
#include "host/store/store_connection.h"
#include "trace/traced_controller.h"
#include "trace/traced_host.h"

namespace qorhost {

/// What a front end hands in. Everything may be left out.
struct Surroundings {
  MessageBox messageBox;  ///< none: notices are closed with OK, questions answered No
  Clock clock = SystemClock();
  Author author;                        ///< signs what is stored
  Patience patience;                    ///< with others who write
  std::function<void()> pendingEvents;  ///< lets them run when a controller waits for them
  qorcred::trace::TraceSink trace;      ///< none: nothing is traced
  bool tracedLater = false;             ///< whether TraceTo() will be called
};

struct UnitName {
  std::int32_t key = 0;
  std::string name;
};

/// A controller as a desk holds it.
template <typename Class>
using Controlled = qorcred::trace::TracedController<Class>;

/// Keeps everything that controllers need alive: the connection, and the host, behind its decorator
/// when there is a trace. One thread.
class DeskSession {
 public:
  DeskSession(std::unique_ptr<Store> store, Surroundings surroundings);
  DeskSession(const DeskSession&) = delete;
  DeskSession& operator=(const DeskSession&) = delete;

  /// The host and connection to hand to controllers.
  [[nodiscard]] qorcred::Host& host();
  /// The host for what a desk does itself: that is no call of a controller's.
  [[nodiscard]] qorcred::Host& ownHost() { return storeHost_; }
  [[nodiscard]] qorcred::ObjectRef connection() const { return connection_; }
  /// Begins another trace, or ends the one there is with an empty sink. No desk may be open: each
  /// holds controllers of the trace that was there when it opened. For a session that began with a
  /// trace, or tracedLater.
  void TraceTo(qorcred::trace::TraceSink sink);
  /// Writes the trace; null without one.
  [[nodiscard]] const std::shared_ptr<qorcred::trace::Tracer>& tracer() const { return tracer_; }

  /// What is damaged in the store's file, a line each.
  [[nodiscard]] std::vector<std::string> Damages() { return connection_->store().Damages(); }
  /// The store for what a desk asks itself: statements of the host's own in a trace.
  [[nodiscard]] SqlSession& sql() { return connection_->session(); }
  /// From now on operations are only tried: each tells what it would change and stores nothing.
  void OnlyTry() { sql().work().OnlyTry(); }
  /// As long as it lives, all that is read is of one state of the store, whatever others store
  /// meanwhile; nobody waits for it. Nothing may be written meanwhile.
  [[nodiscard]] Undoable OneState() { return Undoable(sql().look()); }
  [[nodiscard]] Attendance& attendance() { return attendance_; }
  [[nodiscard]] qorcred::Date Today() { return qorcred::DayOf(surroundings_.clock()); }
  [[nodiscard]] std::vector<UnitName> Units();

 private:
  [[nodiscard]] StoreHost::Services MakeServices();
  [[nodiscard]] std::unique_ptr<Store> Watched(std::unique_ptr<Store> store);

  Surroundings surroundings_;
  std::shared_ptr<qorcred::trace::Tracer> tracer_;
  std::shared_ptr<StoreConnection> connection_;
  Attendance attendance_;
  StoreHost storeHost_;
  std::unique_ptr<qorcred::trace::TracedHost> tracedHost_;
};

}  // namespace qorhost
