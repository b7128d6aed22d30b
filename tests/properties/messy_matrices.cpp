#include <fmt/core.h>

#include <cstddef>
#include <cstdint>

#include "properties/messy_database.h"
#include "properties/plain_json.h"

namespace quenfold::properties {
namespace {

using generator::Random;
using Texts = std::vector<std::string>;

struct MessyDevice {
  std::string label;
  std::string serial;
};

/// The ports of one prefix of a slot and what they carry, the types ascending.
struct Group {
  std::string prefix;
  std::uint32_t ports = 0;
  std::vector<std::pair<std::string, std::uint32_t>> types;  // with a number of channels
};

template <typename Item>
const Item& pick(const std::vector<Item>& items, Random& random) {
  return items[random.below(static_cast<std::uint32_t>(items.size()))];
}

std::vector<MessyDevice> makeDevices(Random& random, Untidiness& mess) {
  const Texts labels = {"A", "Frame 1", "Stage", "Z-9"};
  std::vector<MessyDevice> devices;
  for (std::uint32_t count = random.between(1, 4); devices.size() < count;) {
    MessyDevice device{labels[devices.size()], fmt::format("SN{}", devices.size() + 1)};
    if (mess.strikes(Mess::kSerialShared, 50)) {
      device.serial = "SN1";
    }
    if (mess.strikes(Mess::kSerialEmpty, 50)) {
      device.serial.clear();
    }
    if (mess.strikes(Mess::kSerialIsLabel, 50)) {
      device.serial = pick(labels, random);
    }
    devices.push_back(device);
  }
  return devices;
}

std::vector<Group> makeGroups(Random& random, Untidiness& mess) {
  std::vector<Group> groups;
  Texts prefixes = {"in[]", "out[]", "mixer-in[]", "virt-out[]", "AUXA-in[]"};
  random.shuffle(prefixes);
  for (std::uint32_t count = random.between(1, 3); groups.size() < count;) {
    Group group{prefixes[groups.size()], random.between(1, 4), {}};
    if (mess.strikes(Mess::kPortOddPrefix, 40)) {
      group.prefix = pick(Texts{"odd[]", "in[]x", "q\"[]", "a[]b[]", "[]", "\xC3\xA9[]"}, random);
    }
    for (const char* const type : {"audio", "t", "video"}) {
      if (random.percent(50)) {
        group.types.emplace_back(type, random.between(1, 3));
      }
    }
    if (!group.types.empty()) {
      groups.push_back(group);
    }
  }
  return groups;
}

/// Draws the ports of one group into the device's matrices.
class GroupWriter {
 public:
  GroupWriter(const MessyDevice& device, const std::vector<MessyDevice>& devices, Random& random,
              Untidiness& mess)
      : device_(device), devices_(devices), random_(random), mess_(mess) {}

  void write(const std::string& slot, const Group& group, std::vector<MessyMatrix>& matrices) {
    for (const auto& [type, channels] : group.types) {
      MessyMatrix& matrix = matrixOf(type, matrices);
      std::int64_t number = 0;
      for (std::uint32_t port = 0; port < group.ports; ++port) {
        number += mess_.strikes(Mess::kGapInPorts) ? 3 : 1;
        const std::string part = portPart(group.prefix, number);
        writeChannels(fmt::format("{}.{}.{}.{}", deviceName(), slot, part, type), channels, matrix);
      }
    }
  }

 private:
  MessyMatrix& matrixOf(const std::string& type, std::vector<MessyMatrix>& matrices) const {
    const std::string name = fmt::format("{}.{}", device_.label, type);
    for (MessyMatrix& matrix : matrices) {
      if (matrix.name == name) {
        return matrix;
      }
    }
    matrices.push_back({name, device_.serial, {}});
    return matrices.back();
  }

  std::string deviceName() {
    if (mess_.strikes(Mess::kPortForeign, 10)) {
      return random_.percent(50) ? pick(devices_, random_).label : "Nobody";
    }
    return device_.label;
  }

