// The controller as late-bound clients see it: its members by name and id, their arguments and what
// is handed back.
#include "tests/support/late_bound.h"

#include <array>
#include <string>
#include <string_view>

#include "frame/runtime_error.h"
#include "tests/dircodes/dir_code_fixture.h"

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
using qorcred::StringArray;
using qorcred::Value;

class LateBoundDirCode : public DirCodeTest {};

TEST_F(LateBoundDirCode, OffersItsMembersUnderFixedIds) {
  EXPECT_TRUE(SameLines(DescribedMembers(Controller()), R"~(
    1 mobjDirCodeScreen As Object
    2 mfrmConnectionScreen As Object
    3 pbSave(ByRef objConn As Object, ByVal lngUnitKey As Long, Optional ByVal blnEditDir As Boolean = False, Optional ByRef lngRID As Long = 0, Optional ByVal prevDirCodeIndex As Long = 0) As Boolean
    4 pbRetrieveDirCodes(ByRef objConn As Object, ByVal lngUnitKey As Long, Optional ByVal lngRID As Long = -1, Optional ByVal lngOldValue As Long = 0)
    5 pbDelete(ByRef objConn As Object, ByVal lngUnitKey As Long, ByVal lngRID As Long, Optional ByVal blnDontDisplayMessage As Boolean = False, Optional ByVal blnValidate As Boolean = False) As Boolean
    6 pbRetrieveTenants(ByVal objConn As Object, ByVal lngUnitKey As Long, Optional ByVal lngDirCode As Long = 0, Optional ByVal blnDIsplayName As Boolean = False) As Boolean
    7 pbUpdateDirCode(ByRef objConn As Object, ByVal lngUnitKey As Long, ByVal strDirCode As String) As Boolean
    8 pbRetrieveSchedules(ByRef objConn As Object, ByVal lngUnitKey As Long)
    9 pbRetrieveSettingsFromUnit(ByRef objConn As Object, ByVal lngUnitKey As Long)
    10 pbMergeSave(ByRef objConn As Object, ByVal lngUnitKey As Long, ByVal strMode As String, ByRef strDirCodeDetails As String(), Optional ByVal lngRID As Long = 0) As Boolean
    11 pbFetchDirForMerge(ByRef objConn As Object, ByVal lngUnitKey As Long, ByRef arrXDBDirCode As Object) As Boolean
    12 pbBase64Dec(ByRef Base64String As String) As String
  )~"));
}

TEST_F(LateBoundDirCode, TakesAndGivesItsScreensByName) {
  struct Screens {
    std::string_view property;
    std::string_view otherCase;
    ObjectRef screen;
  };
  const std::array<Screens, 2> all{
      {{"mobjDirCodeScreen", "MOBJDIRCODESCREEN", Host().screen()},
       {"mfrmConnectionScreen", "MFRMCONNECTIONSCREEN", Host().connectionScreen()}}};
  for (const Screens& one : all) {
    Put(Controller(), one.property, ObjectRef());
    EXPECT_EQ(Get(Controller(), one.property), Value(ObjectRef()));

    Put(Controller(), one.otherCase, one.screen);

    EXPECT_EQ(Get(Controller(), one.property), Value(one.screen));
    EXPECT_EQ(ErrorOf([&] { Put(Controller(), one.property, 5); }),
              static_cast<int>(ErrorNumber::kObjectRequired));
    EXPECT_EQ(Get(Controller(), one.property), Value(one.screen));
  }
}

TEST_F(LateBoundDirCode, GivesNothingBackFromAnOperationWithoutResult) {
  Database().Select("FROM UnitSettings", {{4, false, 3, Null{}, Null{}}});

  EXPECT_EQ(Call(Controller(), "PBRETRIEVESCHEDULES", Connection(), kUnit), Value());
  EXPECT_EQ(Call(Controller(), "pbRetrieveSettingsFromUnit", Connection(), kUnit), Value());
  EXPECT_EQ(Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit), Value());

  EXPECT_EQ(Host().controls().List("cboSchedules").count(), 2);
  EXPECT_EQ(Host().controls().Box("txtdirectorycode").maxLength(), 4);
  EXPECT_EQ(Host().controls().List("cbodirectorycode").count(), 1);
}

