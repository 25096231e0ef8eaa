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

' Stato resta a 0 quando il messaggio è rifiutato prima di partire. Che cosa ne è stato lo dice il registro degli
' invii, che è dell'applicazione, con le tabelle e le colonne sue: una riga per destinatario, o una sola con il motivo.
Function Inviato(invio)
  Dim righe, nome
  Set righe = connessione.Execute("SELECT ESITOINVIO, NOME, INDIRIZZO, RISULTATO FROM REGISTRO_INVII" & _
    " WHERE NUMREG = '" & invio & "' ORDER BY ID", , 1) ' adCmdText
  Inviato = Not righe.EOF
  If righe.EOF Then WScript.Echo "Non inviato: manca un account, oppure un errore sta nel registro degli errori"
  Do Until righe.EOF
    nome = righe.Fields.Item("NOME").Value & ""
    If nome = "" Then nome = "Cliente " & WScript.Arguments(2) & " sconosciuto"
    If righe.Fields.Item("ESITOINVIO").Value = 0 Then
      WScript.Echo "Inviato: " & righe.Fields.Item("INDIRIZZO").Value
    Else
      WScript.Echo nome & ": " & righe.Fields.Item("RISULTATO").Value
      Inviato = False
    End If
    righe.MoveNext
  Loop
  righe.Close
End Function

Dim connessione, mail, invio
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
' Un'applicazione dà il numero di registrazione del documento.
invio = CLng(Date) & "-" & Replace(Timer, ",", ".") ' con cui ritrovarlo nel registro
mail.INFO_NumReg = invio
mail.InizializzaRegistroInvioMail "FATTURE", "", "", "", "Fattura"
mail.ModalitaInvio = 1 ' kvAutomatico: mai una finestra

mail.vOggetto = "Fattura"
mail.vCorpoMail = "Buongiorno, in allegato la fattura."
mail.vFlagCorpo = 1
mail.vMailAttachment = WScript.Arguments(3)
mail.AvviaProceduraInvio WScript.Arguments(2), 1 ' kvDestinatarioFaxCliente

If Not Inviato(invio) Then WScript.Quit 1
