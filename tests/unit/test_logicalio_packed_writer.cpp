#include <gtest/gtest.h>

#include "json/cjson_tree.h"
#include "logicalio/packed_writer.h"

namespace quenfold {
namespace {

TEST(RecordsToJson, WritesPackedNumbersBesideEmptyPorts) {
  PackedModel model;
  model.records.resize(2);
  model.records[0].fields.id = -1;
  model.records[1].fields.id = 2;
  model.portDict.bits[kCh] = 32;
  model.portDict.computeShifts();
  model.records[0].ports = {std::nullopt, scanIdKey("0.0.0[0].0.7"), std::nullopt};
  model.records[1].ports = {scanIdKey("0.0.0[0].0.FFFFFFFF")};
  EXPECT_EQ(printed(buildCJson([&] { return recordsToJson(model); })),
            "[{\n\t\t\"id\":\t-1,\n\t\t\"port\":\t[\"\", 7, \"\"]\n\t}, "
            "{\n\t\t\"id\":\t2,\n\t\t\"port\":\t[4294967295]\n\t}]");
}

}  // namespace
}  // namespace quenfold
