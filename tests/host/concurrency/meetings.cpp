#include "tests/host/concurrency/meetings.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>
#include <utility>

namespace qorhost::test {

void PrintTo(const Meeting& meeting, std::ostream* out) {
  *out << meeting.name;
}

std::string TextOf(const Result& result) {
  return fmt::format("first {}\nsecond {}\n{}", TextOf(result.first), TextOf(result.second),
                     fmt::join(result.content, "\n"));
}

void MeetingTest::SetUp() {
  place_ = NewMeetingPlace(GetParam().capacity);
  first_ = place_->NewSeat("anna", false);
  second_ = place_->NewSeat("bert", false);
}

void MeetingTest::Begin() {
  place_->Renew();
}

Result MeetingTest::End(Told first, Told second) {
  return {std::move(first), std::move(second), place_->Content()};
}

bool MeetingTest::IsBusy(const Told& told) {
  return told.ending == Ending::kFailed &&
         TextOf(told).find("another program is writing to the store") != std::string::npos;
}

std::vector<Meeting> MeetingsOfTwo() {
  const std::string phone = "555-8888";
  return {
      {"SameRange", IssueCards("201", "203"), IssueCards("201", "203")},
      {"SameRangeWithTenants", IssueCardsWithTenants("201", "202"),
       IssueCardsWithTenants("201", "202")},
      {"RangesThatOverlap", IssueCards("201", "203"), IssueCards("203", "204")},
      {"SameCode", AddCode("301"), AddCode("301")},
      {"TwoRangesForLittleRoom", IssueCards("201", "203"), IssueCards("211", "213"),
       kCodesInUse + 5},
      {"TwoRangesThatFillTheUnit", IssueCards("201", "203"), IssueCards("211", "213"),
       kCodesInUse + 3},
      {"CardAndCodeForOnePlace", IssueCards("201", "201"), AddCode("301"), kCodesInUse + 1},
      {"CodeAndCardForOnePlace", AddCode("301"), IssueCards("201", "201"), kCodesInUse + 1},
      {"CardAndImportForOnePlace", IssueCards("201", "201"), ImportCards("card26,301,7,\n"),
       kCodesInUse + 1},
      {"ImportAndCodeForOnePlace", ImportCards("card26,301,7,\n"), AddCode("301"), kCodesInUse + 1},
      {"CodeAndImportForOnePlace", AddCode("301"), ImportCodes("302,555-1\n"), kCodesInUse + 1},
      {"TwoCardsToOneNumber", RenumberCard("103", 300), RenumberCard("104", 300)},
      {"TwoCodesToOneNumber", RenumberCode("102", "300"), RenumberCode("103", "300")},
      {"OneCardToTwoTenants", AssignCard("103", "Berg Bea"), AssignCard("103", "Cole Cem"), kRoomy,
       true},
      {"AHeldCardToTwoTenants", AssignCard("101", "Berg Bea"), AssignCard("101", "Cole Cem"),
       kRoomy, true},
      {"TwoCardsToOneTenant", AssignCard("103", "Berg Bea"), AssignCard("104", "Berg Bea")},
      {"AssigningAndDeleting", AssignCard("103", "Berg Bea"), DeleteCard("103"), kRoomy, true},
      {"DeletingAndAssigning", DeleteCard("103"), AssignCard("103", "Berg Bea"), kRoomy, true},
      {"AssigningAndDeletingInAReport", AssignCard("103", "Berg Bea"), DeleteInReport("3"), kRoomy,
       true},
      {"DeletingInAReportAndAssigning", DeleteInReport("3"), AssignCard("103", "Berg Bea"), kRoomy,
       true},
      {"DeletingAHeldCardTwice", DeleteCard("101"), DeleteCard("101"), kRoomy, true},
      {"TwoEditsOfOneCode", EditPhone("102", phone), EditPhone("102", "555-9999"), kRoomy, true},
      {"EditsOfTwoCodes", EditPhone("102", phone), EditPhone("103", phone)},
      {"DeletingAndEditingACode", DeleteCode("102"), EditPhone("102", phone), kRoomy, true},
      {"EditingAndDeletingACode", EditPhone("102", phone), DeleteCode("102"), kRoomy, true},
      {"EditingAndRenumberingACode", EditPhone("rid:2", phone), RenumberCode("102", "300"), kRoomy,
       true},
      {"AssigningAndRenumbering", AssignCard("103", "Berg Bea"), RenumberCard("103", 300), kRoomy,
       true},
      {"RenumberingAndAssigning", RenumberCard("103", 300), AssignCard("103", "Berg Bea"), kRoomy,
       true},
      {"RenumberingAndEditingACode", RenumberCode("102", "300"), EditPhone("rid:2", phone), kRoomy,
       true},
      {"AssigningToATenantWhoIsDeleted", AssignCard("103", "Berg Bea"),
       WriteByHand("DELETE FROM Tenants WHERE LastName='Berg'"), kRoomy, true},
      {"TwoNamesForOneTenant", NameTenant("Berg", "Bach"), NameTenant("Berg", "Blum"), kRoomy,
       true},
      {"NamesForTwoTenants", NameTenant("Berg", "Bach"), NameTenant("Cole", "Carr")},
      {"OneCardGivenToTwoTenants", GiveTenant("Berg", "103"), GiveTenant("Adam", "103")},
      {"GivingAndAssigning", GiveTenant("Berg", "103"), AssignCard("103", "Cole Cem")},
      {"GivingAndDeletingTheCard", GiveTenant("Berg", "103"), DeleteCard("103")},
      {"DeletingACardAndGivingIt", DeleteCard("103"), GiveTenant("Berg", "103"), kRoomy, true},
      {"MovingAndDeletingTheCode", MoveTenant("Berg", "103"), DeleteCode("103")},
      {"EndingAndAssigning", EndTenant("Adam"), AssignCard("101", "Berg Bea"), kRoomy, true},
      {"EndingAndDeletingATenant", EndTenant("Adam"), DeleteTenant("Adam"), kRoomy, true},
      {"DeletingATenantAndAssigning", DeleteTenant("Berg"), AssignCard("103", "Berg Bea"), kRoomy,
       true},
      {"AssigningAndDeletingTheTenant", AssignCard("103", "Berg Bea"), DeleteTenant("Berg"), kRoomy,
       true},
      {"TwoSuccessorsForOneCard", ReplaceCard("101", "301"), ReplaceCard("101", "302")},
      {"OneSuccessorForTwoCards", ReplaceCard("101", "301"), ReplaceCard("102", "301")},
      {"ReplacingAndAssigning", ReplaceCard("101", "103"), AssignCard("103", "Berg Bea")},
      {"AssigningAndReplacing", AssignCard("103", "Berg Bea"), ReplaceCard("101", "103"), kRoomy,
       true},
      {"ImportingPeopleTwice", ImportPeople("Dahl,301,5,301\n"), ImportPeople("Dahl,301,5,301\n"),
       kCodesInUse + 2},
      {"TwoNamesForOneDoor", NameShownDoor(2, "Yard"), NameShownDoor(2, "Court"), kRoomy, true},
      {"NamesForTwoDoors", NameShownDoor(2, "Yard"), NameShownDoor(4, "Court")},
      {"TwoNamesForOneSchedule", NameShownSchedule(2, "Days"), NameShownSchedule(2, "Nights"),
       kRoomy, true},
      {"NamingAndDeletingASchedule", NameShownSchedule(2, "Days"), DeleteShownSchedule(2), kRoomy,
       true},
      {"DeletingAndNamingASchedule", DeleteShownSchedule(2), NameShownSchedule(2, "Days"), kRoomy,
       true},
      {"TwoEditsOfTheUnit", NameShownUnit("East"), SetDigitsOfShownUnit("6"), kRoomy, true},
      {"EditingAndDeletingTheUnit", NameShownUnit("East"), DeleteShownUnit(), kRoomy, true},
      {"DeletingAndEditingTheUnit", DeleteShownUnit(), NameShownUnit("East"), kRoomy, true},
      {"MergingAndAdding", MergeUnit(), AddCode("300")},
      {"AddingAndMerging", AddCode("300"), MergeUnit()},
      {"EditingAndMerging", EditPhone("102", phone), MergeUnit(), kRoomy, true},
      {"EditingAndWritingByHand", EditPhone("102", phone),
       WriteByHand("UPDATE DIRECTORYCODE SET PHONENUMBER='by hand' WHERE DIRECTORYCODE=102"),
       kRoomy, true},
      {"WritingByHandAndEditing",
       WriteByHand("UPDATE DIRECTORYCODE SET DISPLAYNAME='by hand' WHERE DIRECTORYCODE=102"),
       EditPhone("102", phone)},
  };
}

}  // namespace qorhost::test
