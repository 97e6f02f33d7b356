#include "com/registration.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "com/module.h"
#include "com/registration_table.h"
#include "com/text.h"

namespace qorcred::com {

namespace {

constexpr Bitness kBitness = sizeof(void*) == 8 ? Bitness::k64 : Bitness::k32;
constexpr Bitness kOtherBitness = sizeof(void*) == 8 ? Bitness::k32 : Bitness::k64;
constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

/// A failed registry call, on its way to the entry point.
struct RegistryFailure {
  HRESULT code;
};

void Require(LSTATUS status) {
  if (status != ERROR_SUCCESS)
    throw RegistryFailure{HRESULT_FROM_WIN32(static_cast<DWORD>(status))};
}

bool IsMissing(LSTATUS status) {
  return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

/// An open key.
class Key {
 public:
  Key() = default;
  explicit Key(HKEY key) : key_(key) {}
  ~Key() {
    if (key_ != nullptr) RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  [[nodiscard]] HKEY get() const { return key_; }
  [[nodiscard]] HKEY* Receive() { return &key_; }

 private:
  HKEY key_ = nullptr;
};

HKEY RootOf(Audience audience) {
  return audience == Audience::kMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring ClassesPath(std::wstring_view below) {
  return std::wstring(L"Software\\Classes\\").append(below);
}

/// Writes and deletes below Software\Classes of one audience.
class ClassesKey {
 public:
  explicit ClassesKey(Audience audience) : root_(RootOf(audience)) {}

  /// Fails when keys cannot be made there.
  void RequireRights() const {
    Key key;
    Require(RegCreateKeyExW(root_, L"Software\\Classes", 0, nullptr, 0,
                            KEY_CREATE_SUB_KEY | KEY_SET_VALUE, nullptr, key.Receive(), nullptr));
  }

  /// Sets the key's default value, or the one called `name`.
  void Set(const std::wstring& path, const std::wstring& value,
           const wchar_t* name = nullptr) const {
    Key key;
    Require(RegCreateKeyExW(root_, ClassesPath(path).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                            key.Receive(), nullptr));
    Require(RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))));
  }

  /// Deletes a key with everything below it; one that is not there is no failure.
  void DeleteTree(const std::wstring& path) const {
    const LSTATUS status = RegDeleteTreeW(root_, ClassesPath(path).c_str());
    if (!IsMissing(status)) Require(status);
  }

  /// Deletes a key unless something stands below it.
  void DeleteIfEmpty(const std::wstring& path) const {
    Key key;
    const LSTATUS opened =
        RegOpenKeyExW(root_, ClassesPath(path).c_str(), 0, KEY_QUERY_VALUE, key.Receive());
    if (IsMissing(opened)) return;
    Require(opened);
    DWORD keys = 0;
    Require(RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, nullptr,
                             nullptr, nullptr, nullptr, nullptr));
    if (keys == 0) Require(RegDeleteKeyW(root_, ClassesPath(path).c_str()));
  }

  /// What may not be looked at counts as there.
  [[nodiscard]] bool Exists(const std::wstring& path, REGSAM view = 0) const {
    Key key;
    return !IsMissing(
        RegOpenKeyExW(root_, ClassesPath(path).c_str(), 0, KEY_QUERY_VALUE | view, key.Receive()));
  }

