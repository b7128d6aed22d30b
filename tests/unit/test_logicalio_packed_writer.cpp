#include <gtest/gtest.h>

#include "logicalio/packed_writer.h"

namespace quenfold {
namespace {

TEST(HashText, WritesUnsignedNumbersInKeyOrder) {
  EXPECT_EQ(hashText("T", {{"b", 4215536289U}, {"a", 0}, {"", 4294967295U}}),
            "{\n\t\"T\":\t{\n\t\t\"hash\":\t{\n"
            "\t\t\t\"\":\t4294967295,\n\t\t\t\"a\":\t0,\n\t\t\t\"b\":\t4215536289\n"
            "\t\t}\n\t}\n}");
  EXPECT_EQ(hashText("T", {}), "{\n\t\"T\":\t{\n\t\t\"hash\":\t{\n\t\t}\n\t}\n}");
}

TEST(PortsText, WritesPackedNumbersBesideEmptyPorts) {
  PackedModel model;
  model.outputKey = "k";
  model.records.resize(2);
  model.records[0].id = -1;
  model.records[1].id = 2;
  model.ports = {{std::nullopt, PortKeyIds{}, std::nullopt}, {PortKeyIds{}}};
  const std::string text = portsText(model, {7, 4294967295U});
  EXPECT_NE(text.find("\"id\":\t-1,\n\t\t\t\t\"port\":\t[\"\", 7, \"\"]\n"), std::string::npos)
      << text;
  EXPECT_NE(text.find("\"id\":\t2,\n\t\t\t\t\"port\":\t[4294967295]\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace quenfold
