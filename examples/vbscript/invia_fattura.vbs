' Invia una fattura a un cliente: indirizzo, account e testo vengono dal database dell'applicazione.
'
'   cscript //nologo invia_fattura.vbs CONNESSIONE DITTA CLIENTE FILE
'
' CONNESSIONE è una stringa di ADO, per esempio
' "Provider=SQLOLEDB;Data Source=server;Initial Catalog=azienda;Integrated Security=SSPI".
Option Explicit

' L'ultima parola prima dell'invio: ogni testo si può cambiare.
Sub Mail_BeforeSendMail(Oggetto, Corpo, DestinatariA, DestinatariCC, DestinatariCCn, Allegati)
  WScript.Echo "Invio a " & DestinatariA
  Oggetto = Oggetto & " (copia di cortesia)"
End Sub

Dim connessione, mail
If WScript.Arguments.Count <> 4 Then
  WScript.Echo "uso: cscript //nologo invia_fattura.vbs CONNESSIONE DITTA CLIENTE FILE"
  WScript.Quit 2
End If

Set connessione = CreateObject("ADODB.Connection")
connessione.Open WScript.Arguments(0)

Set mail = WScript.CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER", "Mail_")
Set mail.ConnectionADO = connessione
mail.DittaCorrente = WScript.Arguments(1)
mail.GetImpostazioni
mail.InizializzaRegistroInvioMail "FATTURE", "", "", "", "Fattura"
mail.ModalitaInvio = 1 ' kvAutomatico: mai una finestra

mail.vOggetto = "Fattura"
mail.vCorpoMail = "Buongiorno, in allegato la fattura."
mail.vFlagCorpo = 1
mail.vMailAttachment = WScript.Arguments(3)
mail.AvviaProceduraInvio WScript.Arguments(2), 1 ' kvDestinatarioFaxCliente

WScript.Echo "Stato: " & mail.Stato
WScript.Quit mail.Stato