 private:
  HKEY root_;
};

std::wstring FolderOf(const std::wstring& file) {
  return file.substr(0, file.find_last_of(L'\\'));
}

std::wstring TextOf(const RegistryEntry& entry, const std::wstring& file) {
  switch (entry.content) {
    case Content::kFile:
      return file;
    case Content::kFolder:
      return FolderOf(file);
    case Content::kText:
      break;
  }
  return ToWide(entry.text);
}

void Enter(const ClassesKey& classes, const std::wstring& file) {
  for (const RegistryEntry& entry : RegistrationTable(kBitness)) {
    const std::wstring name = ToWide(entry.name);
    classes.Set(ToWide(entry.key), TextOf(entry, file), name.empty() ? nullptr : name.c_str());
  }
}

template <typename Body>
HRESULT Guard(Body&& body) noexcept {
  try {
    body();
    return S_OK;
  } catch (const RegistryFailure& failure) {
    return failure.code;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

/// Takes one step after the other, whatever becomes of them, and keeps the first failure.
class Steps {
 public:
  template <typename Body>
  void Take(Body&& body) noexcept {
    const HRESULT result = Guard(body);
    if (SUCCEEDED(first_)) first_ = result;
  }
  [[nodiscard]] HRESULT first() const { return first_; }

 private:
  HRESULT first_ = S_OK;
};

bool IsClassOfAnyBitness(const ClassesKey& classes, const Identity& identity) {
  const std::wstring path = ToWide(ClassKey(identity));
  return classes.Exists(path) || classes.Exists(path, kOtherView);
}

bool IsLibraryOfOtherBitness(const ClassesKey& classes) {
  return classes.Exists(ToWide(LibraryFileKey(kOtherBitness)));
}

// The names stay with a class that stays: the other bitness's, or one that could not be removed.
void RemoveClass(const ClassesKey& classes, const Identity& identity, Steps& steps) noexcept {
  steps.Take([&] { classes.DeleteTree(ToWide(ClassKey(identity))); });
  steps.Take([&] { classes.DeleteTree(ToWide(InterfaceKey(identity))); });
  for (const auto name : {VersionedProgId, ProgId}) {
    steps.Take([&] {
      if (!IsClassOfAnyBitness(classes, identity)) classes.DeleteTree(ToWide(name(identity.name)));
    });
  }
}

void RemoveTypeLibrary(const ClassesKey& classes) {
  classes.DeleteTree(ToWide(LibraryFileKey(kBitness)));
  if (IsLibraryOfOtherBitness(classes)) return;
  classes.DeleteTree(ToWide(LibraryVersionKey()));
  classes.DeleteIfEmpty(ToWide(LibraryKey()));
}

// Whether anything is there that RemoveClass() takes away.
bool IsClassEntered(const ClassesKey& classes, const Identity& identity) {
  if (classes.Exists(ToWide(ClassKey(identity))) ||
      classes.Exists(ToWide(InterfaceKey(identity)))) {
    return true;
  }
  return !IsClassOfAnyBitness(classes, identity) &&
         (classes.Exists(ToWide(ProgId(identity.name))) ||
          classes.Exists(ToWide(VersionedProgId(identity.name))));
}

// Whether anything is there that RemoveTypeLibrary() takes away.
bool IsTypeLibraryEntered(const ClassesKey& classes) {
  return classes.Exists(
      ToWide(IsLibraryOfOtherBitness(classes) ? LibraryFileKey(kBitness) : LibraryVersionKey()));
}

bool IsAnythingEntered(const ClassesKey& classes) {
  return IsTypeLibraryEntered(classes) ||
         std::any_of(kIdentities.begin(), kIdentities.end(), [&classes](const Identity& identity) {
           return IsClassEntered(classes, identity);
         });
}

}  // namespace

HRESULT Register(Audience audience) noexcept {
  const ClassesKey classes(audience);
  bool mayBeTakenBack = false;
  const HRESULT result = Guard([&] {
    classes.RequireRights();
    const std::wstring file = ModulePath();
    mayBeTakenBack = !IsAnythingEntered(classes);
    Enter(classes, file);
  });
  if (FAILED(result) && mayBeTakenBack) (void)Unregister(audience);
  return result;
}

HRESULT Unregister(Audience audience) noexcept {
  const ClassesKey classes(audience);
  Steps steps;
  for (const Identity& identity : kIdentities) RemoveClass(classes, identity, steps);
  steps.Take([&] { RemoveTypeLibrary(classes); });
  return steps.first();
}

}  // namespace qorcred::com
