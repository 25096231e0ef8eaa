// The texts in which the library speaks to the directory, and the names that directories use.
#include "ldap/query.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "ldap/attribute_names.h"
#include "orve-mailserver/host/errore.h"

namespace orve::adapters::ldap {

namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;

// The query of the library, for a user of that name.
std::string QueryFor(const std::string& user) {
  return "<LDAP://DC=azienda,DC=example>;(&(objectCategory=person)(objectClass=user)(samaccountName=" + user +
         "));adsPath;subTree";
}

}  // namespace

TEST(AttributeNames, EachMemberOfAPersonHasTheDirectorysOwnName) {
  EXPECT_EQ(AttributeOf("FirstName"), "givenName");
  EXPECT_EQ(AttributeOf("LastName"), "sn");
  EXPECT_EQ(AttributeOf("EmployeeID"), "employeeID");
  EXPECT_EQ(AttributeOf("Title"), "title");
  EXPECT_EQ(AttributeOf("Division"), "division");
  EXPECT_EQ(AttributeOf("TelephoneNumber"), "telephoneNumber");
  EXPECT_EQ(AttributeOf("FaxNumber"), "facsimileTelephoneNumber");
  EXPECT_EQ(AttributeOf("emailaddress"), "mail");
  EXPECT_EQ(AttributeOf("memberOf"), "memberOf");
  EXPECT_EQ(PersonAttributes().size(), 8U);
}

TEST(Query, TheQueryOfTheLibraryHasFourParts) {
  const Query query = ReadQuery(QueryFor("arossi"));
  EXPECT_EQ(query.base, "DC=azienda,DC=example");
  EXPECT_EQ(query.filter, "(&(objectCategory=person)(objectClass=user)(samaccountName=arossi))");
  EXPECT_THAT(query.attributes, ElementsAre("adsPath"));
  EXPECT_EQ(query.depth, Depth::kSubtree);
}

TEST(Query, SeveralAttributesAndTheOtherDepths) {
  const Query query = ReadQuery("<LDAP://o=x;y>;(cn=a;b);cn, mail;oneLevel");
  EXPECT_EQ(query.base, "o=x;y");
  EXPECT_EQ(query.filter, "(cn=a;b)");
  EXPECT_THAT(query.attributes, ElementsAre("cn", "mail"));
  EXPECT_EQ(query.depth, Depth::kOneLevel);
  EXPECT_EQ(ReadQuery("<LDAP://rootDSE>;(cn=*);cn;BASE").depth, Depth::kBase);
  EXPECT_EQ(ReadQuery("<LDAP://rootDSE>;(cn=*);cn;BASE").base, "");
}

TEST(Query, ANameThatCouldFindOthersIsRefused) {
  for (const std::string& name :
       {"x));cn;oneLevel"s, "x))(objectClass=*"s, "x)"s, "x)(|(cn=*"s,
        "*)(|(mail=capo@azienda.example)(uid=*"s, "x)(!(objectClass=computer"s, "("s, "*"s, "aros*"s, "x\\)"s,
        "AZIENDA\\arossi"s, "x\\"s, "x\\2"s, "a\0b"s, "x));adsPath;subTree"s}) {
    try {
      static_cast<void>(ReadQuery(QueryFor(name)));
      ADD_FAILURE() << name;
    } catch (const host::Errore& errore) {
      EXPECT_EQ(errore.Numero(), host::kArgomentoNonValido) << name;
    }
  }
}

TEST(Query, OrdinaryNamesAreTakenAsTheyAre) {
  for (const std::string& name :
       {""s, "arossi"s, "d'angiò"s, "stampante$"s, "a.rossi@azienda.example"s, "a;b"s, "a<b>;c"s, "a,b=c"s}) {
    EXPECT_EQ(ReadQuery(QueryFor(name)).filter,
              "(&(objectCategory=person)(objectClass=user)(samaccountName=" + name + "))");
  }
}

TEST(Query, AFilterThatIsNotTheLibrarysMayHoldWhatItWants) {
  EXPECT_EQ(ReadQuery("<LDAP://o=x>;(|(cn=a*)(mail=*));cn;subTree").filter, "(|(cn=a*)(mail=*))");
}

TEST(Query, BracketsInAValueStandAsDigits) {
  EXPECT_EQ(ReadQuery(QueryFor("a\\28b\\29\\2a\\5C\\00")).filter,
            "(&(objectCategory=person)(objectClass=user)(samaccountName=a\\28b\\29\\2a\\5C\\00))");
}

TEST(Query, AnythingElseIsRefused) {
  for (const std::string& query :
       {""s, ";;;"s, "<LDAP://o=x>;(cn=a);adsPath"s, "<LDAP://o=x>;(cn=a);;subTree"s,
        "<LDAP://o=x>;(cn=a);adsPath;everything"s, "<GC://o=x>;(cn=a);adsPath;subTree"s,
        "LDAP://o=x;(cn=a);adsPath;subTree"s, "<LDAP://o=x>;cn=a;adsPath;subTree"s,
        "<LDAP://o=x>;;adsPath;subTree"s, "<LDAP://>;(cn=a);adsPath;subTree"s,
        "<LDAP://o=x>;(cn=\0);adsPath;subTree"s, "<LDAP://o=x>;()(;adsPath;subTree"s, ">;;;"s}) {
    try {
      static_cast<void>(ReadQuery(query));
      FAIL() << query;
    } catch (const host::Errore& errore) {
      EXPECT_EQ(errore.Numero(), host::kArgomentoNonValido) << query;
    }
  }
}

TEST(Paths, ThePathOfANameGivesTheNameBack) {
  EXPECT_EQ(NameOfPath(PathOfName("cn=Rossi/Bianchi,o=x")), "cn=Rossi/Bianchi,o=x");
  EXPECT_EQ(NameOfPath("ldap://RootDse"), "");
}

}  // namespace orve::adapters::ldap
