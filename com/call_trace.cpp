#include "com/call_trace.h"

#include <windows.h>

#include <array>
#include <map>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "com/dispatch_object.h"
#include "com/windows_host.h"
#include "trace/trace_text.h"
#include "trace/traced_call.h"

namespace qorcred::com {

namespace {

constexpr wchar_t kVariable[] = L"QORCRED_TRACE";

/// What the variable holds; empty when it is not set.
std::wstring NamedFile() {
  std::array<wchar_t, 32768> text{};  // no variable holds more
  const DWORD length =
      GetEnvironmentVariableW(kVariable, text.data(), static_cast<DWORD>(text.size()));
  return length < text.size() ? std::wstring(text.data(), length) : std::wstring();
}

/// Writes whole lines behind what a file holds.
class TraceFile {
 public:
  explicit TraceFile(const std::wstring& name)
      : file_(CreateFileW(name.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                          nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~TraceFile() {
    if (isOpen()) CloseHandle(file_);
  }
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  [[nodiscard]] bool isOpen() const { return file_ != INVALID_HANDLE_VALUE; }
  /// Throws where the line cannot be written as a whole, and from then on: what came behind a gap
  /// would be read wrongly.
  void Write(const std::string& line) {
    DWORD written = 0;
    whole_ =
        whole_ &&
        WriteFile(file_, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) != 0 &&
        written == line.size();
    if (!whole_) throw std::runtime_error("the trace cannot be written");
  }

 private:
  HANDLE file_;
  bool whole_ = true;
};

const void* IdentityOf(const Object& object) {
  const auto* outside = dynamic_cast<const DispatchObject*>(&object);
  return outside == nullptr ? nullptr : outside->dispatch().get();
}

/// The traces of a process, by thread.
class Traces {
 public:
  Traces() {
    const std::wstring named = NamedFile();
    if (named.empty()) return;
    auto file = std::make_unique<TraceFile>(TraceFileOf(named, GetCurrentProcessId()));
    if (file->isOpen()) file_ = std::move(file);
  }

  [[nodiscard]] bool areWritten() const { return file_ != nullptr; }

  std::shared_ptr<ThreadTrace> OfThread(DWORD thread) {
    const std::lock_guard<std::mutex> locked(mutex_);
    std::shared_ptr<ThreadTrace>& trace = threads_[thread];
    if (trace == nullptr) {
      const std::size_t number = threads_.size();
      std::string prefix = number == 1 ? "" : "[" + std::to_string(number) + "] ";
      trace = std::make_shared<ThreadTrace>(
          TheHost(), [this, prefix = std::move(prefix)](std::string_view line) {
            WriteLine(prefix + std::string(line) + "\n");
          });
    }
    return trace;
  }

 private:
  void WriteLine(const std::string& line) {
    const std::lock_guard<std::mutex> locked(mutex_);
    file_->Write(line);
  }

  std::mutex mutex_;
  std::unique_ptr<TraceFile> file_;
  std::map<DWORD, std::shared_ptr<ThreadTrace>> threads_;
};

/// As long as the library is loaded.
Traces& TheTraces() {
  static Traces traces;
  return traces;
}

}  // namespace

ThreadTrace::ThreadTrace(Host& host, trace::TraceSink sink)
    : tracer_(std::make_shared<trace::Tracer>(std::move(sink), IdentityOf)), host_(host, tracer_) {}

std::shared_ptr<ThreadTrace> TraceOfThread() noexcept {
  try {
    Traces& traces = TheTraces();
    return traces.areWritten() ? traces.OfThread(GetCurrentThreadId()) : nullptr;
  } catch (...) {
    return nullptr;
  }
}

std::wstring TraceFileOf(std::wstring_view named, unsigned long process) {
  const std::size_t folder = named.find_last_of(L"\\/:");
  const std::size_t dot = named.rfind(L'.');
  const bool hasEnding =
      dot != std::wstring_view::npos && (folder == std::wstring_view::npos || dot > folder);
  const std::size_t end = hasEnding ? dot : named.size();
  std::wstring file(named.substr(0, end));
  file += L"." + std::to_wstring(process);
  file += named.substr(end);
  return file;
}

TraceableController::TraceableController(std::string_view className, const ControllerMaker& maker,
                                         void* room, Host& host) {
  std::shared_ptr<ThreadTrace> trace = TraceOfThread();
  if (trace == nullptr) {
    controller_.reset(maker.make(room, host));
    return;
  }
  trace::Tracer& tracer = trace->tracer();
  traced_ = std::make_unique<Traced>(Traced{std::move(trace), tracer.NewName(className)});
  tracer.Begin("new " + traced_->name);
  try {
    controller_.reset(maker.make(room, traced_->trace->host()));
    tracer.End("");
  } catch (...) {
    tracer.End(trace::SpelledFailure(CurrentFailure()));
    throw;
  }
}

Value TraceableController::RunTraced(const Member& member, InvokeKind kind, Arguments arguments) {
  return trace::RunTraced(traced_->trace->tracer(), traced_->name, *controller_, member, kind,
                          arguments);
}

TraceableController::~TraceableController() {
  if (traced_ == nullptr) return;
  try {
    traced_->trace->tracer().Begin("Release " + traced_->name);
    controller_.reset();
    traced_->trace->tracer().End("");
  } catch (...) {
    // Memory that is short: the controller goes without its line.
    return;
  }
}

}  // namespace qorcred::com
