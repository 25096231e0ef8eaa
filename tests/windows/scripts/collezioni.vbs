' Recipients and accounts, as a script makes and reads them.
Dim coll, uno, due, voce, elenco, indirizzo, nome, azienda, chiave, casella

Set coll = CreateObject("ORVE_MAILSERVER.CollDestinatari")
Uguale "nuova", coll.Count, CLng(0)
For Each voce In coll
  Banco.Fallisce "una collezione nuova ha una voce"
Next

' Typed arguments by reference take variables, values and nothing, and leave the variables as they are.
indirizzo = "anna@x.example" : nome = "Anna Più €" : azienda = "Acme S.p.A." : chiave = "Chiave"
Set uno = coll.Add(indirizzo, nome, azienda, chiave)
Uguale "indirizzo", uno.Indirizzo, "anna@x.example"
Uguale "nome", uno.Nome, "Anna Più €"
Uguale "azienda", uno.Azienda, "Acme S.p.A."
Uguale "casella", uno.Casella, CInt(0)
Uguale "variabile", nome & indirizzo & azienda & chiave, "Anna Più €anna@x.exampleAcme S.p.A.Chiave"
coll.Add "solo@x.example"
casella = 7
Set due = coll.AddFromLista("b@x.example", , , casella, "seconda")
Uguale "casella 7", due.Casella, CInt(7)
Uguale "nome omesso", due.Nome, ""
Uguale "tre voci", coll.Count, CLng(3)

' Index and key, through the default member and by its name.
Stesso "posizione", coll(1), uno
Stesso "chiave", coll("CHIAVE"), uno
Stesso "Item", coll.Item(3), due
Uguale "chiave per Item", coll.Item("seconda").Indirizzo, "b@x.example"
elenco = ""
For Each voce In coll
  elenco = elenco & voce.Indirizzo & ";"
Next
Uguale "For Each", elenco, "anna@x.example;solo@x.example;b@x.example;"

' Each member of a recipient is read and written.
uno.Indirizzo = "漢字@x.example" : uno.Nome = "漢字" : uno.Azienda = "Κόσμος" : uno.Casella = 2
Uguale "scritti", coll(1).Indirizzo & coll(1).Nome & coll(1).Azienda, "漢字@x.example漢字Κόσμος"
Uguale "casella scritta", coll(1).Casella, CInt(2)

coll.Remove 1
Stesso "dopo la rimozione", coll(2), due
coll.Remove "seconda"
Uguale "dopo due rimozioni", coll.Count, CLng(1)
Uguale "un destinatario tolto vive", due.Indirizzo, "b@x.example"

' The errors of the list.
On Error Resume Next
coll.Add "x", "", "", "k" : coll.Add "y", "", "", "K"
UgualeErrore "chiave doppia", 457, "ORVE_MAILSERVER", "La chiave è già associata a un elemento dell'insieme"
Uguale "non aggiunto", coll.Count, CLng(2)
Set voce = coll("1")
UgualeErrore "un testo numerico è una chiave", 5, "ORVE_MAILSERVER", ""
Set voce = coll("manca")
UgualeErrore "chiave ignota", 5, "ORVE_MAILSERVER", "Chiamata di routine o argomento non validi"
Set voce = coll(99)
UgualeErrore "posizione ignota", 9, "ORVE_MAILSERVER", "Indice non compreso nell'intervallo"
coll.Remove Null
UgualeErrore "indice nullo", 13, "ORVE_MAILSERVER", "Tipo non corrispondente"
uno.Casella = "testo"
UgualeErrore "testo per numero", 13, "", ""
uno.Casella = 70000
UgualeErrore "numero troppo grande", 6, "", ""
coll.Count = 3
UgualeErrore "sola lettura", 438, "", ""
uno.Inesistente = 1
UgualeErrore "membro ignoto", 438, "", ""
coll.Add
UgualeErrore "argomento mancante", 450, "", ""
Set voce = CreateObject("ORVE_MAILSERVER.Destinatario")
UgualeErrore "Destinatario non si crea", 429, "", ""
On Error GoTo 0

