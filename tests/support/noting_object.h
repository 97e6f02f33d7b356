// The host's objects and services as a controller gets them when what it touches is noted.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"
#include "frame/object.h"

namespace qortest {

/// Names of the parts of a host, beside the programmatic identifiers of components.
namespace part {
inline constexpr std::string_view kScreen = "screen";
inline constexpr std::string_view kConnectionScreen = "connection screen";
inline constexpr std::string_view kConnection = "connection";
inline constexpr std::string_view kTable = "result table";
inline constexpr std::string_view kGrid = "report grid";
inline constexpr std::string_view kValueItem = "value item";
inline constexpr std::string_view kSurroundings = "surroundings";
inline constexpr std::string_view kCreated = "created";    ///< a component, by its identifier
inline constexpr std::string_view kArgument = "argument";  ///< that came back changed: its name
inline constexpr std::string_view kMessage = "message";    ///< the style, a blank and the text
inline constexpr std::string_view kStatement = "statement";
inline constexpr std::string_view kDeletion = "deletion";  ///< of a row by its identity: the table
}  // namespace part

/// `object`, which is that part of the host, with every call noted; null stays null. What it gives
/// back is noted as well: the controls of a screen, the parts of a grid, the tables of a manager.
/// Receivers of calls get their own objects, never one that notes.
[[nodiscard]] qorcred::ObjectRef Noted(qorcred::ObjectRef object, std::string_view partName);

/// The object behind a noting one; any other as it is.
[[nodiscard]] qorcred::ObjectRef Bare(const qorcred::ObjectRef& object);

/// Bare() of the object in `value`, if it holds one.
void MakeBare(qorcred::Value& value);

/// The part of the host that the argument or property called `name` hands over; empty for a name
/// that stands for none.
[[nodiscard]] std::string_view PartOf(std::string_view name);

/// A host over another one, which must outlive it.
class NotingHost final : public qorcred::Host {
 public:
  explicit NotingHost(qorcred::Host& inner) : inner_(inner) {}

  qorcred::ObjectRef CreateComponent(std::string_view programmaticId) override;
  qorcred::MessageButton ShowMessage(std::string_view text, qorcred::MessageStyle style,
                                     std::string_view title) override;
  qorcred::Date Now() override;
  void LetEventsRun() override;
  void ReportFailure(std::string_view operation,
                     const qorcred::RuntimeError& failure) noexcept override {
    inner_.ReportFailure(operation, failure);
  }
  std::string DateText(qorcred::Date date) override;
  std::vector<std::uint8_t> TextToAnsi(std::string_view text) override;
  std::string AnsiToText(std::span<const std::uint8_t> bytes) override;

 private:
  qorcred::Host& inner_;
};

}  // namespace qortest
