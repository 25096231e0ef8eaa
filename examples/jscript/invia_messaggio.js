// Invia un messaggio a un elenco di destinatari, con gli account e le impostazioni del database dell'applicazione.
//
//   cscript //nologo invia_messaggio.js CONNESSIONE DITTA INDIRIZZO...
//
// CONNESSIONE è una stringa di ADO, per esempio
// "Provider=SQLOLEDB;Data Source=server;Initial Catalog=azienda;Integrated Security=SSPI".

// JScript vede i testi dell'evento, ma non li può cambiare: non ha argomenti per riferimento.
function Mail_BeforeSendMail(oggetto, corpo, destinatariA, destinatariCC, destinatariCCn, allegati) {
  WScript.Echo("Invio a " + destinatariA);
}

function invia(argomenti) {
  var connessione = new ActiveXObject("ADODB.Connection");
  connessione.Open(argomenti.Item(0));

  var mail = WScript.CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER", "Mail_");
  mail.ConnectionADO = connessione;
  mail.DittaCorrente = argomenti.Item(1);
  mail.GetImpostazioni();
  mail.InizializzaRegistroInvioMail("MESSAGGI", "", "", "", "Messaggio");

  var destinatari = new ActiveXObject("ORVE_MAILSERVER.CollDestinatari");
  for (var i = 2; i < argomenti.Count(); i++) destinatari.Add(argomenti.Item(i), "Cliente " + (i - 1));
  mail.vCollDestinatari = destinatari;
  mail.vOggetto = "Chiusura estiva";
  mail.vCorpoMail = "Buongiorno ***(Nome)***, gli uffici sono chiusi dal 10 al 21 agosto.";
  mail.vFlagCorpo = 1;
  mail.AvviaProceduraInvio();

  WScript.Echo("Stato: " + mail.Stato);
  return mail.Stato;
}

if (WScript.Arguments.Count() < 3) {
  WScript.Echo("uso: cscript //nologo invia_messaggio.js CONNESSIONE DITTA INDIRIZZO...");
  WScript.Quit(2);
}
WScript.Quit(invia(WScript.Arguments));