  std::string portPart(const std::string& prefix, std::int64_t number) {
    const std::size_t place = prefix.find(']');
    std::string text = fmt::format("{}", number);
    if (mess_.strikes(Mess::kPortOddNumber, 20)) {
      text = pick(Texts{"0", "-1", "-2", "007", "+2", " 3", "2x", "0x1", "1 "}, random_);
    }
    if (mess_.strikes(Mess::kPortUnreadable, 5)) {
      text = pick(Texts{"", "x", "99999999999"}, random_);
    }
    if (mess_.strikes(Mess::kPortBeyond32Bits, 20)) {
      return fmt::format("far[{}]", 1000000 + number);
    }
    return prefix.substr(0, place) + text + prefix.substr(place);
  }

  void writeChannels(const std::string& port, std::uint32_t channels, MessyMatrix& matrix) {
    if (mess_.strikes(Mess::kPortOtherLayout, 20)) {
      ++channels;
    }
    const bool far = port.find("far[") != std::string::npos;
    for (std::uint32_t channel = 1; channel <= channels; ++channel) {
      if (channel > 1 && mess_.strikes(Mess::kGapInChannels)) {
        continue;
      }
      const std::string number = far ? fmt::format("{}", 2000000 + channel) : channelText(channel);
      matrix.ports.push_back(makePort(fmt::format("{}.ch{}", port, number)));
      if (mess_.strikes(Mess::kPortRepeated, 15)) {
        matrix.ports.push_back(makePort(matrix.ports.back().name));
      }
    }
  }

  std::string channelText(std::uint32_t channel) {
    if (mess_.strikes(Mess::kPortOddNumber, 10)) {
      return pick(Texts{"0", "-1", "01", "1x", "+1", " 2"}, random_);
    }
    return mess_.strikes(Mess::kPortUnreadable, 3) ? std::string("x") : fmt::format("{}", channel);
  }

  MessyPort makePort(const std::string& name) {
    MessyPort port{name, name};
    if (random_.percent(40)) {
      port.label = fmt::format("Cam {}", ++labels_);
    }
    if (mess_.strikes(Mess::kLabelShared)) {
      port.label = pick(Texts{"Cam 1", "Choir"}, random_);
    }
    if (mess_.strikes(Mess::kLabelIsPort)) {
      port.label = pick(Texts{"A.slot0.in[1].audio.ch1", "A.slot1.in[2].t.ch1", "x.y.z[1].t.ch2",
                              "A.slot0.in[01].audio.ch1", "SN1.slot0.in[1].audio.ch1"},
                        random_);
    }
    if (mess_.strikes(Mess::kLabelContinuesPort)) {
      port.label = name + "x";
    }
    if (mess_.strikes(Mess::kLabelOddText)) {
      port.label =
          pick(Texts{"", "a\"b", "a\\b", "\xC3\xA9", "tab\t", "\xFF", "{}", " ", "a\nb"}, random_);
    }
    if (mess_.strikes(Mess::kZeroByte, 10)) {
      const bool far = name.find("far[") != std::string::npos;  // cut, it is millions of ports away
      std::string& text = far || random_.percent(50) ? port.label : port.name;
      text.insert(random_.below(static_cast<std::uint32_t>(text.size() + 1)), 1, '\0');
    }
    return port;
  }

