// The controller as late-bound clients see it: its members by name and id, their arguments and what
// is handed back.
#include "tests/support/late_bound.h"

#include <array>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "tests/credentials/credential_fixture.h"

namespace qortest {
namespace {

using qorcred::Call;
using qorcred::ErrorNumber;
using qorcred::Get;
using qorcred::InvokeKind;
using qorcred::Missing;
using qorcred::Null;
using qorcred::ObjectRef;
using qorcred::Put;
using qorcred::Value;

class LateBound : public CredentialTest {};

TEST_F(LateBound, OffersItsMembersUnderFixedIds) {
  EXPECT_TRUE(SameLines(DescribedMembers(Controller()), R"~(
    1 gmobjCredentialScreen As Object
    2 pbRetrieveSchedules(ByRef objConn As Object, ByVal lngUnitKey As Long)
    3 pbRetrieveTenants(ByRef objConn As Object, ByVal lngUnitKey As Long)
    4 pbRetrieveSettingsFromUnit(ByRef objConn As Object, ByVal lngUnitKey As Long)
    5 pbSave(ByRef objConn As Object, ByVal lngUnitKey As Long, Optional ByVal blnIsTBL As Boolean = False, Optional ByVal blnEditCR As Boolean = False, Optional ByRef lngRID As Long = 0) As Boolean
    6 pbRetrieveCredentials(ByRef objConn As Object, ByVal lngUnitKey As Long, Optional ByVal lngRID As Long = -1, Optional ByVal lngPreviousRID As Long = 0)
    7 pbTransmitterCtls(ByVal blnEnable As Boolean)
    8 pbDelete(ByRef objConn As Object, ByVal lngUnitKey As Long, ByVal lngRID As Long) As Boolean
    9 pbUpdatePinNo(ByRef objConn As Object, ByVal lngPINNO As Long, ByVal lngUnitKey As Long) As Boolean
    10 pbRetrieveDoorDetails(ByRef objConn As Object, ByVal lngUnitKey As Long)
    11 pbBase64Dec(ByRef Base64String As String) As String
  )~"));
}

TEST_F(LateBound, TakesAndGivesItsScreenByName) {
  Put(Controller(), "gmobjCredentialScreen", ObjectRef());
  EXPECT_EQ(Controller().gmobjCredentialScreen(), nullptr);

  Put(Controller(), "GMOBJCREDENTIALSCREEN", Host().screen());

  EXPECT_EQ(Get(Controller(), "gmobjCredentialScreen"), Value(Host().screen()));
  EXPECT_EQ(ErrorOf([this] { Put(Controller(), "gmobjCredentialScreen", 5); }),
            static_cast<int>(ErrorNumber::kObjectRequired));
  EXPECT_EQ(Controller().gmobjCredentialScreen(), Host().screen());
}

TEST_F(LateBound, RunsAnOperationByNameInAnyCase) {
  Call(Controller(), "PBRETRIEVETENANTS", Connection(), kUnit);

  EXPECT_EQ(Host().controls().List("cboAssignedTo").count(), 1);
}

TEST_F(LateBound, GivesNothingBackFromAnOperationWithoutResult) {
  EXPECT_EQ(Call(Controller(), "pbRetrieveTenants", Connection(), kUnit), Value());
  EXPECT_EQ(Call(Controller(), "pbTransmitterCtls", true), Value());
}

TEST_F(LateBound, ConvertsArguments) {
  Call(Controller(), "pbRetrieveTenants", Connection(), "3");
  Call(Controller(), "pbRetrieveTenants", Connection(), 2.5);

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteSelect ").size(), 2U);
  EXPECT_NE(Host().transcript().StartingWith("ExecuteSelect ")[0].find("UnitKey=3 "),
            std::string::npos);
  EXPECT_NE(Host().transcript().StartingWith("ExecuteSelect ")[1].find("UnitKey=2 "),
            std::string::npos);
}

TEST_F(LateBound, RefusesArgumentsThatCannotBeConvertedBeforeItDoesAnything) {
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbRetrieveTenants", Connection(), "three"); }),
            static_cast<int>(ErrorNumber::kTypeMismatch));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbRetrieveTenants", Connection(), 3e9); }),
            static_cast<int>(ErrorNumber::kOverflow));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbRetrieveTenants", Connection(), Null{}); }),
            static_cast<int>(ErrorNumber::kInvalidUseOfNull));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbRetrieveTenants", 1, kUnit); }),
            static_cast<int>(ErrorNumber::kObjectRequired));

  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(LateBound, RaisesForAnUnknownMember) {
  for (const std::string_view member : {"pbSav", "pbSaveAll", "", "mblnEditCredential"}) {
    EXPECT_EQ(ErrorOf([&] { Call(Controller(), member, Connection(), kUnit); }),
              static_cast<int>(ErrorNumber::kUnknownMember))
        << member;
  }
  EXPECT_EQ(ErrorOf([this] { Put(Controller(), "pbSave", 1); }),
            static_cast<int>(ErrorNumber::kUnknownMember));
}

