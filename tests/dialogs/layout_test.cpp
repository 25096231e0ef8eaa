// The two layout tables, control by control. Any toolkit builds the windows from them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "dialogs/layouts.h"
#include "orve-mailserver/host/variant.h"
#include "text/text.h"

namespace orve {
namespace {

using host::LayoutControllo;
using host::TipoControllo;

std::string Tipo(TipoControllo tipo) {
  switch (tipo) {
    case TipoControllo::kFrame:
      return "frame";
    case TipoControllo::kEtichetta:
      return "label";
    case TipoControllo::kKvlLabel:
      return "KVL_LABEL";
    case TipoControllo::kTbarMenu:
      return "KVL_TBARMENU";
    case TipoControllo::kTxtEdit:
      return "TxtEdit";
    case TipoControllo::kRichTextBox:
      return "KvlRichTextBox";
    case TipoControllo::kCheckBox:
      return "KVL_CHECKBOX";
    case TipoControllo::kCombo:
      return "KVL_COMBO";
    case TipoControllo::kGriglia:
      return "KVL_QGRIDWRAPPER";
    case TipoControllo::kResizeForm:
      return "KVL_RESIZEFORM";
  }
  return "?";
}

std::string Numero(float numero) {
  return host::Variant(numero).ToText();
}

// name (in frame) kind "caption" left,top,width,height #tab and what is set at design.
std::string Riga(const LayoutControllo& controllo) {
  std::string riga(controllo.nome);
  if (!controllo.cornice.empty()) riga += " in " + std::string(controllo.cornice);
  riga += " " + Tipo(controllo.tipo) + " \"" + std::string(controllo.didascalia) + "\" ";
  const auto& posto = controllo.posizione;
  riga +=
      Numero(posto.left) + "," + Numero(posto.top) + "," + Numero(posto.width) + "," + Numero(posto.height);
  riga += " #" + std::to_string(controllo.tabIndex);
  const auto& disegno = controllo.disegno;
  if (!disegno.visible) riga += " hidden";
  if (disegno.maxchar != 0) riga += " maxchar " + std::to_string(disegno.maxchar);
  if (disegno.maxwidth != 0) riga += " maxwidth " + std::to_string(disegno.maxwidth);
  if (disegno.numrighe != 0) riga += " numrighe " + std::to_string(disegno.numrighe);
  if (disegno.ismultiline) riga += " multiline";
  if (controllo.tipo == TipoControllo::kTbarMenu) riga += disegno.ismenupopup ? " menu" : " plain";
  if (disegno.gettextmode != 0) riga += " gettextmode " + std::to_string(disegno.gettextmode);
  if (disegno.kvlalignment != 0) riga += " kvlalignment " + std::to_string(disegno.kvlalignment);
  if (!disegno.tag.empty()) riga += " tag \"" + std::string(disegno.tag) + "\"";
  if (disegno.percorso) riga += " path";
  return riga;
}

std::vector<std::string> Righe(const host::LayoutForm& form) {
  std::vector<std::string> righe;
  for (const auto& controllo : form.controlli) righe.push_back(Riga(controllo));
  return righe;
}

TEST(Layout, TheComposeWindowHasEveryControlAtItsPlace) {
  const auto& form = LayoutOpzMail();
  EXPECT_EQ(form.nome, "FRMRW_OPZMAIL");
  EXPECT_EQ(form.didascalia, "Invio email...");
  EXPECT_EQ(form.font, "Tahoma");
  const std::vector<std::string> want = {
      R"x(KVL_RESIZEFORM1 KVL_RESIZEFORM "" 0,0,0,0 #-1)x",
      R"x(FMR_MITTENTE frame "Mittente" 60,0,10605,735 #23)x",
      R"x(CMB_ACCOUNT in FMR_MITTENTE KVL_COMBO "" 915,240,9465,315 #0 maxchar 95)x",
      R"x(LBL_MITTENTE in FMR_MITTENTE label "Da..." 120,240,1335,375 #24)x",
      R"x(FMR_DESTINATARIO frame "Destinatari" 60,720,10605,1545 #19)x",
      R"x(BTN_DEST_A in FMR_DESTINATARIO KVL_TBARMENU "A..." 120,285,690,300 #2 menu)x",
      R"x(TXT_EMAIL in FMR_DESTINATARIO TxtEdit "" 915,285,9555,300 #3 maxchar 10000 maxwidth 79)x",
      R"x(BTN_DEST_CC in FMR_DESTINATARIO KVL_TBARMENU "Cc..." 120,645,690,300 #4 menu)x",
      R"x(TXT_EMAIL_CC in FMR_DESTINATARIO TxtEdit "" 915,645,9555,300 #5 maxchar 10000 maxwidth 79)x",
      R"x(BTN_DEST_CCN in FMR_DESTINATARIO KVL_TBARMENU "Ccn..." 120,1005,690,300 #6 menu)x",
      R"x(TXT_EMAIL_CCN in FMR_DESTINATARIO TxtEdit "" 915,1005,9555,300 #7 maxchar 10000 maxwidth 79)x",
      R"x(Label2 in FMR_DESTINATARIO label "Destinatario" 120,1900,1215,375 #20)x",
      R"x(TXT_DITTA in FMR_DESTINATARIO TxtEdit "" 1410,1900,6075,300 #1 maxchar 50 maxwidth 50)x",
      R"x(FMR_PERS frame "Personalizzazione della mail" 60,2280,10605,4545 #21)x",
      R"x(Label4 in FMR_PERS label "Oggetto" 120,255,1185,240 #22)x",
      R"x(TXT_OGGETTO in FMR_PERS TxtEdit "" 915,240,9555,300 #8 maxchar 100 maxwidth 79)x",
      R"x(KVL_ALLEGA in FMR_PERS KVL_TBARMENU "Allega" 120,885,690,345 #10 plain)x",
      R"x(BTN_ELIMINA in FMR_PERS KVL_TBARMENU "Elimina" 120,1260,690,345 #11 menu)x",
      R"x(GRID_ALLEGATI in FMR_PERS KVL_QGRIDWRAPPER "" 915,585,9555,1035 #9)x",
      R"x(TXT_CORPO in FMR_PERS KvlRichTextBox "Corpo mail" 90,1680,10395,2400 #12 maxchar 2000 maxwidth 86 numrighe 8 multiline)x",
      R"x(CMD_LEGENDA in FMR_PERS KVL_TBARMENU "Aggiunta campi speciali" 120,4140,2100,315 #13 menu)x",
      R"x(CHK_CORPO in FMR_PERS KVL_CHECKBOX "(Corpo della mail)" 4380,4170,2145,300 #14 hidden)x",
      R"x(CHK_RICEVUTA in FMR_PERS KVL_CHECKBOX "Ricevuta di ritorno" 8745,4170,1785,300 #15)x",
      R"x(CHK_CONSEGNA in FMR_PERS KVL_CHECKBOX "Notifica consegna" 6960,4170,1695,300 #16 hidden)x",
      R"x(cmd_Invia KVL_TBARMENU "&Invia" 8460,6885,1080,345 #17 plain)x",
      R"x(cmd_Annulla KVL_TBARMENU "&Annulla" 9585,6885,1080,345 #18 plain)x"};
  EXPECT_EQ(Righe(form), want);
}

TEST(Layout, TheParametersWindowHasEveryControlAtItsPlace) {
  const auto& form = LayoutMailParams();
  EXPECT_EQ(form.nome, "FRMFW_MAILPARAMS");
  EXPECT_EQ(form.didascalia, "Personalizzazione unica invio mail");
  const std::vector<std::string> want = {
      R"x(KVL_RESIZEFORM1 KVL_RESIZEFORM "" 0,0,0,0 #-1)x",
      R"x(FRM_PARAM frame "" 15,0,7635,4530 #-1)x",
      R"x(TXT_CORPO in FRM_PARAM KvlRichTextBox "Corpo mail" 120,1680,7395,2700 #6 maxchar 2000 maxwidth 61 numrighe 9 multiline gettextmode 1 tag "Corpo mail")x",
      R"x(KVL_ALLEGA in FRM_PARAM KVL_TBARMENU "&Allega" 120,960,1065,330 #4 plain)x",
      R"x(CHK_DELIVERY in FRM_PARAM KVL_CHECKBOX "Notifica" 6000,240,1455,300 #2)x",
      R"x(CHK_READ in FRM_PARAM KVL_CHECKBOX "Lettura" 4300,240,1455,300 #1)x",
      R"x(KVL_LABEL3 in FRM_PARAM KVL_LABEL "Corpo (Email)" 30,1440,1215,300 #-1 kvlalignment 1)x",
      R"x(TXT_ALLEGATO in FRM_PARAM TxtEdit "" 1300,960,6195,300 #5 maxchar 100 maxwidth 51 gettextmode 1 path)x",
      R"x(CMB_ACCOUNT in FRM_PARAM KVL_COMBO "" 1110,600,6345,315 #3 maxchar 62)x",
      R"x(CMB_TIPO in FRM_PARAM KVL_COMBO "" 1110,240,2145,315 #0 maxchar 20)x",
      R"x(KVL_LABEL2 in FRM_PARAM KVL_LABEL "Mittente" 120,600,735,300 #-1 kvlalignment 1)x",
      R"x(KVL_LABEL1 in FRM_PARAM KVL_LABEL "Tipo       " 120,240,735,300 #-1 kvlalignment 1)x",
      R"x(CMD_OK KVL_TBARMENU "&OK" 5400,4560,1095,345 #7 plain)x",
      R"x(CMD_ANNULLA KVL_TBARMENU "&Annulla" 6555,4560,1095,345 #8 plain)x"};
  EXPECT_EQ(Righe(form), want);
}

TEST(Layout, BothWindowsNameTheButtonThatConfirmsAndTheOneThatTakesFiles) {
  EXPECT_EQ(LayoutOpzMail().pulsanteConferma, "cmd_Invia");
  EXPECT_EQ(LayoutMailParams().pulsanteConferma, "CMD_OK");
  for (const auto* form : {&LayoutOpzMail(), &LayoutMailParams()}) {
    EXPECT_EQ(form->pulsanteFile, "KVL_ALLEGA");
    for (const auto& nome : {form->pulsanteConferma, form->pulsanteFile}) {
      const auto riga = std::find_if(form->controlli.begin(), form->controlli.end(),
                                     [&](const auto& uno) { return uno.nome == nome; });
      ASSERT_NE(riga, form->controlli.end()) << nome;
      EXPECT_EQ(riga->tipo, TipoControllo::kTbarMenu) << nome;
      EXPECT_FALSE(riga->disegno.ismenupopup) << nome;
    }
  }
}

// What a toolkit relies on when it builds a window from a table.

TEST(Layout, NamesDifferEvenWithoutCaseAndFramesStandBeforeWhatTheyHold) {
  for (const auto* form : {&LayoutOpzMail(), &LayoutMailParams()}) {
    std::set<std::string> nomi;
    for (const auto& controllo : form->controlli) {
      if (!controllo.cornice.empty()) {
        EXPECT_TRUE(nomi.contains(text::FoldCase(controllo.cornice))) << controllo.nome;
      }
      EXPECT_TRUE(nomi.insert(text::FoldCase(controllo.nome)).second) << controllo.nome;
    }
  }
}

TEST(Layout, EachStopOfTheKeyboardIsTakenOnce) {
  for (const auto* form : {&LayoutOpzMail(), &LayoutMailParams()}) {
    std::set<int> fermate;
    for (const auto& controllo : form->controlli) {
      if (controllo.tabIndex < 0) continue;
      EXPECT_TRUE(fermate.insert(controllo.tabIndex).second) << controllo.nome;
    }
    EXPECT_EQ(*fermate.rbegin(), static_cast<int>(fermate.size()) - 1) << form->nome;
  }
}

TEST(Layout, WhatStandsInTheWindowLiesInsideItsBorder) {
  for (const auto* form : {&LayoutOpzMail(), &LayoutMailParams()}) {
    for (const auto& controllo : form->controlli) {
      if (!controllo.cornice.empty()) continue;
      EXPECT_LE(controllo.posizione.left + controllo.posizione.width, form->width) << controllo.nome;
      EXPECT_LE(controllo.posizione.top + controllo.posizione.height, form->height) << controllo.nome;
    }
  }
}

}  // namespace
}  // namespace orve
