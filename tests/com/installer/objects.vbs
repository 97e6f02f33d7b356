' Creates an object of every class by name, with and without version, and uses the first one.
Dim name, version, made, count
For Each name In Array("clsCredential", "clsDirCode", "clsDirCodeReport", "clsCredentialReport")
  For Each version In Array("", ".1")
    Set made = CreateObject("qorCred." & name & version)
    count = count + 1
    Set made = Nothing
  Next
Next
WScript.Echo count & " objects, " & CreateObject("qorCred.clsCredential").pbBase64Dec("NTAw")