TEST_F(LateBoundDirCode, LetsTheFailureOfAResultTableThrough) {
  EXPECT_EQ(
      ErrorOf([this] { Call(Controller(), "pbRetrieveSettingsFromUnit", Connection(), kUnit); }),
      static_cast<int>(ErrorNumber::kIndexOutOfRange));
}

TEST_F(LateBoundDirCode, TakesOmittedArgumentsOfTheTenantsAsTheRowZeroByName) {
  EXPECT_EQ(Call(Controller(), "pbRetrieveTenants", Connection(), kUnit), Value(false));
  EXPECT_EQ(Call(Controller(), "pbRetrieveTenants", Connection(), kUnit, Missing{}, Missing{}),
            Value(false));
  Database().Select("FROM Tenants", {{55, "Doe"}});
  EXPECT_EQ(Call(Controller(), "pbRetrieveTenants", Connection(), kUnit, Missing{}, true),
            Value(true));

  const Lines selects = Host().transcript().StartingWith("ExecuteSelect ");
  ASSERT_EQ(selects.size(), 3U);
  EXPECT_NE(selects[0].find("LastName"), std::string::npos);
  EXPECT_NE(selects[0].find("DirectoryCode=0 "), std::string::npos);
  EXPECT_EQ(selects[1], selects[0]);
  EXPECT_NE(selects[2].find("NameAtUnit"), std::string::npos);
  EXPECT_NE(selects[2].find("DirectoryCode=0 "), std::string::npos);
}

TEST_F(LateBoundDirCode, TakesOmittedArgumentsOfARetrievalAsTheWholeList) {
  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit);
  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit, Missing{}, Missing{});
  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit, -1);

  const Lines selects = Host().transcript().StartingWith("ExecuteSelect ");
  ASSERT_EQ(selects.size(), 3U);
  EXPECT_EQ(selects[0].find("RID="), std::string::npos);
  EXPECT_EQ(selects[1], selects[0]);
  EXPECT_EQ(selects[2], selects[0]);
}

TEST_F(LateBoundDirCode, LeavesOutTheMiddleOfARetrieval) {
  Database().Select("FROM DIRECTORYCODE", {{kUnit, 17, 12}});

  Call(Controller(), "pbRetrieveDirCodes", Connection(), kUnit, Missing{}, 17);

  EXPECT_EQ(Host().controls().List("cbodirectorycode").selected(), 1);
}

TEST_F(LateBoundDirCode, SavesANewCodeWhenTheFlagIsOmittedAndHandsTheRowBack) {
  Screen().EnterNew("12");
  std::array<Value, 5> arguments{Value(Connection()), Value(kUnit), Value(Missing{}),
                                 Value(std::int32_t{0}), Value(Missing{})};

  EXPECT_EQ(Controller().Invoke("pbSave", InvokeKind::kCall, arguments), Value(true));

  EXPECT_EQ(arguments[0], Value(Connection()));
  EXPECT_EQ(arguments[1], Value(kUnit));
  EXPECT_EQ(arguments[2], Value(Missing{}));
  EXPECT_EQ(arguments[3], Value(std::int32_t{101}));
  EXPECT_EQ(arguments[4], Value(Missing{}));
}

TEST_F(LateBoundDirCode, SavesWithTheConnectionAndTheUnitAlone) {
  Screen().EnterNew("12");

  EXPECT_EQ(Call(Controller(), "pbSave", Connection(), kUnit), Value(true));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteInsert ").size(), 1U);
}

TEST_F(LateBoundDirCode, LeavesTheRowOfARefusedSaveAsItWas) {
  Screen().EnterNew("");
  std::array<Value, 4> arguments{Value(Connection()), Value(kUnit), Value(false),
                                 Value(std::int32_t{42})};

  EXPECT_EQ(Controller().Invoke("pbSave", InvokeKind::kCall, arguments), Value(false));

  EXPECT_EQ(arguments[3], Value(std::int32_t{42}));
}