  const MessyDevice& device_;
  const std::vector<MessyDevice>& devices_;
  Random& random_;
  Untidiness& mess_;
  std::uint32_t labels_ = random_.below(1000) * 100;
};

void disturb(MessyPlant& plant, Random& random, Untidiness& mess) {
  for (MessyMatrix& matrix : plant.matrices) {
    if (mess.strikes(Mess::kMatrixOtherName)) {
      matrix.name =
          pick(Texts{"A", "A.spare.t", "B.t", "", ".t", "Stage.audio", "A.other"}, random);
    }
    if (mess.strikes(Mess::kMatrixOtherSerial)) {
      matrix.serial = pick(Texts{"SN1", "SN2", "SN9", ""}, random);
    }
    if (mess.strikes(Mess::kMatrixWithoutPorts)) {
      matrix.ports.clear();
    }
    if (mess.strikes(Mess::kPortsJumbled, 60)) {
      random.shuffle(matrix.ports);
    }
    if (mess.strikes(Mess::kZeroByte, 10)) {
      matrix.name.insert(random.below(static_cast<std::uint32_t>(matrix.name.size() + 1)), 1, '\0');
    }
  }
  if (mess.strikes(Mess::kMatricesJumbled, 90)) {
    random.shuffle(plant.matrices);
  }
  if (mess.strikes(Mess::kMatrixRepeated, 90) && !plant.matrices.empty()) {
    plant.matrices.push_back(pick(plant.matrices, random));
  }
}

/// A member of any kind of value that is not the right one.
std::string oddValue(Random& random) {
  return pick(Texts{"null", "true", "3.5", "{}", "[]", "\"odd\"", "99999999999"}, random);
}

class MatricesWriter {
 public:
  MatricesWriter(Random& random, Untidiness& mess) : random_(random), mess_(mess) {}

  std::string write(const MessyPlant& plant) {
    std::string text = R"({"Config":{"version":8,)" + unknown() + R"("Matrices":[)";
    std::size_t position = 0;
    for (const MessyMatrix& matrix : plant.matrices) {
      text += position == 0 ? "" : ",\n";
      text += mess_.strikes(Mess::kMatrixNoObject, 10) ? oddValue(random_)
                                                       : matrixText(matrix, position);
      ++position;
    }
    return text + "]}}";
  }

 private:
  std::string unknown() {
    return mess_.strikes(Mess::kMemberUnknown) ? R"("comment":"kept by nobody",)" : "";
  }

  std::string matrixText(const MessyMatrix& matrix, std::size_t position) {
    std::string text =
        fmt::format(R"({{"id":{},"name":{},)",
                    mess_.strikes(Mess::kMatricesJumbled) ? 77 : position, inQuotes(matrix.name));
    if (mess_.strikes(Mess::kMemberRepeated, 10)) {
      text += R"("name":"Z.t","serialnumber":"SN2",)";
    }
    if (mess_.strikes(Mess::kMatrixType)) {
      text += R"("type":1,)";
    }
    text += unknown() + fmt::format(R"("serialnumber":{},"ports":[)", inQuotes(matrix.serial));
    bool first = true;
    for (const MessyPort& port : matrix.ports) {
      text += first ? "" : ",\n";
      text += portText(port);
      first = false;
    }
    return text + "]}";
  }

  std::string portText(const MessyPort& port) {
    std::string text = "{" + unknown();
    text += fmt::format(R"("port":{})", inQuotes(port.name));
    if (mess_.strikes(Mess::kMemberRepeated, 5)) {
      text += R"(,"port":"A.slot9.in[1].t.ch1")";
    }
    if (!mess_.strikes(Mess::kLabelMissing, 5)) {
      text += fmt::format(R"(,"label":{})", inQuotes(port.label));
    }
    if (mess_.strikes(Mess::kMemberRepeated, 5)) {
      text += R"(,"label":"again")";
    }
    return text + "}";
  }

  Random& random_;
  Untidiness& mess_;
};

}  // namespace

MessyPlant makePlant(Random& random, Untidiness& mess) {
  MessyPlant plant;
  const std::vector<MessyDevice> devices = makeDevices(random, mess);
  for (const MessyDevice& device : devices) {
    std::vector<MessyMatrix> matrices;
    GroupWriter writer(device, devices, random, mess);
    for (std::uint32_t slot = 0; slot < random.between(1, 2); ++slot) {
      for (const Group& group : makeGroups(random, mess)) {
        writer.write(fmt::format("slot{}", slot), group, matrices);
      }
    }
    plant.matrices.insert(plant.matrices.end(), matrices.begin(), matrices.end());
  }
  disturb(plant, random, mess);
  return plant;
}

std::string matricesText(const MessyPlant& plant, Random& random, Untidiness& mess) {
  return MatricesWriter(random, mess).write(plant);
}

}  // namespace quenfold::properties
