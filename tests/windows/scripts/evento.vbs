' A send by code: the address comes from the database, the event changes the message, the SMTP component takes it.
Dim chiamate
chiamate = 0

Sub Mail_BeforeSendMail(Oggetto, Corpo, DestinatariA, DestinatariCC, DestinatariCCn, Allegati)
  chiamate = chiamate + 1
  Banco.Annota "evento " & Oggetto & "|" & Corpo & "|" & DestinatariA & "|" & DestinatariCC & "|" & DestinatariCCn & "|" & Allegati
  Oggetto = Oggetto & " è €"
  Corpo = "Riscritto 漢字"
  DestinatariCC = "Bruno<bruno@x.example>"
  Allegati = Allegati & ";C:\altro.pdf"
End Sub

Function NuovoSmtp()
  Set NuovoSmtp = Banco.Spia("smtp", New Smtp)
End Function
Banco.RegisterClass "{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoSmtp"

Dim s, db, giornale
Set db = New BancaDati
Set s = WScript.CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER", "Mail_")
Set s.ConnectionADO = db
s.DittaCorrente = 1
s.GetImpostazioni
Uguale "canale", s.SrvMailInstallato, CLng(77)
Uguale "modo", s.ModalitaInvio, CLng(1)
s.InizializzaRegistroInvioMail "VOCE", "OGGETTO", "utente", "gruppo", "Fattura"
s.vOggetto = "Fattura 12"
s.vCorpoMail = "Buongiorno"
s.vFlagCorpo = 1
s.vMailAttachment = "C:\fattura.pdf"
giornale = Banco.Giornale
s.AvviaProceduraInvio "501", 1
Uguale "Stato", s.Stato, CLng(0)
Uguale "una chiamata", chiamate, CInt(1)
Uguale "oggetto cambiato", s.vOggetto, "Fattura 12 è €"
Uguale "corpo cambiato", s.vCorpoMail, "Riscritto 漢字"
Uguale "destinatari", s.vCollDestinatari.Count, CLng(2)
Uguale "primo", s.vCollDestinatari(1).Nome & s.vCollDestinatari(1).Indirizzo, "Società Più S.r.l.anna@x.example"
Uguale "secondo", s.vCollDestinatari(2).Nome & s.vCollDestinatari(2).Casella, "Bruno1"
Uguale "giornale", Banco.Differenza(WScript.Arguments(0)), ""

' Detached, the handler is asked no more.
WScript.DisconnectObject s
s.AvviaProceduraInvio "501", 1
Uguale "staccato", chiamate, CInt(1)
giornale = Banco.Giornale
