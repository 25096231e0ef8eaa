// The lists of recipients as text: the lenient reader of programs' lists, the strict reader of the boxes, the
// writer, and the stages around the event and the window that put them to use.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "addressing/address_list.h"
#include "dialogs/FRMRW_OPZMAIL.h"
#include "dialogs/voci_indirizzo.h"
#include "fakes/fake_ambiente.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/before_send.h"
#include "support.h"
#include "text/text.h"

namespace orve {

/// The boxes of the window and what is read from them.
struct AccessoOpzMail {
  static const CollDestinatari& Read(FRMRW_OPZMAIL& form, const std::array<std::string, 3>& boxes) {
    form.TXT_EMAIL->Text(boxes[0]);
    form.TXT_EMAIL_CC->Text(boxes[1]);
    form.TXT_EMAIL_CCN->Text(boxes[2]);
    form.PrepareCollDestinatari();
    return *form.CollDestinatariForm;
  }
};

}  // namespace orve

namespace orve::fuzz {
namespace {

struct Recipient {
  std::string address;
  std::string name;
  std::string company;
  int box = 0;
  bool operator==(const Recipient&) const = default;
};
using Recipients = std::vector<Recipient>;
using Lists = std::array<std::string, 3>;

std::size_t Characters(const std::string& text) {
  return text::Length(text);
}

/// The lenient rules in plain words; what is read before an error counts. Returns the error's number or 0.
int ReadLeniently(const Lists& lists, Recipients& into) {
  constexpr std::size_t kMost = 32767;
  std::string name;
  for (std::size_t box = 0; box < lists.size(); ++box) {
    if (lists[box].empty()) continue;
    const auto items = Parts(lists[box], ';');
    if (items.size() > kMost) return host::kOverflow;
    for (const std::string& item : items) {
      const std::size_t open = item.find('<');
      const std::size_t close = item.find('>');
      const bool opens = open != std::string::npos;
      const bool closes = close != std::string::npos;
      if (opens && Characters(item.substr(0, open)) + 1 > kMost) return host::kOverflow;
      if (closes && Characters(item.substr(0, close)) + 1 > kMost) return host::kOverflow;
      if (opens) name = item.substr(0, open);
      if (opens && closes && close < open) return host::kArgomentoNonValido;
      const std::size_t begin = opens ? open + 1 : 0;
      const std::string address = item.substr(begin, closes ? close - begin : std::string::npos);
      if (!address.empty()) into.push_back({address, name, "", static_cast<int>(box)});
    }
  }
  return 0;
}

Recipients ReadStrictly(const Lists& boxes) {
  Recipients all;
  for (std::size_t box = 0; box < boxes.size(); ++box) {
    if (boxes[box].empty()) continue;
    for (const std::string& item : Parts(boxes[box], ';')) {
      const std::size_t open = item.find('<');
      const std::size_t close = item.find('>');
      Recipient recipient;
      recipient.box = static_cast<int>(box);
      if (open == std::string::npos) {
        if (close == std::string::npos) recipient.address = item;
      } else {
        recipient.name = item.substr(0, open);
        if (close != std::string::npos && close > open)
          recipient.address = item.substr(open + 1, close - open - 1);
      }
      all.push_back(recipient);
    }
  }
  return all;
}

/// The company of the last one with this address and name.
std::string CompanyOf(const Recipients& known, const Recipient& recipient) {
  const auto found = std::find_if(known.rbegin(), known.rend(), [&](const Recipient& other) {
    return other.address == recipient.address && other.name == recipient.name;
  });
  return found == known.rend() ? std::string() : found->company;
}

Recipients Content(const CollDestinatari& collection) {
  Recipients all;
  for (const auto& one : collection)
    all.push_back({one->Indirizzo(), one->Nome(), one->Azienda(), one->Casella()});
  return all;
}

void CheckLenientReader(const Lists& lists) {
  Recipients wanted;
  const int wantedError = ReadLeniently(lists, wanted);
  Recipients found;
  int error = 0;
  int box = 0;
  AddressListReader reader;
  try {
    for (const std::string& list : lists) {
      const Exact exact(list);
      reader.Leggi(exact.View(), [&](const std::string& address, const std::string& name) {
        found.push_back({address, name, "", box});
      });
      ++box;
    }
  } catch (const host::Errore& raised) {
    error = raised.Numero();
  }
  Require(error == wantedError, "the lenient reader raises what it should");
  Require(found == wanted, "the lenient reader reads what it should");
}

void CheckStrictEntry(std::string_view item) {
  const Exact exact(item);
  const VoceIndirizzo entry = LeggiVoceIndirizzo(exact.View());
  const auto inside = [&](std::string_view part) {
    return part.empty() || (part.data() >= exact.View().data() &&
                            part.data() + part.size() <= exact.View().data() + exact.View().size());
  };
  Require(inside(entry.indirizzo) && inside(entry.nome), "an entry's parts lie in the entry");
}

/// A service that has been through any number of sends, as in an application that keeps one.
struct Bench {
  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::ServizioAperto open{ambiente};
  std::unique_ptr<CLSFW_MAILSERVER>& service = open.servizio;
  Interno& inside = open.interno;
  std::unique_ptr<FRMRW_OPZMAIL> form;

  Bench() {
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = service.get();
  }

