// The host of range.vbs in the other language: the members of its objects are functions, and null is no
// object. Members that hold a value would do as well where the engine gives the value when it is asked for
// a member's value or call, as automation asks; not every engine does.
function gives(value) {
  return function () { return value; };
}

function box(text) {
  return { Text: gives(text), SetFocus: function () {} };
}

// A list that the host has filled itself: this language has no property with an index that could be put.
function list(numbers, selected) {
  return {
    ListIndex: gives(selected),
    ItemData: function (index) { return numbers[index]; }
  };
}

var screen = {
  gstrTag: gives("Range"),
  cboCredentialType: gives(list([0], 0)),
  txtPINStart: gives(box("20")),
  txtPINEND: gives(box("22")),
  txtFacilityCode: gives(box("7")),
  txtIDCode: gives(box("")),
  txtSequenceCode: gives(box("")),
  optButton4: gives({ Value: gives(false) })
};

var lastRid = 500;
var conn = {
  Tell: function (line) { WScript.Echo(line); },
  NextRid: function () { return ++lastRid; },
  BeginTrans: function () { this.Tell("BeginTrans"); },
  CommitTrans: function () { this.Tell("CommitTrans"); },
  RollbackTrans: function () { this.Tell("RollbackTrans"); }
};

var controller = new ActiveXObject("qorCred.clsCredential");
controller.gmobjCredentialScreen = screen;
var saved = controller.pbSave(conn, 3, false, false, 0);
// The last row's number comes back by reference, which this language does not have.
WScript.Echo("saved: " + (saved ? "True" : "False") + ", last RID " + lastRid);
controller.gmobjCredentialScreen = null;
WScript.Echo("screen let go of: " + (controller.gmobjCredentialScreen == null ? "True" : "False"));
