' What goes wrong in the caller's objects, and how the script sees it.
Class Guasta
  Public Function Execute(statement, quanti, opzione)
    Err.Raise 1234, "Banca dati", "Connessione caduta: è grave"
  End Function
End Class

Dim s, giornale
Set s = WScript.CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER", "Mail_")

Sub Mail_BeforeSendMail(Oggetto, Corpo, DestinatariA, DestinatariCC, DestinatariCCn, Allegati)
  Oggetto = "perduto"
  Err.Raise 999, "Programma", "Non si invia"
End Sub

' An error of the connection goes on to the caller, with the procedure's name behind the description.
Set s.ConnectionADO = Banco.Spia("ConnectionADO", New Guasta)
On Error Resume Next
s.GetImpostazioni
Dim numero, sorgente, descrizione
numero = Err.Number : sorgente = Err.Source : descrizione = Err.Description
Err.Clear
On Error GoTo 0
Uguale "numero", CLng(numero), CLng(1234)
Uguale "sorgente", sorgente, "Banca dati"
If InStr(descrizione, "Connessione caduta: è grave") <> 1 Then Banco.Fallisce "descrizione: " & descrizione

' An error of the handler ends the stage and is told to the person, the caller sees none.
Set s.ConnectionADO = New BancaDati
s.ModalitaInvio = 0
s.SrvMailInstallato = 77
s.vOggetto = "Fattura"
s.vFlagCorpo = 1
s.vCorpoMail = "Corpo"
Dim coll
Set coll = CreateObject("ORVE_MAILSERVER.CollDestinatari")
coll.Add "anna@x.example", "Anna"
Set s.vCollDestinatari = coll
giornale = Banco.Giornale
s.AvviaProceduraInvio
giornale = Banco.Giornale
If InStr(giornale, "MostraMsg 999 Non si invia ORVE_MAILSERVER: CLSFW_MAILSERVER: GestioneEventoBeforeSendMail|0|") = 0 Then
  Banco.Fallisce "messaggio dell'evento: " & giornale
End If
Uguale "l'oggetto resta", s.vOggetto, "Fattura"

' A machine without the SMTP component: the failure is told to the person, or in silent mode in two members.
Set s = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")
Set s.ConnectionADO = New BancaDati
s.DittaCorrente = 1
s.InvioSMTP = True
s.GetImpostazioni
s.AddDestinatario "anna@x.example", "Anna"
giornale = Banco.Giornale
Dim manca
manca = "Impossibile creare l'oggetto {DF8A4FE2-221A-4504-987A-3FD4720DB929} (0x80040154)"
Uguale "InviaMailSMTP", s.InviaMailSMTP("Avviso", "Testo"), False
If InStr(Banco.Giornale, "MostraMsg " & manca & "|48|ORVE_MAIL: InviaMailSMTP") = 0 Then
  Banco.Fallisce "messaggio di InviaMailSMTP"
End If
Uguale "errNumber senza silentMode", s.errNumber, ""
s.silentMode = True
Uguale "InviaMailSMTP in silenzio", s.InviaMailSMTP("Avviso", "Testo"), False
Uguale "errNumber", s.errNumber, "429"
Uguale "errDescription", s.errDescription, manca & " in ORVE_MAIL: InviaMailSMTP"
giornale = Banco.Giornale
If InStr(giornale, "MostraMsg") > 0 Then Banco.Fallisce "silentMode non tace: " & giornale
