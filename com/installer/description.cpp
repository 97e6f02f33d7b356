#include "com/installer/description.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <vector>

namespace qorcred::com {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLibraryFile = "qorCred.dll";

// Words that tell the installers apart for good: identifiers come from them.
std::string Family(const Installer& installer) {
  return std::string("qorCred ") + (installer.bitness == Bitness::k64 ? "64 bit" : "32 bit") +
         (installer.scope == Scope::kMachine ? " machine" : " user");
}

std::string_view ScopeWord(const Installer& installer) {
  return installer.scope == Scope::kMachine ? "perMachine" : "perUser";
}

std::string_view Root(const Installer& installer) {
  return installer.scope == Scope::kMachine ? "HKLM" : "HKCU";
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '\'':
        escaped += "&apos;";
        break;
      default:
        escaped += character;
    }
  }
  return escaped;
}

std::uint64_t Mixed(std::string_view text, std::uint64_t start) {
  std::uint64_t number = start;
  for (const char character : text) {
    number = (number ^ static_cast<unsigned char>(character)) * 0x100000001B3ULL;
    number ^= number >> 29U;
  }
  return number;
}

// In a value of an installer, square brackets are its own: those of the entries' texts do not
// occur.
std::string ValueOf(const RegistryEntry& entry) {
  switch (entry.content) {
    case Content::kFile:
      return "[#Library]";
    case Content::kFolder:
      return "[INSTALLFOLDER]";
    case Content::kText:
      break;
  }
  return entry.text;
}

class Writer {
 public:
  explicit Writer(const Installer& installer) : installer_(installer) {}

  std::string Write() {
    CollectFiles();
    Line("<?xml version='1.0' encoding='UTF-8'?>");
    Line("<Wix xmlns='http://schemas.microsoft.com/wix/2006/wi'>");
    WriteProduct();
    Line("</Wix>");
    return std::move(text_);
  }

 private:
  void Line(std::string_view line) { text_.append(line).append("\n"); }

  void CollectFiles() {
    for (const auto& entry : fs::recursive_directory_iterator(installer_.folder)) {
      if (!entry.is_regular_file()) continue;
      const fs::path below = entry.path().lexically_relative(installer_.folder);
      files_[below.parent_path().generic_string()].push_back(below.filename().string());
    }
    for (auto& [folder, names] : files_) std::sort(names.begin(), names.end());
  }

  void WriteProduct() {
    const std::string family = Family(installer_);
    const std::string product = family + " " + installer_.version;
    const bool is64 = installer_.bitness == Bitness::k64;
    Line("<Product Id='" + IdentifierOf(product) + "' Name='qorCred controllers (" +
         (is64 ? "64" : "32") + " bit" + (installer_.scope == Scope::kUser ? ", this user" : "") +
         ")' Version='" + installer_.version +
         "' Language='1033' Manufacturer='qorCred' UpgradeCode='" +
         IdentifierOf(family + " upgrades") + "'>");
    Line("<Package Id='" + IdentifierOf(product + " " + installer_.content) +
         "' InstallerVersion='200' Compressed='yes' InstallScope='" +
         std::string(ScopeWord(installer_)) + "'/>");
    Line("<Media Id='1' Cabinet='qorCred.cab' EmbedCab='yes'/>");
    Line("<MajorUpgrade DowngradeErrorMessage='A newer version of qorCred is installed.'/>");
    WriteFolders();
    Line("<Feature Id='All' Level='1'>");
    for (const std::string& component : components_) {
      Line("<ComponentRef Id='" + component + "'/>");
    }
    Line("</Feature>");
    Line("</Product>");
  }

  void WriteFolders() {
    const bool forUser = installer_.scope == Scope::kUser;
    const bool is64 = installer_.bitness == Bitness::k64;
    Line("<Directory Id='TARGETDIR' Name='SourceDir'>");
    if (forUser) {
      Line("<Directory Id='LocalAppDataFolder'><Directory Id='UserPrograms' Name='Programs'>");
    } else {
      Line(std::string("<Directory Id='") + (is64 ? "ProgramFiles64Folder" : "ProgramFilesFolder") +
           "'>");
    }
    // Both bitnesses may be there, also for one user.
    Line(std::string("<Directory Id='INSTALLFOLDER' Name='qorCred") +
         (forUser && !is64 ? " (32 bit)" : "") + "'>");
    WriteFolder("");
    WriteCommonEntries();
    Line("</Directory>");
    Line(forUser ? "</Directory></Directory>" : "</Directory>");
    Line("</Directory>");
  }

  // The files of a folder, then the folders in it.
  void WriteFolder(const std::string& folder) {
    const auto found = files_.find(folder);
    if (found != files_.end()) {
      for (const std::string& name : found->second) WriteFile(folder, name);
    }
    for (const std::string& child : ChildrenOf(folder)) {
      Line("<Directory Id='" + IdOf("Folder", child) + "' Name='" +
           Escaped(fs::path(child).filename().string()) + "'>");
      WriteFolder(child);
      Line("</Directory>");
    }
  }

