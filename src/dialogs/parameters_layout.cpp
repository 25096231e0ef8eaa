// Every control of the parameters window, in the order of the form. The Tab key moves through them as the eye
// does, line by line.
#include <array>

#include "dialogs/layouts.h"

namespace orve {

namespace {

using host::LayoutControllo;
using enum host::TipoControllo;

constexpr auto kControlliParametri = std::to_array<LayoutControllo>({
    {.nome = "KVL_RESIZEFORM1", .tipo = kResizeForm},
    {.nome = "FRM_PARAM", .tipo = kFrame, .posizione = {15, 0, 7635, 4530}},
    {.nome = "TXT_CORPO",
     .tipo = kRichTextBox,
     .didascalia = "Corpo mail",
     .cornice = "FRM_PARAM",
     .posizione = {120, 1680, 7395, 2700},
     .tabIndex = 6,
     .disegno = {.maxchar = 2000,
                 .maxwidth = 61,
                 .numrighe = 9,
                 .ismultiline = true,
                 .gettextmode = 1,
                 .tag = "Corpo mail"}},
    {.nome = "KVL_ALLEGA",
     .tipo = kTbarMenu,
     .didascalia = "&Allega",
     .cornice = "FRM_PARAM",
     .posizione = {120, 960, 1065, 330},
     .tabIndex = 4,
     .disegno = {.ismenupopup = false}},
    {.nome = "CHK_DELIVERY",
     .tipo = kCheckBox,
     .didascalia = "Notifica",
     .cornice = "FRM_PARAM",
     .posizione = {6000, 240, 1455, 300},
     .tabIndex = 2},
    {.nome = "CHK_READ",
     .tipo = kCheckBox,
     .didascalia = "Lettura",
     .cornice = "FRM_PARAM",
     .posizione = {4300, 240, 1455, 300},
     .tabIndex = 1},
    {.nome = "KVL_LABEL3",
     .tipo = kKvlLabel,
     .didascalia = "Corpo (Email)",
     .cornice = "FRM_PARAM",
     .posizione = {30, 1440, 1215, 300},
     .disegno = {.kvlalignment = 1}},
    {.nome = "TXT_ALLEGATO",
     .tipo = kTxtEdit,
     .cornice = "FRM_PARAM",
     .posizione = {1300, 960, 6195, 300},
     .tabIndex = 5,
     .disegno = {.maxchar = 100, .maxwidth = 51, .gettextmode = 1, .percorso = true}},
    {.nome = "CMB_ACCOUNT",
     .tipo = kCombo,
     .cornice = "FRM_PARAM",
     .posizione = {1110, 600, 6345, 315},
     .tabIndex = 3,
     .disegno = {.maxchar = 62}},
    {.nome = "CMB_TIPO",
     .tipo = kCombo,
     .cornice = "FRM_PARAM",
     .posizione = {1110, 240, 2145, 315},
     .tabIndex = 0,
     .disegno = {.maxchar = 20}},
    {.nome = "KVL_LABEL2",
     .tipo = kKvlLabel,
     .didascalia = "Mittente",
     .cornice = "FRM_PARAM",
     .posizione = {120, 600, 735, 300},
     .disegno = {.kvlalignment = 1}},
    {.nome = "KVL_LABEL1",
     .tipo = kKvlLabel,
     .didascalia = "Tipo       ",
     .cornice = "FRM_PARAM",
     .posizione = {120, 240, 735, 300},
     .disegno = {.kvlalignment = 1}},
    {.nome = "CMD_OK",
     .tipo = kTbarMenu,
     .didascalia = "&OK",
     .posizione = {5400, 4560, 1095, 345},
     .tabIndex = 7,
     .disegno = {.ismenupopup = false}},
    {.nome = "CMD_ANNULLA",
     .tipo = kTbarMenu,
     .didascalia = "&Annulla",
     .posizione = {6555, 4560, 1095, 345},
     .tabIndex = 8,
     .disegno = {.ismenupopup = false}},
});

constexpr host::LayoutForm kFormParametri = {.nome = "FRMFW_MAILPARAMS",
                                             .didascalia = "Personalizzazione unica invio mail",
                                             .font = "Tahoma",
                                             .width = 7740,
                                             .height = 5025,
                                             .controlli = kControlliParametri,
                                             .pulsanteConferma = "CMD_OK",
                                             .pulsanteFile = "KVL_ALLEGA"};

}  // namespace

const host::LayoutForm& LayoutMailParams() {
  return kFormParametri;
}

}  // namespace orve
