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

// Che cosa ne è stato di ogni destinatario lo dice il registro degli invii, che è dell'applicazione, con le tabelle e
// le colonne sue. Stato dice solo se la consegna è fallita: resta a 0 anche quando il messaggio non è partito affatto.
function inviato(connessione, invio) {
  var righe = connessione.Execute(
    "SELECT ESITOINVIO, INDIRIZZO, RISULTATO FROM REGISTRO_INVII WHERE NUMREG = '" + invio + "' ORDER BY ID");
  var tutti = !righe.EOF;
  if (righe.EOF) WScript.Echo("Non inviato: manca un account, oppure un errore sta nel registro degli errori");
  for (; !righe.EOF; righe.MoveNext()) {
    if (righe.Fields.Item("ESITOINVIO").Value == 0) {
      WScript.Echo("Inviato: " + righe.Fields.Item("INDIRIZZO").Value);
    } else {
      WScript.Echo(righe.Fields.Item("INDIRIZZO").Value + ": " + righe.Fields.Item("RISULTATO").Value);
      tutti = false;
    }
  }
  righe.Close();
  return tutti;
}

function invia(argomenti) {
  var connessione = new ActiveXObject("ADODB.Connection");
  connessione.Open(argomenti.Item(0));

  var mail = WScript.CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER", "Mail_");
  mail.ConnectionADO = connessione;
  mail.DittaCorrente = argomenti.Item(1);
  mail.GetImpostazioni();
  // Un'applicazione dà il numero di registrazione del documento.
  var invio = String(new Date().getTime());  // con cui ritrovarlo nel registro
  mail.INFO_NumReg = invio;
  mail.InizializzaRegistroInvioMail("MESSAGGI", "", "", "", "Messaggio");

  var destinatari = new ActiveXObject("ORVE_MAILSERVER.CollDestinatari");
  for (var i = 2; i < argomenti.Count(); i++) destinatari.Add(argomenti.Item(i), "Cliente " + (i - 1));
  mail.vCollDestinatari = destinatari;
  mail.vOggetto = "Chiusura estiva";
  mail.vCorpoMail = "Buongiorno ***(Nome)***, gli uffici sono chiusi dal 10 al 21 agosto.";
  mail.vFlagCorpo = 1;
  mail.AvviaProceduraInvio();

  return inviato(connessione, invio) ? 0 : 1;
}

if (WScript.Arguments.Count() < 3) {
  WScript.Echo("uso: cscript //nologo invia_messaggio.js CONNESSIONE DITTA INDIRIZZO...");
  WScript.Quit(2);
}
WScript.Quit(invia(WScript.Arguments));
