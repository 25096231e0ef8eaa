// Mail as HTML with the user's signature, where the company asks for it in its settings.
//
// Only blanks are turned into entities; the rest of a body goes through as markup, on purpose. The signature
// follows the closing tag of the document.
#include "content/corpo_html.h"

#include <string_view>

#include "service/failures.h"
#include "service/guards.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr std::string_view kFontPredefinito = "Calibri";
constexpr std::int32_t kDimensionePredefinita = 3;  // of HTML's font sizes, 1 to 7

std::string TestoSenzaBianchiInFondo(const host::RecordSet& riga, std::string_view colonna) {
  return std::string(text::TrimRight(host::Leggi(riga, colonna).ToText()));
}

std::string DocumentoHTML(const std::string& testo, std::string_view font, std::int32_t dimensione) {
  std::string apertura = "<font face = \"";
  apertura.append(font).append("\" size = \"").append(std::to_string(dimensione)).append("\">");
  std::string html = "<!DOCTYPE html>\r\n<html>\r\n<body>\r\n";
  // The line feed of a line end stays at the start of the following line.
  for (const auto riga : text::Split(testo, '\r')) {
    html.append(apertura).append(riga).append("</font><br/>\r\n");
  }
  return html.append("</body>\r\n</html>\r\n");
}

}  // namespace

bool EsisteParamHTMLFW95(const Contesto& contesto, const Oggetti& oggetti) {
  bool esiste = false;
  SegnalaErrori(PerMessaggio(oggetti, "-", " in CLSFW_MAILSERVER: EsisteParamHTMLFW95"), [&] {
    const auto risultato = host::Richiesto(contesto.ConnectionADO)
                               .Execute(
                                   " SELECT 1 FROM FW95_SETTINGS WITH (NOLOCK) "
                                   " WHERE FW95_CODICE = 'AIT_MAIL_HTML' AND FW95_VALORE = 1 ",
                                   host::kComandoTesto);
    esiste = !host::Richiesto(risultato).Eof();
  });
  return esiste;
}

std::string TabellaFirmeFW95(const Contesto& contesto, const Oggetti& oggetti) {
  std::string tabella;
  SegnalaErrori(PerMessaggio(oggetti, "-", " in CLSFW_MAILSERVER: TabellaFirmeFW95"), [&] {
    const auto risultato =
        host::Richiesto(contesto.ConnectionADO).Execute(kStatementTabellaFirme, host::kComandoTesto);
    if (host::Richiesto(risultato).Eof()) return;
    tabella = TestoSenzaBianchiInFondo(*risultato, "FW95_VALORE");
  });
  return tabella;
}

// A mail without a signature is better than a message about it: what was read so far counts.
FirmaUtente GetFirmaUtente(const Contesto& contesto, const Oggetti& oggetti, const std::string& tabella) {
  FirmaUtente firma;
  IgnoraErrori([&] {
    auto& connessione = host::Richiesto(contesto.ConnectionADO);
    const auto esiste = connessione.Execute(
        "SELECT TOP 1 1 FROM INFORMATION_SCHEMA.TABLES where TABLE_NAME = '" + tabella + "'",
        host::kComandoNonIndicato);
    if (host::Richiesto(esiste).Eof()) return;
    const auto applicazione = ApplicazioneDi(oggetti.ActiveInterface);
    const auto utente = host::Richiesto(applicazione).UtenteCorrente();
    const std::int32_t id = host::Richiesto(utente).IdUtente();
    const auto riga = connessione.Execute(
        " SELECT FIRMA_HTML, ISNULL(FONT,'') FONT, ISNULL(DIMENSIONE,0) DIMENSIONE \r\n"
        " FROM " +
            tabella + "\r\n WHERE IDUTENTE_FW07 = " + std::to_string(id) + "\r\n",
        host::kComandoTesto);
    if (host::Richiesto(riga).Eof()) return;
    firma.testo = TestoSenzaBianchiInFondo(*riga, "FIRMA_HTML");
    firma.font = TestoSenzaBianchiInFondo(*riga, "FONT");
    firma.dimensione = host::Variant(TestoSenzaBianchiInFondo(*riga, "DIMENSIONE")).ToInt16();
  });
  return firma;
}

std::string TestoInHTML(const Oggetti& oggetti, const std::string& testo, const std::string& font,
                        std::int32_t dimensione) {
  std::string html;
  SegnalaErrori(PerMessaggio(oggetti, "-", " in CLSFW_MAILSERVER: TestoInHTML"), [&] {
    const std::string_view fontUsato = text::Trim(font).empty() ? kFontPredefinito : font;
    const bool senzaDimensione = (static_cast<std::uint32_t>(dimensione) & 0xFFFFU) == 0;
    if (text::Trim(testo).empty()) return;
    html = DocumentoHTML(text::Replace(testo, " ", "&nbsp;"), fontUsato,
                         senzaDimensione ? kDimensionePredefinita : dimensione);
  });
  return html;
}

std::string CorpoHTMLConFirma(const Contesto& contesto, const Oggetti& oggetti, const std::string& corpo) {
  const std::string tabella(text::TrimRight(TabellaFirmeFW95(contesto, oggetti)));
  const FirmaUtente firma = GetFirmaUtente(contesto, oggetti, tabella);
  return TestoInHTML(oggetti, corpo, firma.font, firma.dimensione) + firma.testo;
}

}  // namespace orve
