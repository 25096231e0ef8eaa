// Pictures of both windows, for the eye: build/.../immagini. What a test can see of them is asserted too.
#include <QImage>
#include <QPixmap>
#include <QSet>
#include <filesystem>
#include <string>

#include "orve-mail/address-book/rubrica_finestra.h"
#include "orve-mail/address-book/rubrica_manager.h"
#include "places.h"
#include "prova.h"
#include "sqlite/schema.h"
#include "sqlite/sqlite_connection.h"

namespace orve::adapters::qt {
namespace {

class Immagini : public FinestraVera {
 protected:
  static void Ritrae(QWidget& finestra, const std::string& nome) {
    Respira();
    const std::filesystem::path cartellaImmagini = places::Build("immagini");
    std::filesystem::create_directories(cartellaImmagini);
    const QPixmap immagine = finestra.grab();
    EXPECT_EQ(immagine.deviceIndependentSize().toSize(), finestra.size());
    EXPECT_TRUE(immagine.save(QString::fromStdString((cartellaImmagini / (nome + ".png")).string())));
    QSet<QRgb> colori;
    const QImage punti = immagine.toImage();
    for (int y = 0; y < punti.height(); y += 3) {
      for (int x = 0; x < punti.width(); x += 3) colori.insert(punti.pixel(x, y));
    }
    EXPECT_GT(colori.size(), 16) << "an empty picture";
  }
};

TEST_F(Immagini, TheComposeWindow) {
  servizio->vOggetto = "Fattura 12 del 14/11/2026";
  servizio->vCorpoMail =
      "Spett.le Ferramenta Rossi,\r\n\r\nin allegato la fattura del mese.\r\n\r\nCordiali saluti";
  servizio->vFlagCorpo = 1;
  servizio->vElencoAllegati = host::Variant::Array{PerLibreria(cartella.File("fattura-12.pdf")),
                                                   PerLibreria(cartella.File("listino-2026.pdf"))};
  Collezione().AddFromLista("acquisti@rossi.example", "Ferramenta Rossi", "", 0);
  Collezione().AddFromLista("contabilita@rossi.example", "Contabilità", "", 1);
  Apri([](QWidget& finestra) {
    Ritrae(finestra, "invio");
    finestra.resize(1000, 680);
    Ritrae(finestra, "invio-grande");
  });
}

TEST_F(Immagini, TheComposeWindowWithoutASender) {
  servizio->SrvMailInstallato = kvMAPI;
  Apri([](QWidget& finestra) { Ritrae(finestra, "invio-senza-mittente"); });
}

TEST_F(Immagini, TheAddressBook) {
  const std::string file = cartella.Radice() + "/prova.db";
  sqlite::CreaDatabase(file, [](const auto& password) {
    return std::string(password.chiara.rbegin(), password.chiara.rend());
  });
  servizio->ManagerRubrica =
      app::CreaRubrica(ambiente, sqlite::SqliteConnection::Apri(file), app::MostraFinestraRubrica);
  servizio->DittaCorrente = 1;
  servizio->vDitta = "Officine Bellariva S.r.l.";
  Apri([this](QWidget& finestra) {
    for (const std::string cerca : {"", "bellariva", "assente"}) {
      regia.Poi("Rubrica", [cerca](QWidget& libro) {
        if (!cerca.empty()) Digita(libro, "TXT_CERCA", cerca);
        Ritrae(libro, cerca.empty() ? "rubrica" : "rubrica-" + cerca);
        libro.close();
      });
      Sceglie(finestra, "BTN_DEST_A", "Key_Arvio");
    }
  });
}

TEST_F(Immagini, TheParametersWindow) {
  servizio->MailParamCorpoUnico("Gentile cliente,\r\nin allegato il nuovo listino.");
  regia.Poi("FRMFW_MAILPARAMS", [](QWidget& finestra) {
    Ritrae(finestra, "parametri");
    finestra.close();
  });
  servizio->ReturnMailParameters();
}

}  // namespace
}  // namespace orve::adapters::qt
