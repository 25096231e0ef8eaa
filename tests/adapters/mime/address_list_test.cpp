#include "mime/address_list.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::mime {

void PrintTo(const Address& address, std::ostream* out) {
  *out << '{' << address.name << '|' << address.address << '}';
}

namespace {

using Addresses = std::vector<Address>;

struct ListCase {
  const char* label;
  const char* list;
  Addresses want;
};

void PrintTo(const ListCase& test, std::ostream* out) {
  *out << test.list;
}

class AddressList : public testing::TestWithParam<ListCase> {};

TEST_P(AddressList, IsRead) {
  EXPECT_EQ(ParseAddressList(GetParam().list), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AddressList,
    testing::Values(
        ListCase{"Empty", "", {}}, ListCase{"OnlySeparators", ";; ;", {}},
        ListCase{"OneEntry", "Mario Rossi <m@x.it>", {{"Mario Rossi", "m@x.it"}}},
        ListCase{"TwoEntries", "A <a@x.it>;B <b@x.it>", {{"A", "a@x.it"}, {"B", "b@x.it"}}},
        ListCase{"SeparatorAtTheEnd", "A <a@x.it>;", {{"A", "a@x.it"}}},
        ListCase{
            "MissingSeparatorAndOneAtTheEnd", "A <a@x.it>B <b@x.it>;", {{"A", "a@x.it"}, {"B", "b@x.it"}}},
        ListCase{"BareAddress", "a@x.it", {{"", "a@x.it"}}},
        ListCase{"BareAddressBeforeEntries", "io@x.it;A <a@x.it>", {{"", "io@x.it"}, {"A", "a@x.it"}}},
        ListCase{
            "BareAddressAfterTheLastSeparator", "A <a@x.it>;io@x.it", {{"A", "a@x.it"}, {"", "io@x.it"}}},
        ListCase{"EmptyName", " <a@x.it>", {{"", "a@x.it"}}}, ListCase{"EmptyAddressIsSkipped", " <>", {}},
        ListCase{
            "EmptyAddressBetweenOthers", "A <a@x.it>;Nome <>;B <b@x.it>", {{"A", "a@x.it"}, {"B", "b@x.it"}}},
        ListCase{"BlankAddressIsSkipped", "Nome <  >;B <b@x.it>", {{"B", "b@x.it"}}},
        ListCase{"QuotedNameWithComma",
                 "\"Rossi, Mario\" <m@x.it>;B <b@x.it>",
                 {{"Rossi, Mario", "m@x.it"}, {"B", "b@x.it"}}},
        ListCase{"SeparatorInsideQuotes", "\"Rossi; Figli\" <m@x.it>", {{"Rossi; Figli", "m@x.it"}}},
        ListCase{
            "SeparatorInsideInnerQuotes", "Ditta \"A;B\" snc <m@x.it>", {{"Ditta \"A;B\" snc", "m@x.it"}}},
        ListCase{"SeparatorInABareName", "Rossi; Figli <m@x.it>", {{"Rossi; Figli", "m@x.it"}}},
        ListCase{"QuotesInsideAQuotedName",
                 "\"Rossi, \"Mario\" snc\" <m@x.it>",
                 {{"Rossi, \"Mario\" snc", "m@x.it"}}},
        ListCase{"QuotesThatAreTheNamesOwn", "\"A\" e \"B\" <m@x.it>", {{"\"A\" e \"B\"", "m@x.it"}}},
        ListCase{"EscapedQuotes", R"("Mario \"Il\" Rossi" <m@x.it>)", {{"Mario \"Il\" Rossi", "m@x.it"}}},
        ListCase{"QuoteNeverClosed",
                 "Bar \"da Gino <g@x.it>;B <b@x.it>",
                 {{"Bar \"da Gino", "g@x.it"}, {"B", "b@x.it"}}},
        ListCase{"StrayQuotesInTwoEntries",
                 "Bar \"da Gino <g@x.it>;Bar \"da Pino <p@x.it>",
                 {{"Bar \"da Gino", "g@x.it"}, {"Bar \"da Pino", "p@x.it"}}},
        ListCase{"StrayQuoteAtTheStartOfTwoEntries",
                 "\"da Gino <g@x.it>;\"Rossi, L\" <p@x.it>",
                 {{"\"da Gino", "g@x.it"}, {"Rossi, L", "p@x.it"}}},
        ListCase{"InchMarkInQuotedNames",
                 "\"TV, 24\" snc\" <a@x.it>;\"TV, 32\" snc\" <b@x.it>",
                 {{"TV, 24\" snc", "a@x.it"}, {"TV, 32\" snc", "b@x.it"}}},
        ListCase{"NameCopiedWithItsAddress",
                 "\"Mario <m@y.it>\" <m@x.it>;B <b@x.it>",
                 {{"Mario <m@y.it>", "m@x.it"}, {"B", "b@x.it"}}},
        ListCase{"BracketsInAName",
                 "ACME <Italia> srl <info@acme.it>;B <b@x.it>",
                 {{"ACME <Italia> srl", "info@acme.it"}, {"B", "b@x.it"}}},
        ListCase{
            "BracketsAtTheEndOfAName", "ACME <Italia> <info@acme.it>", {{"ACME <Italia>", "info@acme.it"}}},
        ListCase{"AddressInAName",
                 "ACME <x@y.it> srl <info@acme.it>;B <b@x.it>",
                 {{"ACME <x@y.it> srl", "info@acme.it"}, {"B", "b@x.it"}}},
        ListCase{"BracketsAndASeparatorInQuotes",
                 "ACME <Italia> \"Nord; Est\" <n@x.it>",
                 {{"ACME <Italia> \"Nord; Est\"", "n@x.it"}}},
        ListCase{"AddressAndCommasInAQuotedName",
                 "\"Rossi, M. <m@y.it>, Roma\" <m@x.it>;B <b@x.it>",
                 {{"Rossi, M. <m@y.it>, Roma", "m@x.it"}, {"B", "b@x.it"}}},
        ListCase{"MissingSeparatorBeforeAnEntryWithoutName",
                 "A <a@x.it> <b@x.it>;",
                 {{"A", "a@x.it"}, {"", "b@x.it"}}},
        ListCase{"MissingSeparatorBeforeBracketsInAName",
                 "A <a@x.it>ACME <Italia> srl <info@acme.it>;",
                 {{"A", "a@x.it"}, {"ACME <Italia> srl", "info@acme.it"}}},
        ListCase{"MissingSeparatorBeforeAQuotedName",
                 "A <a@x.it>\"Rossi, \"M\"\" <m@x.it>;",
                 {{"A", "a@x.it"}, {"Rossi, \"M\"", "m@x.it"}}},
        ListCase{"MissingSeparatorBetweenStrayQuotes",
                 "\"Uno <u@x.it>Due\" <d@x.it>;",
                 {{"\"Uno", "u@x.it"}, {"Due\"", "d@x.it"}}},
        ListCase{"StrayQuotesAfterAnAddress",
                 "A <a@x.it> 24\";Bar \"x <b@x.it>",
                 {{"A", "a@x.it"}, {"24\";Bar \"x", "b@x.it"}}},
        ListCase{"BracketNotClosedAfterBracketsInAName",
                 "ACME <Italia> srl <info@acme.it;B <b@x.it>",
                 {{"ACME <Italia> srl", "info@acme.it"}, {"B", "b@x.it"}}},
        ListCase{"TextAfterTheAddressBelongsToTheNextName",
                 "A <a@x.it> interno; B <b@x.it>",
                 {{"A", "a@x.it"}, {"interno; B", "b@x.it"}}},
        ListCase{"LessThanInAName", "A < B <ab@x.it>", {{"A < B", "ab@x.it"}}},
        ListCase{"MissingBracketBeforeSeparator", "A <a@x.it;B <b@x.it>", {{"A", "a@x.it"}, {"B", "b@x.it"}}},
        ListCase{"MissingBracketAtTheEnd", "A <a@x.it", {{"A", "a@x.it"}}},
        ListCase{
            "LineEndBetweenEntries", "A <a@x.it>;\r\nB <b@x.it>\r\n", {{"A", "a@x.it"}, {"B", "b@x.it"}}},
        ListCase{"BlanksAroundTheAddress", "A < a@x.it >", {{"A", "a@x.it"}}},
        ListCase{
            "QuotedLocalPart", "A <\"a;b>c\"@x.it>;B <b@x.it>", {{"A", "\"a;b>c\"@x.it"}, {"B", "b@x.it"}}},
        ListCase{"AWordAloneIsKeptForTheServerToJudge", "Rossi", {{"", "Rossi"}}},
        ListCase{"AWordBeforeABareAddressIsKept", "Rossi;a@x.it", {{"", "Rossi"}, {"", "a@x.it"}}},
        ListCase{"Accents", "Società Però <società@però.it>", {{"Società Però", "società@però.it"}}}),
    [](const auto& test) { return test.param.label; });

