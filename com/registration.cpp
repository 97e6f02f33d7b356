#include "com/registration.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "com/classes.h"
#include "com/module.h"

namespace qorcred::com {

namespace {

constexpr std::wstring_view kLibraryVersion = L"1.0";

// A type library is found by the bitness of its file.
constexpr std::wstring_view kPlatform = sizeof(void*) == 8 ? L"win64" : L"win32";
constexpr std::wstring_view kOtherPlatform = sizeof(void*) == 8 ? L"win32" : L"win64";
// Below Software\Classes the system keeps CLSID and Interface apart for each bitness, and
// everything else only once: a component's own keys there are its own, names and the type library
// are shared.
constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

// Automation's own proxy for interfaces that consist of IDispatch's calls alone.
constexpr const wchar_t* kDispatchProxy = L"{00020420-0000-0000-C000-000000000046}";

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

std::wstring GuidText(REFGUID guid) {
  std::array<wchar_t, 39> text{};  // with the braces and the zero at its end
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return text.data();
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

std::wstring ClassPath(const ComClass& comClass) {
  return L"CLSID\\" + GuidText(comClass.id);
}

std::wstring InterfacePath(const ComClass& comClass) {
  return L"Interface\\" + GuidText(comClass.dispinterface);
}

std::wstring ProgId(const ComClass& comClass) {
  return comClass.programmaticId;
}

std::wstring VersionedProgId(const ComClass& comClass) {
  return ProgId(comClass) + L".1";
}

std::wstring LibraryPath() {
  return L"TypeLib\\" + GuidText(kTypeLibrary);
}

std::wstring LibraryVersionPath() {
  return LibraryPath() + L"\\" + std::wstring(kLibraryVersion);
}

std::wstring FolderOf(const std::wstring& file) {
  return file.substr(0, file.find_last_of(L'\\'));
}

void EnterClass(const ClassesKey& classes, const ComClass& comClass, const std::wstring& file) {
  const std::wstring path = ClassPath(comClass);
  classes.Set(path, comClass.description);
  classes.Set(path + L"\\InprocServer32", file);
  classes.Set(path + L"\\InprocServer32", L"Apartment", L"ThreadingModel");
  classes.Set(path + L"\\ProgID", VersionedProgId(comClass));
  classes.Set(path + L"\\VersionIndependentProgID", ProgId(comClass));
  classes.Set(path + L"\\TypeLib", GuidText(kTypeLibrary));
  classes.Set(path + L"\\Version", std::wstring(kLibraryVersion));
  classes.Set(path + L"\\Programmable", L"");

  for (const std::wstring& name : {ProgId(comClass), VersionedProgId(comClass)}) {
    classes.Set(name, comClass.description);
    classes.Set(name + L"\\CLSID", GuidText(comClass.id));
  }
  classes.Set(ProgId(comClass) + L"\\CurVer", VersionedProgId(comClass));
}

// With it the class's own interface can be reached from other apartments.
void EnterInterface(const ClassesKey& classes, const ComClass& comClass) {
  const std::wstring path = InterfacePath(comClass);
  classes.Set(path, std::wstring(L"_") + comClass.name);
  classes.Set(path + L"\\ProxyStubClsid32", kDispatchProxy);
  classes.Set(path + L"\\TypeLib", GuidText(kTypeLibrary));
  classes.Set(path + L"\\TypeLib", std::wstring(kLibraryVersion), L"Version");
}

void EnterTypeLibrary(const ClassesKey& classes, const std::wstring& file) {
  const std::wstring path = LibraryVersionPath();
  classes.Set(path, L"qorCred controllers");
  classes.Set(path + L"\\0\\" + std::wstring(kPlatform), file);
  classes.Set(path + L"\\FLAGS", L"0");
  classes.Set(path + L"\\HELPDIR", FolderOf(file));
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

bool IsClassOfAnyBitness(const ClassesKey& classes, const ComClass& comClass) {
  const std::wstring path = ClassPath(comClass);
  return classes.Exists(path) || classes.Exists(path, kOtherView);
}

bool IsLibraryOfOtherBitness(const ClassesKey& classes) {
  return classes.Exists(LibraryVersionPath() + L"\\0\\" + std::wstring(kOtherPlatform));
}

// The names stay with a class that stays: the other bitness's, or one that could not be removed.
void RemoveClass(const ClassesKey& classes, const ComClass& comClass, Steps& steps) noexcept {
  steps.Take([&] { classes.DeleteTree(ClassPath(comClass)); });
  steps.Take([&] { classes.DeleteTree(InterfacePath(comClass)); });
  for (const auto name : {VersionedProgId, ProgId}) {
    steps.Take([&] {
      if (!IsClassOfAnyBitness(classes, comClass)) classes.DeleteTree(name(comClass));
    });
  }
}

void RemoveTypeLibrary(const ClassesKey& classes) {
  const std::wstring version = LibraryVersionPath();
  classes.DeleteTree(version + L"\\0\\" + std::wstring(kPlatform));
  if (IsLibraryOfOtherBitness(classes)) return;
  classes.DeleteTree(version);
  classes.DeleteIfEmpty(LibraryPath());
}

// Whether anything is there that RemoveClass() takes away.
bool IsClassEntered(const ClassesKey& classes, const ComClass& comClass) {
  if (classes.Exists(ClassPath(comClass)) || classes.Exists(InterfacePath(comClass))) return true;
  return !IsClassOfAnyBitness(classes, comClass) &&
         (classes.Exists(ProgId(comClass)) || classes.Exists(VersionedProgId(comClass)));
}

// Whether anything is there that RemoveTypeLibrary() takes away.
bool IsTypeLibraryEntered(const ClassesKey& classes) {
  const std::wstring version = LibraryVersionPath();
  return classes.Exists(
      IsLibraryOfOtherBitness(classes) ? version + L"\\0\\" + std::wstring(kPlatform) : version);
}

bool IsAnythingEntered(const ClassesKey& classes) {
  const std::span<const ComClass> all = Classes();
  return IsTypeLibraryEntered(classes) ||
         std::any_of(all.begin(), all.end(), [&classes](const ComClass& comClass) {
           return IsClassEntered(classes, comClass);
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
    for (const ComClass& comClass : Classes()) {
      EnterClass(classes, comClass, file);
      EnterInterface(classes, comClass);
    }
    EnterTypeLibrary(classes, file);
  });
  if (FAILED(result) && mayBeTakenBack) (void)Unregister(audience);
  return result;
}

HRESULT Unregister(Audience audience) noexcept {
  const ClassesKey classes(audience);
  Steps steps;
  for (const ComClass& comClass : Classes()) RemoveClass(classes, comClass, steps);
  steps.Take([&] { RemoveTypeLibrary(classes); });
  return steps.first();
}

}  // namespace qorcred::com
