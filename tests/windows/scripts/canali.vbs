' Whole sends through Outlook, the Simple MAPI controls and the shorter entries of the SMTP component, each played here: what each
' is asked, in which order and under which names, stands in the file given.
Class Conto
  Public Property Get SmtpAddress()
    SmtpAddress = "account@outlook.example"
  End Property
End Class
Class Conti
  Public Function Item(posizione)
    Set Item = Banco.Spia("Account", New Conto)
  End Function
End Class
Class Sessione
  Public Property Get Accounts()
    Set Accounts = Banco.Spia("Accounts", New Conti)
  End Property
End Class
Class Esploratori
  Public Property Get Session()
    Set Session = Banco.Spia("Session", New Sessione)
  End Property
End Class
Class Lettera
  Public Property Get attachments()
    Set attachments = Banco.Spia("Attachments", New Nessuno)
  End Property
End Class
Class Outlook
  Public Property Get Version()
    Version = "14.0.0.7268"
  End Property
  Public Property Get Explorers()
    Set Explorers = Banco.Spia("Explorers", New Esploratori)
  End Property
  Public Function createItem(tipo)
    Set createItem = Banco.Spia("MailItem", New Lettera)
  End Function
End Class
Class SessioneMapi
  Public Property Get SessionID()
    SessionID = 42
  End Property
End Class

Function NuovoOutlook()
  Set NuovoOutlook = Banco.Spia("Outlook", New Outlook)
End Function
Function NuovaSessione()
  Set NuovaSessione = Banco.Spia("MAPISession", New SessioneMapi)
End Function
Function NuoviMessaggiMapi()
  Set NuoviMessaggiMapi = Banco.Spia("MAPIMessages", New Nessuno)
End Function
Function NuovoSmtp()
  Set NuovoSmtp = Banco.Spia("smtp", New Smtp)
End Function
Banco.RegisterClass "Outlook.Application", "NuovoOutlook"
Banco.RegisterClass "MSMAPI.MAPISession", "NuovaSessione"
Banco.RegisterClass "MSMAPI.MAPIMessages", "NuoviMessaggiMapi"
Banco.RegisterClass "{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoSmtp"

Function Servizio(canale)
  Dim s
  CanaleDelTest = canale
  Set s = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")
  Set s.ConnectionADO = New BancaDati
  s.DittaCorrente = 1
  s.GetImpostazioni
  s.InizializzaRegistroInvioMailMultiprofilo "VOCE", "OGGETTO", 7, "Fattura"
  s.vOggetto = "Fattura 12"
  s.vCorpoMail = "Per ***(Nome)***"
  s.vFlagCorpo = 1
  Set Servizio = s
End Function

Sub InviaConCanale(titolo, canale)
  Dim s, coll
  Banco.Annota "== " & titolo
  Set s = Servizio(canale)
  Set coll = CreateObject("ORVE_MAILSERVER.CollDestinatari")
  coll.Add "anna@x.example", "Anna Più"
  coll.AddFromLista "bruno@x.example", "Bruno", , 1
  Set s.vCollDestinatari = coll
  s.vMailAttachment = "C:\fattura.pdf"
  s.AvviaProceduraInvio
  Uguale titolo & ", Stato", s.Stato, CLng(0)
  Set s = Nothing
End Sub

InviaConCanale "Outlook", 1
InviaConCanale "Simple MAPI", 0

Dim servito, alta, esito
Banco.Annota "== InviaMailSMTP"
Set servito = Servizio(77)
servito.AddDestinatario "anna@x.example", "Anna Più"
alta = True
esito = servito.InviaMailSMTP("Avviso", "Testo € 漢字", alta)
Uguale "InviaMailSMTP", esito, True
Uguale "l'argomento per riferimento resta", alta, True

Banco.Annota "== InviaMailDiretta"
Set servito = Servizio(77)
servito.InviaMailDiretta 5, "Anna<anna@x.example>", , "Carla<carla@x.example>", "Diretta", "Corpo"
Uguale "InviaMailDiretta, Stato", servito.Stato, CLng(0)

Banco.Annota "== InviaMail"
Set servito = Servizio(77)
Set servito.vCollDestinatari = CreateObject("ORVE_MAILSERVER.CollDestinatari")
servito.vCollDestinatari.Add "anna@x.example", "Anna"
servito.InviaMail
Uguale "InviaMail, Stato", servito.Stato, CLng(0)
Set servito = Nothing

Uguale "giornale", Banco.Differenza(WScript.Arguments(0)), ""