TEST_F(LateBound, RaisesForTooManyAndTooFewArguments) {
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbRetrieveTenants", Connection(), kUnit, 1); }),
            static_cast<int>(ErrorNumber::kWrongArgumentCount));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbTransmitterCtls"); }),
            static_cast<int>(ErrorNumber::kArgumentNotOptional));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbDelete", Connection(), kUnit); }),
            static_cast<int>(ErrorNumber::kArgumentNotOptional));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbDelete", Connection(), Missing{}, 17); }),
            static_cast<int>(ErrorNumber::kArgumentNotOptional));

  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(LateBound, TakesOmittedArgumentsOfARetrievalAsTheWholeList) {
  Call(Controller(), "pbRetrieveCredentials", Connection(), kUnit);
  Call(Controller(), "pbRetrieveCredentials", Connection(), kUnit, Missing{}, Missing{});
  Call(Controller(), "pbRetrieveCredentials", Connection(), kUnit, -1);

  const Lines selects = Host().transcript().StartingWith("ExecuteSelect ");
  ASSERT_EQ(selects.size(), 3U);
  EXPECT_EQ(selects[0].find("RID="), std::string::npos);
  EXPECT_EQ(selects[1], selects[0]);
  EXPECT_EQ(selects[2], selects[0]);
}

// The omitted previous row is 0 and not 1: the first row ever stored is not selected for it.
TEST_F(LateBound, SelectsNothingForAnOmittedPreviousRow) {
  Database().Select("FROM CREDENTIALBANK", {{kUnit, 1, 2, 700, 12, 5, 1, 4, "", 0}});

  Call(Controller(), "pbRetrieveCredentials", Connection(), kUnit);

  EXPECT_EQ(Host().controls().List("cboCredentials").selected(), -1);
}

TEST_F(LateBound, LeavesOutTheMiddleOfARetrieval) {
  Database().Select("FROM CREDENTIALBANK", {{kUnit, 17, 2, 700, 12, 5, 1, 4, "", 0}});

  Call(Controller(), "pbRetrieveCredentials", Connection(), kUnit, Missing{}, 17);

  EXPECT_EQ(Host().controls().List("cboCredentials").selected(), 1);
}

TEST_F(LateBound, TakesOmittedFlagsOfASaveAsFalse) {
  Screen().EnterSingle(kCard26, "10");

  EXPECT_EQ(Call(Controller(), "pbSave", Connection(), kUnit), Value(true));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert ").size(), 1U);
}

TEST_F(LateBound, HandsTheNewRowBackThroughTheArgument) {
  Screen().EnterRange(kCard26, "1", "3");
  std::array<Value, 5> arguments{Value(Connection()), Value(kUnit), Value(Missing{}), Value(false),
                                 Value(std::int32_t{0})};

  EXPECT_EQ(Controller().Invoke("pbSave", InvokeKind::kCall, arguments), Value(true));

  EXPECT_EQ(arguments[4], Value(std::int32_t{103}));
  EXPECT_EQ(arguments[0], Value(Connection()));
  EXPECT_EQ(arguments[1], Value(kUnit));
  EXPECT_EQ(arguments[2], Value(Missing{}));
}

TEST_F(LateBound, LeavesTheRowOfARefusedSaveAsItWas) {
  Screen().EnterSingle(kCard26, "");
  std::array<Value, 5> arguments{Value(Connection()), Value(kUnit), Value(false), Value(false),
                                 Value(std::int32_t{42})};

  EXPECT_EQ(Controller().Invoke("pbSave", InvokeKind::kCall, arguments), Value(false));

  EXPECT_EQ(arguments[4], Value(std::int32_t{42}));
}

TEST_F(LateBound, SavesAnEditedCredential) {
  Screen().ShowStored(1, 0);

  EXPECT_EQ(Call(Controller(), "pbSave", Connection(), kUnit, Missing{}, -1), Value(true));

  EXPECT_TRUE(Host().transcript().StartingWith("ExecuteInsert ").empty());
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate ").size(), 1U);
}

TEST_F(LateBound, DeletesAndRenumbers) {
  Screen().ShowStored(1, 0);

  EXPECT_EQ(Call(Controller(), "pbUpdatePinNo", Connection(), 4242, kUnit), Value(true));
  EXPECT_EQ(Call(Controller(), "pbUpdatePinNo", Connection(), 0, kUnit), Value(false));
  EXPECT_EQ(Call(Controller(), "pbDelete", Connection(), kUnit, 17), Value(true));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete "),
            Lines{"ExecuteDelete \"CREDENTIALBANK\" 17 -> 1"});
}

TEST_F(LateBound, ShowsTransmitterControlsForTrueOnly) {
  struct Case {
    Value flag;
    bool shown;
  };
  const std::array<Case, 6> cases{
      {{true, true}, {-1, true}, {"True", true}, {false, false}, {0, false}, {"False", false}}};
  for (const Case& one : cases) {
    Host().controls().Any("txtIDCode").SetVisible(!one.shown);

    Call(Controller(), "pbTransmitterCtls", one.flag);

    EXPECT_EQ(Host().controls().Any("txtIDCode").visible(), one.shown);
  }
}

TEST_F(LateBound, NeverChangesTheTextThatItDecodes) {
  std::array<Value, 1> arguments{Value("QUJD")};

  EXPECT_EQ(Controller().Invoke("pbBase64Dec", InvokeKind::kCall, arguments), Value("ABC"));

  EXPECT_EQ(arguments[0], Value("QUJD"));
}

}  // namespace
}  // namespace qortest
