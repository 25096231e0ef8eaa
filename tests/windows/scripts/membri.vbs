' Each member of the service, read on a new object, written, read again.
Dim s, o, coll, mittenti, m
Set s = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")

Sub Testo(nome)
  Uguale nome & " nuovo", Banco.Leggi(s, nome), ""
  Banco.Scrivi s, nome, "Più € 漢字"
  Uguale nome, Banco.Leggi(s, nome), "Più € 漢字"
End Sub

Sub Booleano(nome)
  Uguale nome & " nuovo", Banco.Leggi(s, nome), False
  Banco.Scrivi s, nome, True
  Uguale nome, Banco.Leggi(s, nome), True
End Sub

Sub Numero(nome, valore)
  Uguale nome & " nuovo", CDbl(Banco.Leggi(s, nome)), CDbl(0)
  Banco.Scrivi s, nome, valore
  Uguale nome, Banco.Leggi(s, nome), valore
End Sub

Sub SolaLettura(nome)
  On Error Resume Next
  Banco.Scrivi s, nome, 1
  UgualeErrore nome & " è di sola lettura", 438, "", ""
End Sub

Dim nome
For Each nome In Array("vIndDestinatario", "vNome", "vDitta", "vOggetto", "vTestoMail", "vMailAttachment", "vCorpoMail", _
    "MsgPers", "INFO_TipoDoc", "INFO_NumReg", "INFO_NumDoc", "INFO_SezDoc", "vSenderName", "vSenderAddress", _
    "errDescription", "errNumber", "MailParamAllegatoUnico", "MailParamCorpoUnico", "ListaGuid", "DestinatariA", _
    "DestinatariCC", "DestinatariCCn", "Allegati", "MailCorpo", "MailOggetto", "INFO_RagSocCliFor")
  Testo nome
Next
For Each nome In Array("ReadReceipt", "FlgMsgPers", "vNotifyDelivery", "vNotifyRead", "vDisableNotifyDelivery", _
    "vDisableNotifyRead", "silentMode", "MailParamReadRcpt", "MailParamDeliveryStatus", "IsPec", "IsInvioMailConParams", _
    "IsStampaDifferita", "MailParamIsValoriValidi", "InvioSMTP")
  Booleano nome
Next
Numero "vFlagCorpo", CInt(12)
Numero "SrvMailInstallato", CLng(3)
Numero "vIndTipologiaAllegati", CLng(1)
Numero "ModalitaInvio", CLng(3)
Numero "MailParamTipo", CSng(2.5)
Numero "IsLista", CLng(70000)
s.ModalitaInvio = -1
Uguale "ModalitaInvio senza impostazioni", s.ModalitaInvio, CLng(0)

' A mode given back to the settings is one of the two stored there, between which the deferred print chooses.
Dim impostato
Set impostato = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")
Set impostato.ConnectionADO = New BancaDati
impostato.DittaCorrente = 1
impostato.GetImpostazioni
impostato.ModalitaInvio = 3
Uguale "ModalitaInvio forzata", impostato.ModalitaInvio, CLng(3)
impostato.ModalitaInvio = -1
Uguale "ModalitaInvio delle impostazioni", impostato.ModalitaInvio, CLng(1)
impostato.IsStampaDifferita = True
Uguale "ModalitaInvio della stampa differita", impostato.ModalitaInvio, CLng(2)
Set impostato = Nothing

Uguale "data nuova", CDbl(s.DataValiditaCodiceDestinatario), CDbl(0)
s.DataValiditaCodiceDestinatario = DateSerial(2026, 3, 14) + 0.5
Uguale "data", s.DataValiditaCodiceDestinatario, CDate(DateSerial(2026, 3, 14) + 0.5)

Uguale "Stato", s.Stato, CLng(0)
If Not IsEmpty(s.Descrizione) Then Banco.Fallisce "Descrizione nuova"
Uguale "tempPath", s.tempPath, ""
Uguale "PercorsoInstallazione", s.PercorsoInstallazione, WScript.Path
For Each nome In Array("Stato", "Descrizione", "tempPath", "PercorsoInstallazione")
  SolaLettura nome
Next

