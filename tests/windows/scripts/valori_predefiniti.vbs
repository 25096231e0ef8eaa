' An object with a default member, such as a field of a record set, stands for its value wherever a value is wanted.
Class CampoCorrente
  Public Contenuto
  Public Default Property Get Value()
    Value = Contenuto
  End Property
End Class

' Its value is an object, which has a value in its turn.
Class Involucro
  Public Dentro
  Public Default Property Get Value()
    Set Value = Dentro
  End Property
End Class

Function NuovoSmtp()
  Set NuovoSmtp = New Smtp
End Function
Banco.RegisterClass "{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoSmtp"

Function Campo(valore)
  Dim fatto
  Set fatto = New CampoCorrente
  fatto.Contenuto = valore
  Set Campo = fatto
End Function

Dim s, ditta, involto
Set s = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")
Set ditta = Campo("AZ")
Set involto = New Involucro
Set involto.Dentro = ditta

' Properties of every type.
Banco.Scrivi s, "vOggetto", ditta
Uguale "testo", s.vOggetto, "AZ"
Banco.Scrivi s, "vNome", involto
Uguale "oggetto nell'oggetto", s.vNome, "AZ"
Banco.Scrivi s, "vDitta", Campo(12)
Uguale "numero come testo", s.vDitta, "12"
Banco.Scrivi s, "IsPec", Campo(1)
Uguale "booleano", s.IsPec, True
Banco.Scrivi s, "IsLista", Campo("7")
Uguale "numero", s.IsLista, CLng(7)
Banco.Scrivi s, "SrvMailInstallato", Campo(77)
Uguale "enumerazione", s.SrvMailInstallato, CLng(77)
Banco.Scrivi s, "DataValiditaCodiceDestinatario", Campo(DateSerial(2026, 3, 14))
Uguale "data", s.DataValiditaCodiceDestinatario, CDate(DateSerial(2026, 3, 14))
Banco.Scrivi s, "DittaCorrente", ditta
Uguale "valore di ogni tipo", s.DittaCorrente, "AZ"
ditta.Contenuto = "BZ"
Uguale "il valore di allora", s.DittaCorrente, "AZ"
Banco.Scrivi s, "vElencoAllegati", Array(Campo("C:\a.pdf"), "C:\b.pdf")
Dim elenco
elenco = s.vElencoAllegati
Uguale "elenco", elenco(0) & elenco(1), "C:\a.pdfC:\b.pdf"

' Set keeps the object.
Set s.DittaCorrente = ditta
Stesso "oggetto tenuto", s.DittaCorrente, ditta

' Arguments.
Dim coll
Set coll = CreateObject("ORVE_MAILSERVER.CollDestinatari")
coll.Add Campo("anna@x.example"), Campo("Anna"), , Campo("A1")
Uguale "argomento per riferimento", coll(1).Indirizzo & coll(1).Nome, "anna@x.exampleAnna"
Uguale "chiave", coll.Item(Campo("A1")).Nome, "Anna"
Uguale "indice", coll(Campo(1)).Nome, "Anna"
coll.Remove Campo("A1")
Uguale "tolto", coll.Count, CLng(0)
Uguale "indirizzo buono", s.CheckRegularMailAddress(Campo("anna@x.example")), True

' What has no value says so, at the call.
On Error Resume Next
Banco.Scrivi s, "vOggetto", New Nessuno
UgualeErrore "testo senza valore", 438, "", ""
Banco.Scrivi s, "DittaCorrente", New Nessuno
UgualeErrore "ogni tipo senza valore", 438, "", ""
Banco.Scrivi s, "vOggetto", Nothing
UgualeErrore "nessun oggetto", 91, "", ""
On Error GoTo 0
Uguale "testo di prima", s.vOggetto, "AZ"

' One service for one record after the other: each look-up asks for its own code.
Dim db, codice
Set db = New BancaDati
Set codice = Campo("C001")
Set s = CreateObject("ORVE_MAILSERVER.CLSFW_MAILSERVER")
Set s.ConnectionADO = db
s.DittaCorrente = 1
s.GetImpostazioni
s.InizializzaRegistroInvioMail "VOCE", "OGGETTO", "utente", "gruppo", "Fattura"
s.vOggetto = "Fattura"
s.vFlagCorpo = 1
s.vCorpoMail = "Buongiorno"
Dim volta
For Each volta In Array("C001", "C002")
  codice.Contenuto = volta
  Set s.vCollDestinatari = Nothing
  db.Statements = ""
  s.AvviaProceduraInvio codice, 1
  If InStr(db.Statements, volta) = 0 Then Banco.Fallisce "la ricerca non chiede " & volta & ": " & db.Statements
Next
