// A host in JScript: cscript //nologo host.js DATABASE PERSON PHOTOGRAPHS
var given = WScript.Arguments;
if (given.length != 3) {
  WScript.Echo("cscript //nologo host.js DATABASE PERSON PHOTOGRAPHS");
  WScript.Quit(2);
}
var connection = new ActiveXObject("ADODB.Connection");
connection.Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + given(0));
var dossier = new ActiveXObject("DossierKit.IUserCtrl");
dossier.Connection = connection;
dossier.personID = given(1);
dossier.PhotoPath = given(2);
dossier.OperationType = 3; // 0 for a new person
dossier.PersonType = 1;
try {
  WScript.Echo(dossier.ShowDossier() ? "saved" : "nothing saved");
} catch (failure) {
  WScript.Echo((failure.number & 0xFFFF) + ": " + failure.description);
  WScript.Quit(1);
} finally {
  dossier.Connection = null;
  connection.Close();
}