' The same address any number of times, no address, and a key of no length, which is none.
Set coll = CreateObject("ORVE_MAILSERVER.CollDestinatari")
coll.Add "anna@x.example", "Prima", "", ""
coll.Add "anna@x.example", "Seconda", "", ""
coll.AddFromLista "anna@x.example", "Terza", "", 2, ""
Set voce = coll.Add("")
Uguale "quattro voci", coll.Count, CLng(4)
Uguale "nell'ordine", coll(1).Nome & coll(2).Nome & coll(3).Nome, "PrimaSecondaTerza"
Uguale "indirizzo vuoto", voce.Indirizzo & "|" & coll(4).Indirizzo, "|"
On Error Resume Next
Set voce = coll("")
UgualeErrore "nessuno sotto la chiave vuota", 5, "ORVE_MAILSERVER", ""
On Error GoTo 0

' Accounts.
Dim mittenti, m
Set mittenti = CreateObject("ORVE_MAILSERVER.CollMittenti")
Set m = mittenti.Add("noi@x.example", "smtp.x.example", 587, 30, "utente", "segreta", 1, 2, -1, "Noi", True, "7")
Uguale "Indirizzo", m.Indirizzo, "noi@x.example"
Uguale "Server", m.Server, "smtp.x.example"
Uguale "Port", m.Port, CInt(587)
Uguale "Timeout", m.Timeout, CInt(30)
Uguale "user", m.user, "utente"
Uguale "Password", m.Password, "segreta"
Uguale "Auth", m.Auth, CInt(1)
Uguale "ReadRcpt", m.ReadRcpt, CInt(2)
Uguale "DeliveryStatus", m.DeliveryStatus, CInt(-1)
Uguale "Descrizione", m.Descrizione, "Noi"
Uguale "IsSsl", m.IsSsl, True
Uguale "CryptType", m.CryptType, CInt(0)
Set m = mittenti.AddMittente("voi@x.example", "s", 25, 0, "", "", 0, 0, 0, , 2, "1")
Uguale "IsSsl di AddMittente", m.IsSsl, False
Uguale "CryptType di AddMittente", m.CryptType, CInt(2)
Uguale "Descrizione omessa", m.Descrizione, ""
Uguale "per chiave", mittenti.Item("1").Indirizzo, "voi@x.example"
Uguale "per posizione", mittenti.Item(1).Indirizzo, "noi@x.example"
Uguale "Count", mittenti.Count, CLng(2)
mittenti.Remove "7"
Uguale "Count dopo", mittenti.Count, CLng(1)

On Error Resume Next
mittenti.AddMittente "altro@x.example", "s", 25, 0, "", "", 0, 0, 0, , 2, "1"
UgualeErrore "chiave doppia di AddMittente", 457, "ORVE_MAILSERVER", "La chiave è già associata a un elemento dell'insieme"
Uguale "account non aggiunto", mittenti.Count, CLng(1)
On Error GoTo 0
mittenti.Add "senza@x.example", "s", 25, 0, "", "", 0, 0, 0, "", False, ""
mittenti.AddMittente "senza@x.example", "s", 25, 0, "", "", 0, 0, 0, "", 0, ""
Uguale "account senza chiave", mittenti.Count, CLng(3)
Uguale "per posizione soltanto", mittenti.Item(3).Indirizzo, "senza@x.example"

' The collection of accounts takes no index itself and is walked by no loop, but its enumerator is a member like others.
On Error Resume Next
Set m = mittenti(1)
If Err.Number = 0 Then Banco.Fallisce "CollMittenti ha un membro predefinito"
Err.Clear
For Each m In mittenti
  Exit For
Next
If Err.Number = 0 Then Banco.Fallisce "CollMittenti si percorre"
Err.Clear
On Error GoTo 0
If mittenti.NewEnum Is Nothing Then Banco.Fallisce "NewEnum non dà nulla"

' Each member of an account is read and written.
Set m = CreateObject("ORVE_MAILSERVER.Mittente")
m.Indirizzo = "a" : m.Server = "b" : m.Descrizione = "c" : m.Port = 1 : m.Timeout = 2 : m.user = "d"
m.Password = "e" : m.Auth = 3 : m.ReadRcpt = 4 : m.DeliveryStatus = 5 : m.IsSsl = True : m.CryptType = 6
Uguale "testi", m.Indirizzo & m.Server & m.Descrizione & m.user & m.Password, "abcde"
Uguale "numeri", m.Port & m.Timeout & m.Auth & m.ReadRcpt & m.DeliveryStatus & m.CryptType, "123456"
Uguale "IsSsl scritto", m.IsSsl, True
