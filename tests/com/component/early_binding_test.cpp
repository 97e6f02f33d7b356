// Programs that bind early pass the type library's defaults for what they leave out: the host's
// objects see the same calls as from one that calls by names and leaves the arguments out.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "com/text.h"
#include "tests/com/client/client_fixture.h"
#include "tests/com/component/early_client.h"

namespace qortest {
namespace {

using qorcred::com::ToUtf8;

using Lines = std::vector<std::string>;

std::string TextOf(const Variant& value) {
  switch (V_VT(&value)) {
    case VT_EMPTY:
      return "nothing";
    case VT_DISPATCH:
      return "an object";
    case VT_BSTR:
      return ToUtf8(TextIn(value));
    default:
      return std::to_string(NumberIn(value));
  }
}

/// A host whose database answers every query with one row, and whose objects write down what is
/// done to them.
class RecordingHost {
 public:
  explicit RecordingHost(const Row& row) { manager_.state->answer = MakeTable({row}); }

  [[nodiscard]] const FakeManager& manager() const { return manager_; }
  /// The statements, then what was done to the objects.
  [[nodiscard]] Lines lines() const {
    Lines all;
    for (const std::wstring& statement : manager_.state->statements) {
      all.push_back(ToUtf8(statement));
    }
    all.insert(all.end(), lines_->begin(), lines_->end());
    return all;
  }

  /// An object that has these members. Each takes any arguments, or a value put, and gives its own.
  [[nodiscard]] Variant Make(const std::vector<std::pair<const wchar_t*, Variant>>& members) const {
    const ComPtr<FakeObject> object = FakeObject::Make();
    for (const auto& [name, value] : members) {
      object->On(name, [lines = lines_, name = name, value = value](const FakeCall& call) {
        std::string line = ToUtf8(name);
        for (std::size_t at = 0; at < call.arguments.size(); ++at) {
          line += " " + TextOf(call.Argument(at));
        }
        lines->push_back(line);
        return call.Return(value);
      });
    }
    return Variant(object);
  }
  [[nodiscard]] Variant MakeListBox() const {
    return Make({{L"Clear", {}},
                 {L"AddItem", {}},
                 {L"NewIndex", 1},
                 {L"ItemData", {}},
                 {L"ListIndex", {}}});
  }

 private:
  FakeManager manager_;
  std::shared_ptr<Lines> lines_ = std::make_shared<Lines>();
};

// An object that has these others as properties.
Variant ScreenWith(const std::vector<std::pair<const wchar_t*, Variant>>& controls) {
  const ComPtr<FakeObject> screen = FakeObject::Make();
  for (const auto& [name, control] : controls) screen->Property(name, control);
  return Variant(screen);
}

Variant Connection() {
  return Variant(FakeObject::Make());
}

/// What a host sees of a call, and what its caller gets.
struct Seen {
  Lines lines;
  std::vector<SeenCall> calls;  ///< of the database manager
  std::string result;
};

class EarlyBinding : public ComTest {
 protected:
  /// Both kinds of clients do what `use` says, with a host of their own.
  template <typename Use>
  static void ExpectSame(const wchar_t* programmaticId, const Row& row, const Use& use,
                         const Lines& lines, const std::string& result) {
    const Seen late = SeenOf<Client>(programmaticId, row, use);
    const Seen early = SeenOf<EarlyClient>(programmaticId, row, use);
    EXPECT_EQ(late.lines, lines);
    EXPECT_EQ(early.lines, lines);
    EXPECT_EQ(early.calls, late.calls);
    EXPECT_EQ(late.result, result);
    EXPECT_EQ(early.result, result);
  }

