-- Sample data: two companies and the people they write to. Passwords are set by the program that makes the file.

INSERT INTO CG16_ANAGGEN
  (CG16_CODICE, CG16_RAGSOANAG, CG16_NOME, CG16_COGNOME, CG16_INDIRIZZO, CG16_CAP, CG16_CITTA, CG16_PROV, CG16_FAXNUM,
   CG16_INDEMAIL, CG16_EMAIL_PEC)
VALUES
  -- the two companies; the second has no mail address of its own
  (1, 'Arvenia Distribuzione S.p.A.', NULL, NULL, 'Via dell''Industria, 12', '36100', 'Vicenza', 'VI', '0444 000001',
   'info@arvenia.example', 'arvenia@pec.arvenia.example'),
  (2, 'Società Agricola Colle Fiorito S.r.l.', NULL, NULL, 'Località Colle Fiorito', '62010', 'Appignano', 'MC', NULL,
   NULL, 'collefiorito@pec.collefiorito.example'),
  -- customers: both addresses
  (101, 'Officine Bellariva S.r.l.', NULL, NULL, 'Viale del Lavoro, 8', '37135', 'Verona', 'VR', '045 000101',
   'acquisti@bellariva.example', 'bellariva@pec.bellariva.example'),
  -- accents and an apostrophe, ordinary address only
  (102, 'Pasticceria Città d''Oro S.n.c.', NULL, NULL, 'Piazza dell''Università, 3', '35122', 'Padova', 'PD', NULL,
   'ordini@cittadoro.example', NULL),
  -- a comma in the name, certified address only
  (103, 'Legnami, Travi e Coperture S.r.l.', NULL, NULL, 'Via Forlì, 21', '33100', 'Udine', 'UD', NULL,
   NULL, 'legnami@pec.legnami.example'),
  -- no address at all
  (104, 'Ferramenta del Borgo S.a.s.', NULL, NULL, 'Via del Borgo, 1', '31100', 'Treviso', 'TV', '0422 000104',
   NULL, NULL),
  -- blanks for addresses
  (105, 'Cartotecnica Tre Spazi S.r.l.', NULL, NULL, 'Via delle Cartiere, 9', '25121', 'Brescia', 'BS', NULL,
   '   ', ' '),
  -- the two names of one customer, before and after 1 January 2025
  (106, 'Molino Vecchio S.r.l.', NULL, NULL, 'Strada del Molino, 2', '46100', 'Mantova', 'MN', NULL,
   'info@molinovecchio.example', 'molinovecchio@pec.molini.example'),
  (107, 'Molino Nuovo S.p.A.', NULL, NULL, 'Strada del Molino, 4', '46100', 'Mantova', 'MN', NULL,
   'info@molinonuovo.example', 'molinonuovo@pec.molini.example'),
  -- a dash, quotation marks and letters beyond the Latin ones
  (108, 'Caffè «Perù» – Torrefazione Αθήνα', NULL, NULL, 'Calle Lunga, 77', '30100', 'Venezia', 'VE', NULL,
   'caffe@torrefazione.example', 'torrefazione@pec.torrefazione.example'),
  -- an ordinary address that is none
  (109, 'Rottami e Recuperi S.r.l.', NULL, NULL, 'Via della Ferrovia, 5', '40100', 'Bologna', 'BO', NULL,
   'amministrazione(at)rottami.example', 'rottami@pec.rottami.example'),
  -- suppliers
  (201, 'Trasporti Rapidi Adriatici S.p.A.', NULL, NULL, 'Via del Porto, 100', '48122', 'Ravenna', 'RA', '0544 000201',
   'spedizioni@rapidiadriatici.example', 'rapidiadriatici@pec.rapidiadriatici.example'),
  (202, 'Imballaggi L''Aquilone S.r.l.', NULL, NULL, 'Via L''Aquila, 14', '65121', 'Pescara', 'PE', NULL,
   NULL, 'aquilone@pec.aquilone.example'),
  (203, 'Vetreria Laguna S.r.l.', NULL, NULL, 'Fondamenta dei Vetrai, 6', '30141', 'Venezia', 'VE', NULL,
   'vendite@vetrerialaguna.example', NULL),
  -- customers of the second company
  (301, 'Enoteca del Ponte S.n.c.', NULL, NULL, 'Via del Ponte, 1', '62100', 'Macerata', 'MC', NULL,
   'vini@enotecadelponte.example', 'enoteca@pec.enotecadelponte.example'),
  -- agents
  (401, 'Agenzia Nord Est', 'Nord', 'Est', 'Via Trieste, 30', '34100', 'Trieste', 'TS', NULL,
   'nordest@agenzie.example', 'nordest@pec.agenzie.example'),
  (402, 'Agenzia Isole', 'Isole', NULL, 'Via Cagliari, 2', '09100', 'Cagliari', 'CA', NULL, NULL, NULL),
  (403, 'Agenzia Marche', NULL, 'Marche', 'Via Ancona, 4', '60100', 'Ancona', 'AN', NULL,
   'marche@agenzie.example', NULL);

