#include <gtest/gtest.h>

#include <string>

#include "database/summary_json.h"
#include "support/port_trees.h"

namespace quenfold::database {
namespace {

std::string jsonOf(const Summary& summary) { return std::string(textOf(summaryJson(summary))); }

TEST(SummaryJson, HasEveryMemberOfAnEmptyDatabase) {
  Summary summary;
  summary.form = Form::kPacked;
  EXPECT_EQ(jsonOf(summary), R"({
    "database": "packed",
    "ports": 0,
    "inputs": 0,
    "outputs": 0,
    "portLabels": 0,
    "devices": [],
    "tables": [],
    "files": [],
    "bytes": 0
}
)");
}

TEST(SummaryJson, TellsAllThereIs) {
  PortDict dict;
  dict.bits = {2, 1, 4, 0, -1, 3};
  dict.computeShifts();
  const DeviceLabel device = {"N1", "K\u00F6ln \"1\"\x1B", "SN-1"};
  const unpacking::SlotMap slots = {
      {"s1",
       {test::destinationsOf("out[{}]", {1, 8}, {{"a", {1, 2}}, {"b", {-3, -3}}}),
        {"black", 0, 0, {}, Direction::kUnknown}}},
      {"s2", {}}};
  Summary summary;
  summary.form = Form::kLegacy;
  summary.files = {{"matrices.json", 4294967295U}, {"sources.json", 1}};
  summary.ports = 24;
  summary.inputs = 1;
  summary.outputs = 23;
  summary.portLabels = 5;
  summary.devices = {{"N1", &device, &slots, 24}, {"N2", nullptr, nullptr, 0}};
  summary.tables = {{"sources.json", 36, &dict}};
  EXPECT_EQ(jsonOf(summary), R"({
    "database": "legacy",
    "ports": 24,
    "inputs": 1,
    "outputs": 23,
    "portLabels": 5,
    "devices": [{
            "id": "N1",
            "label": "Köln \"1\"\u001B",
            "serial": "SN-1",
            "ports": 24,
            "slots": [{
                    "slot": "s1",
                    "groups": [{
                            "port": "out[]",
                            "first": 1,
                            "last": 8,
                            "direction": "destination",
                            "types": [{
                                    "type": "a",
                                    "first": 1,
                                    "last": 2
                                }, {
                                    "type": "b",
                                    "first": -3,
                                    "last": -3
                                }]
                        }, {
                            "port": "black",
                            "first": 0,
                            "last": 0,
                            "direction": "neither",
                            "types": []
                        }]
                }, {
                    "slot": "s2",
                    "groups": []
                }]
        }, {
            "id": "N2",
            "label": null,
            "serial": null,
            "ports": 0,
            "slots": []
        }],
    "tables": [{
            "file": "sources.json",
            "records": 36,
            "bits": 9,
            "fields": {
                "device": 3,
                "slot": 0,
                "port_prefix": 0,
                "port_id": 4,
                "type": 1,
                "ch": 2
            }
        }],
    "files": [{
            "file": "matrices.json",
            "bytes": 4294967295
        }, {
            "file": "sources.json",
            "bytes": 1
        }],
    "bytes": 4294967296
}
)");
}

}  // namespace
}  // namespace quenfold::database
