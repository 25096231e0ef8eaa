-- What the host records of its sends: one row for each that is registered for a document. It is in the embedded database
-- or, where the application has its own server, in a file by itself. Compares byte by byte, so any SQLite program can
-- search it.
CREATE TABLE IF NOT EXISTS REGISTRO_INVII (
  ID                 INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
  ISTANTE            TEXT NOT NULL DEFAULT (strftime('%Y-%m-%d %H:%M:%f', 'now', 'localtime')),
  IDVOCE             TEXT,
  UOBJECT            TEXT,
  TIPOCANALE         INTEGER,             -- 3 mail, 5 certified mail
  TITOLOSTAMPA       TEXT,
  DITTA              TEXT,
  NUMREG             TEXT,
  TIPODOC            TEXT,
  NUMDOC             TEXT,
  SEZDOC             TEXT,
  UTENTEAPPLICAZIONE INTEGER,
  CANALEINVIO        REAL,
  MITTENTEINVIO      TEXT,
  GUIDLISTA          TEXT,
  TIPOLISTA          INTEGER,
  ESITOINVIO         INTEGER,             -- 0 sent, 1 failed or not sent, 2 cancelled by the user
  NOME               TEXT,
  AZIENDA            TEXT,
  INDIRIZZO          TEXT,
  ALLEGATO           TEXT,
  RISULTATO          TEXT,
  OGGETTO            TEXT,
  CORPO              TEXT
);
