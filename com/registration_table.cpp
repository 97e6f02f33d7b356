#include "com/registration_table.h"

namespace qorcred::com {

namespace {

constexpr std::string_view kLibraryVersion = "1.0";
constexpr std::string_view kLibraryName = "qorCred controllers";

// Automation's own proxy for interfaces that consist of IDispatch's calls alone.
constexpr std::string_view kDispatchProxy = "{00020420-0000-0000-C000-000000000046}";

class Table {
 public:
  void Text(std::string key, std::string_view text, std::string_view name = "") {
    entries_.push_back(
        {std::move(key), std::string(name), Content::kText, std::string(text), share_});
  }
  void Path(std::string key, Content content) {
    entries_.push_back({std::move(key), "", content, "", share_});
  }
  /// For the entries that follow.
  void Share(Share share) { share_ = share; }

  [[nodiscard]] std::vector<RegistryEntry> Take() { return std::move(entries_); }

 private:
  std::vector<RegistryEntry> entries_;
  com::Share share_ = com::Share::kOwn;
};

void AddClass(Table& table, const Identity& identity) {
  const std::string key = ClassKey(identity);
  table.Share(Share::kOwn);
  table.Text(key, identity.description);
  table.Path(key + "\\InprocServer32", Content::kFile);
  table.Text(key + "\\InprocServer32", "Apartment", "ThreadingModel");
  table.Text(key + "\\ProgID", VersionedProgId(identity.name));
  table.Text(key + "\\VersionIndependentProgID", ProgId(identity.name));
  table.Text(key + "\\TypeLib", kTypeLibraryId);
  table.Text(key + "\\Version", kLibraryVersion);
  table.Text(key + "\\Programmable", "");

  table.Share(Share::kCommon);
  for (const std::string& name : {ProgId(identity.name), VersionedProgId(identity.name)}) {
    table.Text(name, identity.description);
    table.Text(name + "\\CLSID", identity.classId);
  }
  table.Text(ProgId(identity.name) + "\\CurVer", VersionedProgId(identity.name));
}

// With it the class's own interface can be reached from other apartments.
void AddInterface(Table& table, const Identity& identity) {
  const std::string key = InterfaceKey(identity);
  table.Share(Share::kOwn);
  table.Text(key, "_" + std::string(identity.name));
  table.Text(key + "\\ProxyStubClsid32", kDispatchProxy);
  table.Text(key + "\\TypeLib", kTypeLibraryId);
  table.Text(key + "\\TypeLib", kLibraryVersion, "Version");
}

void AddTypeLibrary(Table& table, Bitness bitness) {
  table.Share(Share::kCommon);
  table.Text(LibraryVersionKey(), kLibraryName);
  table.Share(Share::kOwn);
  table.Path(LibraryFileKey(bitness), Content::kFile);
  table.Share(Share::kCommon);
  table.Text(LibraryVersionKey() + "\\FLAGS", "0");
  table.Path(LibraryVersionKey() + "\\HELPDIR", Content::kFolder);
}

}  // namespace

std::string ProgId(std::string_view className) {
  return "qorCred." + std::string(className);
}

std::string VersionedProgId(std::string_view className) {
  return ProgId(className) + ".1";
}

std::string ClassKey(const Identity& identity) {
  return "CLSID\\" + std::string(identity.classId);
}

std::string InterfaceKey(const Identity& identity) {
  return "Interface\\" + std::string(identity.interfaceId);
}

std::string LibraryKey() {
  return "TypeLib\\" + std::string(kTypeLibraryId);
}

std::string LibraryVersionKey() {
  return LibraryKey() + "\\" + std::string(kLibraryVersion);
}

std::string LibraryFileKey(Bitness bitness) {
  return LibraryVersionKey() + (bitness == Bitness::k64 ? "\\0\\win64" : "\\0\\win32");
}

std::vector<RegistryEntry> RegistrationTable(Bitness bitness) {
  Table table;
  for (const Identity& identity : kIdentities) {
    AddClass(table, identity);
    AddInterface(table, identity);
  }
  AddTypeLibrary(table, bitness);
  return table.Take();
}

}  // namespace qorcred::com
