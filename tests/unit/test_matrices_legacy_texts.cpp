#include <gtest/gtest.h>

#include "matrices/legacy_texts.h"

namespace quenfold::unpacking {
namespace {

const UnpackedPort kPlain = {"D.A.P1.T.ch1", "N.A.P1.T.ch1", ""};
const UnpackedPort kLabelled = {"D.A.P1.T.ch2", "N.A.P1.T.ch2", "Vox"};
const UnpackedPort kQuoted = {"D.A.\"[1].T.ch1", "N.A.\"[1].T.ch1", "a\\b\n"};

TEST(AvailableText, MapsTheShownNameToThePort) {
  EXPECT_EQ(textOf(availableText({&kPlain, &kLabelled})),
            R"([{"k":"D.A.P1.T.ch1","v":"D.A.P1.T.ch1"},{"k":"Vox","v":"D.A.P1.T.ch2"}])");
  EXPECT_EQ(textOf(availableText({})), "[]");
}

TEST(PortLabelsText, MapsThePortToItsSerialName) {
  EXPECT_EQ(textOf(portLabelsText({kPlain, kLabelled})),
            R"([{"k":"D.A.P1.T.ch1","v":"N.A.P1.T.ch1"},{"k":"D.A.P1.T.ch2","v":"N.A.P1.T.ch2"}])");
  EXPECT_EQ(textOf(portLabelsText({})), "[]");
}

TEST(UserPortLabelsText, PairsThePortWithItsShownName) {
  EXPECT_EQ(
      textOf(userPortLabelsText({kPlain, kLabelled})),
      R"([{"port":"D.A.P1.T.ch1","label":"D.A.P1.T.ch1"},{"port":"D.A.P1.T.ch2","label":"Vox"}])");
  EXPECT_EQ(textOf(userPortLabelsText({})), "[]");
}

TEST(LegacyTexts, KeptOnPurposeHandBuiltTextsEscapeNothing) {
  EXPECT_EQ(textOf(availableText({&kQuoted})), "[{\"k\":\"a\\b\n\",\"v\":\"D.A.\"[1].T.ch1\"}]");
  EXPECT_EQ(textOf(portLabelsText({kQuoted})),
            "[{\"k\":\"D.A.\"[1].T.ch1\",\"v\":\"N.A.\"[1].T.ch1\"}]");
  EXPECT_EQ(textOf(userPortLabelsText({kQuoted})),
            "[{\"port\":\"D.A.\"[1].T.ch1\",\"label\":\"a\\b\n\"}]");
}

TEST(MatricesText, WritesMatricesInNameOrderCountedFromZero) {
  const std::map<std::string, MatrixEntry> matrices = {
      {"D.b", {"N", {&kLabelled, &kPlain}}}, {"D.a", {"", {}}}, {"E.\"", {"M", {&kQuoted}}}};
  EXPECT_EQ(
      textOf(matricesText(matrices)),
      R"({"Config":{"version":8,"Matrices":[)"
      R"({"id":0,"name":"D.a","serialnumber":"","ports":[]},)"
      R"({"id":1,"name":"D.b","serialnumber":"N","ports":[)"
      R"({"port":"D.A.P1.T.ch2","label":"Vox"},{"port":"D.A.P1.T.ch1","label":"D.A.P1.T.ch1"}]},)"
      R"({"id":2,"name":"E.\"","serialnumber":"M","ports":[)"
      R"({"port":"D.A.\"[1].T.ch1","label":"a\\b\n"}]}]}})");
}

TEST(MatricesText, WritesAnEmptyList) {
  EXPECT_EQ(textOf(matricesText({})), R"({"Config":{"version":8,"Matrices":[]}})");
}

}  // namespace
}  // namespace quenfold::unpacking