TEST(AddressListFaults, LineEndsAndNulInAnAddressAreRefused) {
  const std::vector<std::string> lists = {
      "A <a@x.it\r\nRCPT TO:<b@y.it>", "A <a@x\n.it>",   "a@x.it\rb",
      std::string("A <a@x.it\0>", 11), "A <\r\na@x.it>", std::string("\0", 1)};
  for (const std::string& list : lists) {
    try {
      const Addresses read = ParseAddressList(list);
      ADD_FAILURE() << "taken: " << testing::PrintToString(list);
    } catch (const host::Errore& errore) {
      EXPECT_EQ(errore.Numero(), 5);
      EXPECT_NE(errore.Descrizione().find("contiene caratteri non ammessi"), std::string::npos);
      EXPECT_EQ(errore.Descrizione().find_first_of("\r\n"), std::string::npos);
    }
  }
}

// So long that anything quadratic never ends: blanks, then the pattern over and over.
TEST(AddressListFaults, HostileListsAreReadInLinearTime) {
  constexpr std::size_t kSize = 4U << 20;
  const std::vector<std::string> patterns = {
      "\"",       "\"<",      "<\"",          " \"",        "<",    ">",       ";",
      "a;",       "\"a@x>;",  "<a@x>",        " ",          "<a> ", "<a@x> b", "<a@x>b",
      "<a@x> \"", "\"<a@x>b", "\"<a@x>b\" <", "<a@x>\"b\"", "<>"};
  for (const std::string& pattern : patterns) {
    std::string list(kSize / 2, ' ');
    while (list.size() < kSize) list += pattern;
    EXPECT_NO_THROW(static_cast<void>(ParseAddressList(list))) << pattern;
  }
}