TEST_F(LateBoundDirCode, SavesAnEditedCodeFromItsPlaceInTheList) {
  Screen().ShowStored();

  EXPECT_EQ(Call(Controller(), "pbSave", Connection(), kUnit, true, Missing{}, 2), Value(true));

  const Lines updates = Host().transcript().StartingWith("ExecuteUpdate ");
  ASSERT_EQ(updates.size(), 1U);
  EXPECT_NE(updates[0].find("SET DIRECTORYCODE=34,"), std::string::npos);
}

TEST_F(LateBoundDirCode, DeletesAndRenumbers) {
  Screen().ShowStored();
  Host().script().questionAnswer = qorcred::MessageButton::kYes;

  EXPECT_EQ(Call(Controller(), "pbUpdateDirCode", Connection(), kUnit, 77), Value(true));
  EXPECT_EQ(Call(Controller(), "pbUpdateDirCode", Connection(), kUnit, ""), Value(false));
  EXPECT_EQ(Call(Controller(), "pbDelete", Connection(), kUnit, 17), Value(false));
  EXPECT_EQ(Call(Controller(), "pbDelete", Connection(), kUnit, 18, Missing{}, true), Value(true));

  EXPECT_EQ(Host().transcript().StartingWith("ExecuteDelete "),
            (Lines{"ExecuteDelete \"DIRECTORYCODE\" 17 -> 1",
                   "ExecuteDelete \"DIRECTORYCODE\" 18 -> 1"}));
}

TEST_F(LateBoundDirCode, HandsTheConvertedDetailsBackThroughTheArgument) {
  StringArray details(24);
  details[4] = "12";
  details[10] = "1";
  StringArray converted = details;
  converted[10] = "True";
  converted[18] = "False";
  converted[20] = "False";
  std::array<Value, 5> arguments{Value(Connection()), Value(kUnit), Value("Update"), Value(details),
                                 Value(std::int32_t{17})};

  EXPECT_EQ(Controller().Invoke("pbMergeSave", InvokeKind::kCall, arguments), Value(true));

  EXPECT_EQ(arguments[3], Value(converted));
  EXPECT_EQ(arguments[2], Value("Update"));
  EXPECT_EQ(Host().transcript().StartingWith("ExecuteUpdate ").size(), 1U);
}

TEST_F(LateBoundDirCode, HandsDetailsThatAreTooShortBackAsFarAsTheyWereConverted) {
  StringArray details(19);
  details[18] = "1";
  std::array<Value, 4> arguments{Value(Connection()), Value(kUnit), Value("Insert"),
                                 Value(details)};

  EXPECT_EQ(Controller().Invoke("pbMergeSave", InvokeKind::kCall, arguments), Value(false));

  details[18] = "True";
  EXPECT_EQ(arguments[3], Value(details));
}

TEST_F(LateBoundDirCode, NeverDeletesEverythingWhenTheRowIsOmitted) {
  EXPECT_EQ(Call(Controller(), "pbMergeSave", Connection(), kUnit, "Delete", StringArray()),
            Value(true));
  EXPECT_EQ(
      Call(Controller(), "pbMergeSave", Connection(), kUnit, "Delete", StringArray(), Missing{}),
      Value(true));

  const Lines deletions = Host().transcript().StartingWith("ExecuteQueryDelete ");
  ASSERT_EQ(deletions.size(), 2U);
  for (const std::string& deletion : deletions) {
    EXPECT_NE(deletion.find(" AND RID=0\""), std::string::npos) << deletion;
  }
}