' Values of any type: empty, number, text, array, object.
If Not IsEmpty(s.DittaCorrente) Then Banco.Fallisce "DittaCorrente nuova"
s.DittaCorrente = 7
Uguale "DittaCorrente numero", s.DittaCorrente, CInt(7)
s.DittaCorrente = "AZ"
Uguale "DittaCorrente testo", s.DittaCorrente, "AZ"
Set o = New Nessuno
Set s.DittaCorrente = o
Stesso "DittaCorrente oggetto", s.DittaCorrente, o
If Not IsEmpty(s.vElencoAllegati) Then Banco.Fallisce "vElencoAllegati nuovo"
s.vElencoAllegati = Array("C:\a.pdf", "C:\è.pdf")
s.AddAllegato "C:\c.pdf"
o = s.vElencoAllegati
Uguale "vElencoAllegati", UBound(o) & o(0) & o(1) & o(2), "2C:\a.pdfC:\è.pdfC:\c.pdf"
Set o = New Nessuno
Set s.vElencoAllegati = o
Stesso "vElencoAllegati oggetto", s.vElencoAllegati, o

' Objects of the caller come back as the same objects; no object is no object.
For Each nome In Array("ConnectionADO", "ManagerRubrica", "ActiveInterface")
  If Not Banco.Leggi(s, nome) Is Nothing Then Banco.Fallisce nome & " nuovo"
  Set o = New Nessuno
  Banco.Imposta s, nome, o
  Stesso nome, Banco.Leggi(s, nome), o
  Banco.Imposta s, nome, Nothing
  If Not Banco.Leggi(s, nome) Is Nothing Then Banco.Fallisce nome & " tolto"
  On Error Resume Next
  Banco.Scrivi s, nome, 5
  UgualeErrore nome & " senza Set", 438, "", ""
  On Error GoTo 0
Next

' Objects of the library keep their identity.
Set coll = CreateObject("ORVE_MAILSERVER.CollDestinatari")
coll.Add "anna@x.example", "Anna"
If Not s.vCollDestinatari Is Nothing Then Banco.Fallisce "vCollDestinatari nuovo"
Set s.vCollDestinatari = coll
Stesso "vCollDestinatari", s.vCollDestinatari, coll
Uguale "indice sulla proprietà", s.vCollDestinatari(1).Nome, "Anna"
Set s.vCollDestinatari = Nothing
If Not s.vCollDestinatari Is Nothing Then Banco.Fallisce "vCollDestinatari tolto"
Set mittenti = CreateObject("ORVE_MAILSERVER.CollMittenti")
Set s.vCollMittenti = mittenti
Stesso "vCollMittenti", s.vCollMittenti, mittenti
Set m = CreateObject("ORVE_MAILSERVER.Mittente")
Set s.vMittente = m
Stesso "vMittente", s.vMittente, m
s.MailParamAccount.Indirizzo = "creato@x.example"
Uguale "MailParamAccount si crea da sé", s.MailParamAccount.Indirizzo, "creato@x.example"
Set s.MailParamAccount = m
Stesso "MailParamAccount", s.MailParamAccount, m
On Error Resume Next
Set s.vCollDestinatari = mittenti
UgualeErrore "una collezione di altra classe", 13, "", ""
Dim voce
Set voce = s.vCollDestinatari(1)
UgualeErrore "un indice senza collezione", 91, "ORVE_MAILSERVER", ""
Set s.vMittente = New Nessuno
UgualeErrore "un oggetto estraneo", 13, "", ""
On Error GoTo 0

' Methods that need no outside object.
Uguale "indirizzo buono", s.CheckRegularMailAddress("anna@x.example"), True
Uguale "indirizzo cattivo", s.CheckRegularMailAddress("anna"), False
Uguale "AddDestinatario", s.AddDestinatario("b@x.example", "Bruno"), False
Uguale "destinatario aggiunto", s.vCollDestinatari(1).Indirizzo, "b@x.example"

' The end of a service lets go of every object of the caller, also where the channel's own was never made.
Dim lasciati
lasciati = 0
Class Lasciato
  Private Sub Class_Terminate
    lasciati = lasciati + 1
  End Sub
End Class
Set impostato = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")
Uguale "canale di un servizio nuovo", impostato.SrvMailInstallato, CLng(0)
Set impostato.ConnectionADO = New Lasciato
Set impostato.ManagerRubrica = New Lasciato
Set impostato.ActiveInterface = New Lasciato
Set impostato.DittaCorrente = New Lasciato
Uguale "tenuti", lasciati, CInt(0)
Set impostato = Nothing
Uguale "lasciati", lasciati, CInt(4)