  void SetRecipients(const Recipients& recipients) {
    service->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    for (const Recipient& one : recipients) {
      service->vCollDestinatari->AddFromLista(one.address, one.name, one.company,
                                              static_cast<std::int16_t>(one.box));
    }
  }
  void SetLists(const Lists& lists) const {
    service->DestinatariA(lists[0]);
    service->DestinatariCC(lists[1]);
    service->DestinatariCCn(lists[2]);
  }
  [[nodiscard]] bool Reported() const { return ambiente->journal->Conta("ObjMessaggi.MostraMsg") > 0; }
};

void CheckStages(Bench& bench, const Lists& lists, const Recipients& known) {
  bench.ambiente->journal->Svuota();
  bench.service->ModalitaInvio(kvManuale);
  bench.SetLists({});
  bench.SetRecipients(known);
  BeforeDestinatari(bench.inside.messaggio, bench.inside.impostazioni, bench.inside.oggetti);
  // The lists that the stage has written, read by the rules.
  const Lists written = {bench.service->DestinatariA(), bench.service->DestinatariCC(),
                         bench.service->DestinatariCCn()};
  Lists expected;
  for (const Recipient& one : known) {
    if (one.box < 0 || one.box > 2) continue;
    std::string& list = expected[static_cast<std::size_t>(one.box)];
    list += (list.empty() ? "" : ";") + one.name + "<" + one.address + ">";
  }
  Require(written == expected, "the writer writes what it should");
  for (const Lists& now : {written, lists}) {
    bench.ambiente->journal->Svuota();
    bench.SetLists(now);
    AfterDestinatari(bench.inside.messaggio, bench.inside.impostazioni, bench.inside.oggetti);
    Recipients wanted;
    const int error = ReadLeniently(now, wanted);
    for (Recipient& one : wanted) {
      one.company = CompanyOf(known, one);
      const bool blank = one.company.find_first_not_of(' ') == std::string::npos;
      if (one.box > 0 && blank) one.company.clear();
    }
    Require(Content(*bench.service->vCollDestinatari) == wanted, "the event's recipients");
    Require(bench.Reported() == (error != 0), "the stage reports its error and nothing else");
  }
}

void CheckWindow(Bench& bench, const Lists& boxes, const Recipients& known) {
  bench.SetRecipients(known);
  const Recipients found = Content(AccessoOpzMail::Read(*bench.form, boxes));
  Recipients wanted = ReadStrictly(boxes);
  for (Recipient& one : wanted) {
    const bool named = !one.name.empty() || !one.address.empty();
    one.company = one.box == 2 ? one.name : named ? CompanyOf(known, one) : "";
  }
  Require(found.size() == wanted.size(), "the window reads as many recipients as it should");
  for (std::size_t i = 0; i < found.size(); ++i) {
    RequireSame(found[i].address, wanted[i].address, "the window's address");
    RequireSame(found[i].name, wanted[i].name, "the window's name");
    Require(found[i].box == wanted[i].box, "the window's box");
    // A bare address has no name, and no company either.
    if (!found[i].name.empty()) RequireSame(found[i].company, wanted[i].company, "the window's company");
  }
}

/// The recipients that a caller might have had: the words of a text, by turns name, address and company.
Recipients Known(std::string_view text) {
  Recipients known;
  const auto words = Parts(text, '\x1e');
  for (std::size_t i = 0; i + 2 < words.size(); i += 3) {
    const int box = static_cast<int>(i / 3 % 4);  // the last one is an unknown box
    known.push_back({words[i + 1], words[i], words[i + 2], box});
  }
  return known;
}

/// What no reader can mistake comes back intact from both.
void CheckRoundTrip(Bench& bench, const Recipients& known) {
  Recipients clean;
  for (Recipient one : known) {
    for (std::string* text : {&one.name, &one.address}) {
      text->erase(
          std::remove_if(text->begin(), text->end(), [](char c) { return c == ';' || c == '<' || c == '>'; }),
          text->end());
    }
    one.company.clear();
    if (one.box < 3 && !one.address.empty()) clean.push_back(one);
  }
  std::stable_sort(clean.begin(), clean.end(),
                   [](const Recipient& a, const Recipient& b) { return a.box < b.box; });
  Lists lists;
  for (const Recipient& one : clean) {
    std::string& list = lists[static_cast<std::size_t>(one.box)];
    list += (list.empty() ? "" : ";") + one.name + "<" + one.address + ">";
  }
  Recipients lenient;
  if (ReadLeniently(lists, lenient) == 0)
    Require(lenient == clean, "written lists are read leniently as they were");
  bench.SetRecipients({});
  Recipients strict = Content(AccessoOpzMail::Read(*bench.form, lists));
  for (Recipient& one : strict) one.company.clear();
  Require(strict == clean, "written lists are read strictly as they were");
}

}  // namespace
}  // namespace orve::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orve::fuzz;
  static Bench bench;
  Input input(data, size);
  Lists lists;
  for (std::string& list : lists) list = input.Text();
  const Recipients known = Known(input.Rest());
  CheckLenientReader(lists);
  for (const std::string& item : Parts(lists[0], ';')) CheckStrictEntry(item);
  CheckStages(bench, lists, known);
  CheckWindow(bench, lists, known);
  CheckRoundTrip(bench, known);
  bench.ambiente->journal->Svuota();
  return 0;
}