TEST_F(LateBoundDirCode, RefusesDetailsThatAreNoTexts) {
  for (const Value& details : {Value("12"), Value(5), Value(Null{}), Value()}) {
    EXPECT_EQ(ErrorOf([&] {
                Call(Controller(), "pbMergeSave", Connection(), kUnit, "Delete", details, -1);
              }),
              static_cast<int>(ErrorNumber::kTypeMismatch));
  }
  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(LateBoundDirCode, HandsTheTableForAMergeBackThroughTheArgument) {
  Database().Select("DIRECTORYCODE >=0 ORDER BY", {{kUnit, 17, 12}});
  const auto given = std::make_shared<qorcred::ResultTable>();
  for (const ObjectRef& before : {ObjectRef(), ObjectRef(given)}) {
    std::array<Value, 3> arguments{Value(Connection()), Value(kUnit), Value(before)};

    EXPECT_EQ(Controller().Invoke("pbFetchDirForMerge", InvokeKind::kCall, arguments), Value(true));

    const ObjectRef* table = arguments[2].As<ObjectRef>();
    ASSERT_NE(table, nullptr);
    ASSERT_NE(*table, before);
    EXPECT_EQ(Get(**table, "Value", 0, 2), Value(12));
  }
}

TEST_F(LateBoundDirCode, ConvertsArguments) {
  Call(Controller(), "pbRetrieveSchedules", Connection(), "3");
  Call(Controller(), "pbRetrieveSchedules", Connection(), 2.5);

  const Lines selects = Host().transcript().StartingWith("ExecuteSelect ");
  ASSERT_EQ(selects.size(), 2U);
  EXPECT_NE(selects[0].find("UnitKey = 3 "), std::string::npos);
  EXPECT_NE(selects[1].find("UnitKey = 2 "), std::string::npos);
}

TEST_F(LateBoundDirCode, RefusesArgumentsBeforeItDoesAnything) {
  const auto error = [this](auto&&... arguments) {
    return ErrorOf([&] { Call(Controller(), "pbDelete", arguments...); });
  };
  EXPECT_EQ(error(Connection(), "three", 17), static_cast<int>(ErrorNumber::kTypeMismatch));
  EXPECT_EQ(error(Connection(), 3e9, 17), static_cast<int>(ErrorNumber::kOverflow));
  EXPECT_EQ(error(Connection(), Null{}, 17), static_cast<int>(ErrorNumber::kInvalidUseOfNull));
  EXPECT_EQ(error(1, kUnit, 17), static_cast<int>(ErrorNumber::kObjectRequired));
  EXPECT_EQ(error(Connection(), kUnit), static_cast<int>(ErrorNumber::kArgumentNotOptional));
  EXPECT_EQ(error(Connection(), Missing{}, 17),
            static_cast<int>(ErrorNumber::kArgumentNotOptional));
  EXPECT_EQ(error(Connection(), kUnit, 17, true, true, 1),
            static_cast<int>(ErrorNumber::kWrongArgumentCount));

  EXPECT_TRUE(TranscriptIs(""));
}

TEST_F(LateBoundDirCode, KeepsItsPrivateOperationsToItself) {
  for (const std::string_view member :
       {"pbIsDirCodeUnique", "pbIsDirCodeAssignedToTenant", "psReplaceEmptyWithNull",
        "Class_Initialize", "pbSav", ""}) {
    EXPECT_EQ(ErrorOf([&] { Call(Controller(), member, Connection(), kUnit); }),
              static_cast<int>(ErrorNumber::kUnknownMember))
        << member;
  }
  EXPECT_EQ(ErrorOf([this] { Put(Controller(), "pbSave", 1); }),
            static_cast<int>(ErrorNumber::kUnknownMember));
}

TEST_F(LateBoundDirCode, DecodesBase64AndRaisesForWhatIsNone) {
  std::array<Value, 1> arguments{Value("QUJD")};

  EXPECT_EQ(Controller().Invoke("pbBase64Dec", InvokeKind::kCall, arguments), Value("ABC"));

  EXPECT_EQ(arguments[0], Value("QUJD"));
  EXPECT_EQ(ErrorOf([this] { Call(Controller(), "pbBase64Dec", ""); }),
            static_cast<int>(ErrorNumber::kIndexOutOfRange));
}

}  // namespace
}  // namespace qortest