INSERT INTO CG18_ANADITTABASE (CG18_DITTA, CG18_CODICE_CG16) VALUES (1, 1), (2, 2);

INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16) VALUES
  (1, 0, 1001, 101),
  (1, 0, 1002, 102),
  (1, 0, 1003, 103),
  (1, 0, 1004, 104),
  (1, 0, 1005, 105),
  (1, 0, 1006, 106),
  (1, 0, 1007, 108),
  (1, 0, 1008, 109),
  (1, 1, 2001, 201),
  (1, 1, 2002, 202),
  (1, 1, 1001, 203),  -- the number of a customer, as a supplier
  (2, 0, 1001, 301),  -- the number of a customer, of the other company
  (2, 0, 1002, 101);  -- a customer of both companies

INSERT INTO CG44_CLIFORVALIDITA
  (CG44V_DITTA_CG18, CG44V_TIPOCF_CG44, CG44V_CLIFOR_CG44, CG44V_DAL, CG44V_CODICE_CG16)
VALUES (1, 0, 1006, 20250101, 107);

INSERT INTO MG17_AGENTI (MG17_DITTA_CG18, MG17_AGENTE, MG17_ANAGEN_CG16) VALUES
  (1, 'A01', 401),
  (1, 'A02', 402),
  (2, 'A01', 403);

INSERT INTO MG22_CLIFORDEST
  (MG22_DITTA_CG18, MG22_TIPOCF_CG44, MG22_CLIFOR_CG44, MG22_CODDESTIN, MG22_DESTRAGSOC, MG22_DESTEMAIL, MG22_DESTFAX,
   MG22_DESTPEC)
VALUES
  -- addresses of its own
  (1, 0, 1001, 'SEDE', 'Bellariva, Stabilimento Sud', 'stabilimento@bellariva.example', '045 000102',
   'stabilimento@pec.bellariva.example'),
  -- none: the customer's count
  (1, 0, 1001, 'MAG1', 'Bellariva, Magazzino 1', NULL, NULL, NULL),
  -- blanks: the same
  (1, 0, 1001, 'MAG2', 'Bellariva, Magazzino 2', '  ', NULL, ' '),
  -- certified only
  (1, 0, 1001, 'PEC', 'Bellariva, Ufficio Protocollo', NULL, NULL, 'protocollo@pec.bellariva.example'),
  -- a code with strokes in it
  (1, 0, 1001, 'A/B/3', 'Bellariva, Corsia A/B/3', 'corsia@bellariva.example', NULL, NULL),
  -- neither the destination nor the customer has an address
  (1, 0, 1004, 'SEDE', 'Ferramenta del Borgo, Sede', NULL, NULL, NULL),
  -- the customer no longer exists
  (1, 0, 1999, 'SEDE', 'Deposito dismesso', NULL, NULL, NULL),
  -- a supplier's
  (1, 1, 2001, 'HUB', 'Rapidi Adriatici, Piattaforma', 'piattaforma@rapidiadriatici.example', NULL, NULL);

INSERT INTO CO02_ANAGCONTATTO (CO02_ID, CO02_COGNOMENOME, CO02_EMAIL1, CO02_PEC) VALUES
  (501, 'Ufficio Acquisti', 'ufficio.acquisti@bellariva.example', 'ufficio.acquisti@pec.bellariva.example'),
  (502, 'Responsabile Qualità', NULL, 'qualita@pec.cittadoro.example'),
  (503, 'Contatto senza legami', 'nessuno@contatti.example', NULL),
  (504, 'Portineria', ' ', '  ');

-- 501 belongs to two partners, 503 to none
INSERT INTO CO03_LEGCONTATTO (CO03_ID_CO02, CO03_CODICE_CG16) VALUES (501, 101), (501, 301), (502, 102), (504, 104);

INSERT INTO FW06_GROUPUSR (FW06_ID, FW06_CODICE, FW06_DESCR) VALUES
  (1, 'AMM', 'Amministrazione'),
  (2, 'VEN', 'Vendite e Qualità'),
  (3, 'MAG', NULL);

INSERT INTO FW07_APPUSER (FW07_ID, FW07_CODICE, FW07_CODICE_FW06, FW07_USERNAME, FW07_DESCR) VALUES
  (1, 'U01', 'AMM', 'fatturazione', 'Ufficio Fatturazione'),
  (2, 'U02', 'AMM', 'magazzino', 'Magazzino'),
  (3, 'U03', 'VEN', 'vendite', 'Ufficio Vendite'),
  (4, 'U04', 'VEN', 'sportello', 'Sportello'),
  (5, 'U05', 'MAG', NULL, NULL),
  (6, 'U01', 'VEN', 'banco', 'Banco vendita');  -- the code of user 1 in another group