 private:
  template <typename AnyClient, typename Use>
  static Seen SeenOf(const wchar_t* programmaticId, const Row& row, const Use& use) {
    const RecordingHost host(row);
    const auto offered = Offer(host.manager());
    const AnyClient client(programmaticId);
    const Outcome outcome = use(client, host);
    EXPECT_EQ(outcome.code, S_OK);
    return {host.lines(), host.manager().object->calls(), TextOf(outcome.result)};
  }
};

// The rows of both lists have the RID 0: a default other than 0 for the row to select is seen.

TEST_F(EarlyBinding, ListsEveryCredential) {
  const std::string query =
      "SELECT "
      "UnitKey,RID,CredentialType,PINNo,FacilityCode,IDCode,SequenceNumber,ButtonNumber,"
      "LASTMODIFIEDDATE,DOORCODE FROM CREDENTIALBANK WHERE UnitKey=7 ORDER BY "
      "CredentialType,PINNo,FacilityCode,IDCode,ButtonNumber,SequenceNumber";
  ExpectSame(
      kCredential, {7, 0, 1, 12},
      [](const auto& client, const RecordingHost& host) {
        client.PutReference(L"gmobjCredentialScreen",
                            ScreenWith({{L"cboCredentials", host.MakeListBox()}}));
        return client.Call(L"pbRetrieveCredentials", Connection(), Variant(7));
      },
      {query, "Clear", "AddItem <Add New>", "NewIndex", "ItemData 1 -100",
       "AddItem Standard 26-Bit Card-12", "NewIndex", "ItemData 1 0", "ListIndex 1"},
      "nothing");
}

TEST_F(EarlyBinding, ListsEveryDirectoryCode) {
  const std::string query =
      "SELECT "
      "UNITKEY,RID,DIRECTORYCODE,PHONENUMBER,EXTENSION,TIMEDELAY,DNDSCHEDULEID,ISDNDCHECKED,"
      "CFSCHEDULEID,ISCFCHECKED,CFPHONENUMBER,CFEXTENSION,CFTIMEDELAY,LASTMODIFIEDDATE,ACTIVE,"
      "STARTDATE,ENDDATE,DISPLAYNAME,SHOWDISPLAYNAME,SHOWDIRECTORYCODE FROM DIRECTORYCODE WHERE "
      "UNITKEY=7 AND DIRECTORYCODE >=0  ORDER BY DIRECTORYCODE";
  ExpectSame(
      kDirCode, {7, 0, 12},
      [](const auto& client, const RecordingHost& host) {
        client.PutReference(L"mobjDirCodeScreen",
                            ScreenWith({{L"cbodirectorycode", host.MakeListBox()},
                                        {L"txtdirectorycode", ScreenWith({{L"MaxLength", 4}})}}));
        return client.Call(L"pbRetrieveDirCodes", Connection(), Variant(7));
      },
      {query, "Clear", "AddItem <Add New>", "NewIndex", "ItemData 1 -100", "AddItem 0012",
       "NewIndex", "ItemData 1 0", "ListIndex 1"},
      "nothing");
}

TEST_F(EarlyBinding, ListsTenantsByName) {
  const std::string query =
      "SELECT TenantID,LastName,FirstName,MiddleInitial FROM Tenants WHERE UnitKey=7 AND "
      "Resident=0  AND DirectoryCode=0 ORDER BY LastName,FirstName,MiddleInitial ";
  ExpectSame(
      kDirCode, {41, L"Winter", L"Ada", L"K"},
      [](const auto& client, const RecordingHost& host) {
        client.PutReference(L"mobjDirCodeScreen",
                            ScreenWith({{L"lstTenants", host.MakeListBox()}}));
        return client.Call(L"pbRetrieveTenants", Connection(), Variant(7));
      },
      {query, "Clear", "AddItem Winter Ada K", "NewIndex", "ItemData 1 41"}, "-1");
}

TEST_F(EarlyBinding, ReadsTheLengthOfEntryCodes) {
  ExpectSame(
      kDirCodeReport, {4},
      [](const auto& client, const RecordingHost&) {
        return client.Call(L"pbGetEntryLength", Connection());
      },
      {"SELECT MaxDigitsEntryCode FROM UnitSettings WHERE UnitKey = 0"}, "4");
}

// An object has no default: one that is left out is told as such, in a variant by reference.
TEST_F(EarlyBinding, LetsTheGridMakeTheValueItems) {
  const std::string query =
      "SELECT FieldNameDisplay, DisplayWidth, FieldName FROM TenantSelectionFields WHERE FieldName "
      "LIKE 'DirectoryCode._%'  AND Display = 1 ORDER BY DisplaySeq";
  ExpectSame(
      kDirCodeReport, {L"Directory Status", 100, L"DirectoryCode.Active"},
      [](const auto& client, const RecordingHost& host) {
        const Variant items = host.Make({{L"Add", {}}, {L"Presentation", {}}, {L"Translate", {}}});
        const Variant column = ScreenWith(
            {{L"Caption", L""}, {L"Width", 0}, {L"Visible", false}, {L"ValueItems", items}});
        const Variant item = host.Make({{L"Value", {}}, {L"DisplayValue", {}}});
        const Variant grid = host.Make({{L"Columns", host.Make({{L"", column}, {L"Count", 1}})},
                                        {L"NewValueItem", item},
                                        {L"Array", {}},
                                        {L"ReBind", {}},
                                        {L"Refresh", {}}});
        return client.Call(L"pvDirCodeReportResult", Variant(7), Connection(), grid,
                           Variant(L"SELECT ROWS"), Connection());
      },
      {query, "SELECT ROWS", "Columns", "Count", " 0", "Count", " 0", "NewValueItem", "Value -1",
       "DisplayValue Active", "Add an object", "Value 0", "DisplayValue Inactive", "Add an object",
       "Presentation 1", "Translate -1", "Array an object", "ReBind", "Refresh"},
      "nothing");
}

}  // namespace
}  // namespace qortest
