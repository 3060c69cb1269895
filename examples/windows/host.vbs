' A host in VBScript: cscript //nologo host.vbs DATABASE PERSON PHOTOGRAPHS
Option Explicit
Dim connection, dossier, saved
If WScript.Arguments.Count <> 3 Then
  WScript.Echo "cscript //nologo host.vbs DATABASE PERSON PHOTOGRAPHS"
  WScript.Quit 2
End If
Set connection = CreateObject("ADODB.Connection")
connection.Open "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" & WScript.Arguments(0)
Set dossier = CreateObject("DossierKit.IUserCtrl")
Set dossier.Connection = connection
dossier.personID = WScript.Arguments(1)
dossier.PhotoPath = WScript.Arguments(2)
dossier.OperationType = 3 ' 0 for a new person
dossier.PersonType = 1
On Error Resume Next
saved = dossier.ShowDossier()
If Err.Number <> 0 Then
  WScript.Echo CStr(Err.Number And 65535) & ": " & Err.Description
  WScript.Quit 1
End If
If saved Then
  WScript.Echo "saved"
Else
  WScript.Echo "nothing saved"
End If
connection.Close