-- user 3 prefers a group that is not his own, users 4 to 6 prefer none
INSERT INTO FW00_GRPUSRASSOC (FW00_ID_FW07, FW00_ID_FW06, FW00_FLGPREF) VALUES
  (1, 1, 1),
  (1, 2, 0),
  (2, 1, 0),
  (2, 3, 1),
  (3, 1, 1),
  (3, 2, 0),
  (4, 2, 0);

INSERT INTO FW23_FAXER
  (FW23_IDSERVER, FW23_SERVERNAME, FW23_PORT, FW23_TIMEOUT, FW23_INDTIPO, FW23_INDAUTH, FW23_SSL)
VALUES
  (1, 'smtp.arvenia.example', 587, 30, 1, 1, 1),
  (2, 'pec.arvenia.example', 465, 30, 2, 1, 1),
  (3, 'smtp.collefiorito.example   ', 25, 60, 1, 0, 0),
  (4, 'pec.collefiorito.example', 465, NULL, 2, 1, 2),
  (5, NULL, NULL, NULL, 1, NULL, NULL);  -- everything as by default

INSERT INTO FW98_MAILACCOUNT
  (FW98_IDACCOUNT, FW98_MAILADDRESS, FW98_USERNAME, FW98_ALIAS, FW98_INDREADRCPT, FW98_INDDELIVERYSTATUS,
   FW98_IDSERVER_FW23)
VALUES
  (1, 'fatture@arvenia.example', 'fatture@arvenia.example', 'Ufficio Fatture Arvenia', 1, 1, 1),
  (2, 'info@arvenia.example', 'info@arvenia.example', NULL, 0, 0, 1),
  (3, 'arvenia@pec.arvenia.example', 'arvenia@pec.arvenia.example', NULL, 0, 2, 2),
  (4, 'fatture@pec.arvenia.example', 'fatture@pec.arvenia.example', 'Ufficio Fatture Arvenia (PEC)', -1, -1, 2),
  (5, 'magazzino@arvenia.example', 'magazzino@arvenia.example', 'Magazzino Arvenia', -2, 2, 1),
  (6, 'vendite@arvenia.example', 'vendite@arvenia.example', NULL, NULL, NULL, 1),
  (7, 'ordini@collefiorito.example', NULL, NULL, 1, NULL, 3),
  (8, 'collefiorito@pec.collefiorito.example', 'collefiorito@pec.collefiorito.example', NULL, 0, 1, 4),
  (9, 'senza.server@arvenia.example', 'senza.server@arvenia.example', 'Senza server', 0, 0, NULL),
  (10, NULL, NULL, 'Senza indirizzo', 0, 0, 5);

-- user 1: ordinary and certified default; user 2: an account, none of them default; user 3: ordinary default only; user
-- 6: an account without an address on a server without a name; the others have none
INSERT INTO FW99_MAILUSERACCOUNT (FW99_IDACCOUNT_FW98, FW99_ID_FW07, FW99_ISDEFAULT) VALUES
  (1, 1, 1),
  (2, 1, 0),
  (4, 1, 1),
  (5, 2, 0),
  (6, 3, 1),
  (10, 6, 1);

INSERT INTO FW9A_MAILAZIENDAACCOUNT (FW9A_IDACCOUNT_FW98, FW9A_DITTA_CG18) VALUES (2, 1), (3, 1), (7, 2), (8, 2);

INSERT INTO FW24_FAXCONFIG
  (FW24_CODICE, FW24_INDCANALE, FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_MAILMODSTDIFF, FW24_PATHTMP,
   FW24_READRECEIPT, FW24_FLGMSGPERS, FW24_MSGPERS, FW24_BCC)
VALUES
  ('MAIL', 1, 76, 1, 1, '', 0, 0, NULL, 0),
  ('FAX', 0, 3, 0, NULL, NULL, NULL, NULL, NULL, NULL);

INSERT INTO FW95_SETTINGS (FW95_CODICE, FW95_VALORE) VALUES
  ('AIT_MAIL_HTML', '1'),
  ('AIT_FIRME', 'AZ_FIRMEUTENTI');

INSERT INTO AZ_FIRMEUTENTI (IDUTENTE_FW07, FIRMA_HTML, FONT, DIMENSIONE) VALUES
  (1, '<p>Cordiali saluti<br/><b>Arvenia Distribuzione S.p.A.</b><br/>Ufficio Fatturazione &ndash; Città di Vicenza</p>',
   'Verdana', 2),
  (2, '<p>Il magazzino di Arvenia</p>  ', NULL, NULL),
  (3, '<p>Ufficio Vendite</p>', '   ', 0);
