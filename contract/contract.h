// What a host has to offer the controllers, operation by operation, as data: the documents are made
// from it, and the tests hold it against what the operations touch. Names, types and defaults of
// members stand in the member tables (frame/member_table.h) and are not said again here.
#pragma once

#include <string_view>
#include <vector>

namespace qorcred::contract {

/// Which way the content of an argument goes. An argument that is declared ByRef and never changed
/// goes in.
enum class Direction { kIn, kOut, kInAndOut };

struct Argument {
  std::string_view name;
  std::string_view meaning;
  Direction direction = Direction::kIn;
};

/// A variable, a control, a component or another object of the host, and what of it is used.
struct Part {
  /// One name, or several with ", " between that are used in the same way. Components go by their
  /// identifiers, other objects by the names of kConnection and those behind it.
  std::string_view names;
  /// "Clear()" is a call, "ItemData(index) get put" a property that is read and written, "get"
  /// alone the default member or the variable itself. In the calls of components and connections V
  /// stands behind a variable that is not looked at afterwards, B behind one that is read back; all
  /// others are values.
  std::vector<std::string_view> members = {};
};

inline constexpr std::string_view kConnection = "connection";
inline constexpr std::string_view kConnectionScreen = "connection screen";
inline constexpr std::string_view kTable = "result table";
inline constexpr std::string_view kGrid = "report grid";
inline constexpr std::string_view kValueItem = "value item";
inline constexpr std::string_view kSurroundings = "surroundings";

/// A table of the data store and its columns, with ", " between.
struct Table {
  std::string_view name;
  std::string_view read = {};  ///< selected, compared, sorted by
  std::string_view written = {};
  bool loses = false;  ///< rows are deleted
};

/// A message box; {words} stand for what differs.
struct Message {
  int style = 64;
  std::string_view text;
};

/// What comes of an operation when the host lacks a component that it uses.
struct Absence {
  std::string_view component;
  /// True: the controller, which keeps one for its life, could not create it then. False: the
  /// operation cannot create it.
  bool sinceCreation = false;
  int failure = 0;               ///< what the log is told: 91, 429; 0 when nothing fails
  std::string_view result = {};  ///< empty without a result
  std::string_view effect;       ///< what was done by then, and what is not
  std::string_view use = {};     ///< where it differs: which use of the operation
};

struct Operation {
  std::string_view name;
  std::string_view purpose;
  std::vector<Argument> arguments = {};
  std::string_view result = {};    ///< what it tells; empty without a result
  std::string_view failures = {};  ///< empty: trapped, the result is what it was by then
  /// Operations of the same class that it runs, with all that they touch.
  std::vector<std::string_view> runs = {};
  std::vector<std::string_view> creates = {};  ///< components, by their identifiers
  std::vector<Part> screen = {};
  std::vector<Part> others = {};
  std::vector<Table> tables = {};
  std::string_view handedStatement = {};  ///< the argument whose statement it runs
  std::vector<Message> messages = {};
  std::vector<Absence> absences = {};
};

struct Property {
  std::string_view name;
  std::string_view meaning;
};

/// The name of the operation that stands for the creation of a controller.
inline constexpr std::string_view kCreation = "creation";

struct Class {
  std::string_view name;
  std::string_view purpose;
  std::vector<Property> properties;
  std::vector<Operation> operations;
};

[[nodiscard]] Class Credential();
[[nodiscard]] Class DirCode();
[[nodiscard]] Class DirCodeReport();
[[nodiscard]] Class CredentialReport();

}  // namespace qorcred::contract