  [[nodiscard]] std::vector<std::string> ChildrenOf(const std::string& folder) const {
    std::vector<std::string> children;
    for (const auto& [one, names] : files_) {
      for (fs::path path = one; !path.empty(); path = path.parent_path()) {
        if (path.parent_path().generic_string() != folder) continue;
        const std::string child = path.generic_string();
        if (children.empty() || children.back() != child) children.push_back(child);
      }
    }
    return children;
  }

  void WriteFile(const std::string& folder, const std::string& name) {
    const std::string below = folder.empty() ? name : folder + "/" + name;
    const bool isLibrary = below == kLibraryFile;
    BeginComponent(isLibrary ? "LibraryAndClasses" : IdOf("Component", below),
                   Family(installer_) + " file " + below, true);
    // The key of a file of the user's is a value of the user's, or another user's repair would look
    // for it in vain.
    const bool isKey = installer_.scope == Scope::kMachine;
    Line("<File Id='" + std::string(isLibrary ? "Library" : IdOf("File", below)) + "' Name='" +
         Escaped(name) + "' Source='" + Escaped((installer_.folder / below).generic_string()) +
         "'" + (isKey ? " KeyPath='yes'" : "") + "/>");
    if (!isKey) {
      WriteValue("Software\\qorCred\\" + Family(installer_), below, installer_.version, true);
    }
    if (isLibrary) WriteEntries(Share::kOwn);
    Line("</Component>");
  }

  // One component of the installers of both bitnesses, which goes with the last of them. It is a
  // 32-bit one in both: its entries stand where both bitnesses see them. Under Wine they do not, if
  // a 32-bit component has entered them; there the 64-bit installer enters them a second time
  // (tools/installers adds the condition, which wixl does not know).
  void WriteCommonEntries() {
    BeginComponent("Names", "qorCred names " + std::string(ScopeWord(installer_)), false);
    WriteEntries(Share::kCommon);
    Line("</Component>");
    if (installer_.bitness != Bitness::k64) return;
    BeginComponent("NamesUnderWine", Family(installer_) + " names under Wine", true);
    WriteEntries(Share::kCommon);
    Line("</Component>");
  }

  void BeginComponent(const std::string& id, const std::string& name, bool isOfBitness) {
    const bool is64 = isOfBitness && installer_.bitness == Bitness::k64;
    Line("<Component Id='" + id + "' Guid='" + IdentifierOf(name) + "' Win64='" +
         (is64 ? "yes" : "no") + "'>");
    components_.push_back(id);
  }

  void WriteEntries(Share share) {
    bool isKey = share == Share::kCommon;
    for (const RegistryEntry& entry : RegistrationTable(installer_.bitness)) {
      if (entry.share != share) continue;
      WriteValue("Software\\Classes\\" + entry.key, entry.name, ValueOf(entry), isKey);
      isKey = false;
    }
  }

  void WriteValue(const std::string& key, const std::string& name, const std::string& value,
                  bool isKey) {
    Line("<RegistryValue Root='" + std::string(Root(installer_)) + "' Key='" + Escaped(key) + "'" +
         (name.empty() ? "" : " Name='" + Escaped(name) + "'") + " Type='string' Value='" +
         Escaped(value) + "'" + (isKey ? " KeyPath='yes'" : "") + "/>");
  }

  static std::string IdOf(std::string_view kind, const std::string& name) {
    std::string id(kind);
    for (const char digit : IdentifierOf(name)) {
      if (digit != '{' && digit != '}' && digit != '-') id += digit;
    }
    return id;
  }

  const Installer& installer_;
  std::string text_;
  std::map<std::string, std::vector<std::string>> files_;  ///< by folder, "" is the first
  std::vector<std::string> components_;
};

}  // namespace

std::string IdentifierOf(std::string_view name) {
  std::uint64_t first = Mixed(name, 0xCBF29CE484222325ULL);
  std::uint64_t second = Mixed(name, first ^ 0x9E3779B97F4A7C15ULL);
  // Marked as made from a name, in its maker's own way.
  first = (first & ~0xF000ULL) | 0x8000ULL;
  second = (second & 0x3FFFFFFFFFFFFFFFULL) | 0x8000000000000000ULL;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%04X-%012llX}",
                static_cast<unsigned>(first >> 32U), static_cast<unsigned>(first >> 16U & 0xFFFFU),
                static_cast<unsigned>(first & 0xFFFFU), static_cast<unsigned>(second >> 48U),
                static_cast<unsigned long long>(second & 0xFFFFFFFFFFFFULL));
  return text.data();
}

std::string Describe(const Installer& installer) {
  return Writer(installer).Write();
}

}  // namespace qorcred::com
