// A script host of the registered library: late binding, assignments, failures. Prints a line for each.
function told(action) {
  try {
    return action();
  } catch (failure) {
    return "failure " + (failure.number >>> 0).toString(16);
  }
}

function say(line) { WScript.Echo(line); }

var dossier = new ActiveXObject("DossierKit.IUserCtrl");
say("OperationType " + dossier.OperationType + ", PersonType " + dossier.PersonType + ", PhotoPath '" +
    dossier.PhotoPath + "', personID '" + dossier.personID + "'");
dossier.OperationType = 3;
dossier.persontype = 1;
dossier.PhotoPath = "C:\\photos";
dossier.personID = "47EAA099-2CB6-416D-A6DC-283CF0480FF9";
say(dossier.OperationType + " " + dossier.PersonType + " " + dossier.PhotoPath + " " + dossier.personID);
say("40000: " + told(function() { dossier.OperationType = 40000; return "taken"; }));
say("text: " + told(function() { dossier.OperationType = "three"; return "taken"; }));
say("unknown member: " + told(function() { dossier.Nothing = 1; return "taken"; }));
dossier.Connection = { Name: "of the host" };
say("connection " + dossier.Connection.Name);
say("visit with what is no connection: " + told(function() { return dossier.ShowDossier(); }));
dossier.Connection = { Execute: function() { throw new Error(0x800A0E78 | 0, "closed"); } };
say("visit with a closed one: " + told(function() { return dossier.ShowDossier(); }));
WScript.Quit(42);