TEST(BareAddress, LosesItsBracketsAndTheBlanksAround) {
  EXPECT_EQ(BareAddress("<a@x.it>"), "a@x.it");
  EXPECT_EQ(BareAddress(" < a@x.it > "), "a@x.it");
  EXPECT_EQ(BareAddress("a@x.it"), "a@x.it");
  EXPECT_EQ(BareAddress("<>"), "");
  EXPECT_EQ(BareAddress(""), "");
  EXPECT_THROW(static_cast<void>(BareAddress("<a@x.it\r\n>")), host::Errore);
}

struct WireCase {
  const char* label;
  std::string address;
  const char* want;  // nullptr: refused
  bool wantUtf8 = false;
};

void PrintTo(const WireCase& test, std::ostream* out) {
  *out << test.address;
}

class WireForm : public testing::TestWithParam<WireCase> {};

TEST_P(WireForm, IsFoundOrRefused) {
  const auto wire = ToWire(GetParam().address);
  if (GetParam().want == nullptr) {
    EXPECT_FALSE(wire) << wire->text;
    return;
  }
  ASSERT_TRUE(wire);
  EXPECT_EQ(wire->text, GetParam().want);
  EXPECT_EQ(wire->needsUtf8, GetParam().wantUtf8);
}

INSTANTIATE_TEST_SUITE_P(
    Table, WireForm,
    testing::Values(WireCase{"Plain", "mario.rossi+fatture@x.it", "mario.rossi+fatture@x.it"},
                    WireCase{"WithoutDomain", "postmaster", "postmaster"},
                    WireCase{"AccentsInTheDomain", "a@società.it", "a@xn--societ-nta.it"},
                    WireCase{"CapitalsInAnAccentedDomain", "a@SOCIETÀ.it", "a@xn--societ-nta.it"},
                    WireCase{"AccentsInTheLocalPart", "nicolò@x.it", "nicolò@x.it", true},
                    WireCase{"AccentsInBoth", "nicolò@però.it", "nicolò@xn--per-ena.it", true},
                    WireCase{"QuotedLocalPart", "\"a b\"@x.it", "\"a b\"@x.it"},
                    WireCase{"AddressLiteral", "a@[127.0.0.1]", "a@[127.0.0.1]"},
                    WireCase{"LineEndInAnAddressLiteral", "a@[1\r\nDATA]", nullptr},
                    WireCase{"ControlCharacterInAnAddressLiteral", "a@[1\x01]", nullptr},
                    WireCase{"TabInAnAddressLiteral", "a@[1\t2]", nullptr},
                    WireCase{"BracketInAnAddressLiteral", "a@[1][2]", nullptr},
                    WireCase{"EmptyAddressLiteral", "a@[]", nullptr}, WireCase{"Empty", "", nullptr},
                    WireCase{"NoLocalPart", "@x.it", nullptr}, WireCase{"NoDomainAfterTheAt", "a@", nullptr},
                    WireCase{"Blank", "a b@x.it", nullptr}, WireCase{"TwoAts", "a@b@x.it", nullptr},
                    WireCase{"Comma", "a,b@x.it", nullptr}, WireCase{"Brackets", "a<b>@x.it", nullptr},
                    WireCase{"Tab", "a\tb@x.it", nullptr}, WireCase{"Escape", "a\x1b@x.it", nullptr},
                    WireCase{"LineEnd", "a@x.it\r\nDATA", nullptr},
                    WireCase{"ParameterAfterTheAddress", "a@x.it> NOTIFY=NEVER", nullptr},
                    WireCase{"InvalidUtf8", "a\xff@x.it", nullptr},
                    WireCase{"InvalidUtf8InTheDomain", "a@x\xff.it", nullptr},
                    WireCase{"UnbalancedQuote", "\"a@x.it", nullptr},
                    WireCase{"BlankInTheDomain", "a@x .it", nullptr},
                    WireCase{"Huge", std::string(1 << 20, 'a') + "@x.it", nullptr}),
    [](const auto& test) { return test.param.label; });

TEST(WireFormLength, EndsWhereAPathEnds) {
  const std::string longest = std::string(249, 'a') + "@x.it";
  ASSERT_EQ(longest.size(), 254U);
  EXPECT_TRUE(ToWire(longest));
  EXPECT_FALSE(ToWire('a' + longest));
}

}  // namespace
}  // namespace orve::adapters::mime
