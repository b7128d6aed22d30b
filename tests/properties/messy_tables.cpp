#include <fmt/core.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "properties/messy_database.h"
#include "properties/plain_json.h"

namespace quenfold::properties {
namespace {

using generator::Random;
using Texts = std::vector<std::string>;

class TableWriter {
 public:
  TableWriter(const MessyPlant& plant, bool sources, Random& random, Untidiness& mess)
      : sources_(sources), random_(random), mess_(mess) {
    for (const MessyMatrix& matrix : plant.matrices) {
      ports_.insert(ports_.end(), matrix.ports.begin(), matrix.ports.end());
    }
  }

  std::string write() {
    const char* const kind = sources_ ? "Source" : "Destination";
    std::string text = "{";
    if (mess_.strikes(Mess::kMemberUnknown)) {
      text += R"("comment":"kept by nobody",)";
    }
    text += fmt::format(R"("{}":{{"version":10,)", topLevelKey());
    if (levels_ > 0) {
      text += R"("levelKeys":[)";
      for (std::uint32_t level = 1; level <= levels_; ++level) {
        text += fmt::format("{}{}", level == 1 ? "" : ",", level);
      }
      text += "],";
    }
    text += fmt::format(R"("Logical{}":[)", kind);
    for (std::uint32_t record = 0, count = random_.below(6); record < count; ++record) {
      text += record == 0 ? "" : ",\n";
      text += recordText(record);
    }
    return text + "]" + trailingMembers() + "}}";
  }

 private:
  std::string topLevelKey() {
    if (mess_.strikes(Mess::kTableOddFrame, 50)) {
      return sources_ ? "LOGICALSOURCES" : "logicaldestinations";
    }
    return sources_ ? "LogicalSources" : "LogicalDestinations";
  }

  std::string trailingMembers() {
    if (!mess_.strikes(Mess::kTableOddFrame, 50)) {
      return {};
    }
    return pick({R"(,"LogicalSource":[])", R"(,"levelkeys":[1,2,3])", R"(,"other":1)",
                 R"(,"Version":9)", R"(,"logicalDestination":[{"id":1}])"});
  }

  std::string pick(const Texts& texts) {
    return texts[random_.below(static_cast<std::uint32_t>(texts.size()))];
  }

  /// A value for a member that ought to have another.
  std::string oddValue() {
    return pick({"null", "true", "false", "1.5", "-3", "0", "99999999999", "{}", "[]", "[1]",
                 R"("")", R"("7")", R"("text")", R"("z\u0000z")"});
  }

  std::string recordText(std::uint32_t record) {
    Texts members = {fmt::format(R"("name":{})", nameText(record)),
                     fmt::format(R"("id":{})", idText(record)),
                     fmt::format(R"("{}":[{}])", sources_ ? "val" : "oid", portTexts())};
    if (mess_.strikes(Mess::kRecordIncomplete, 10)) {
      members.erase(members.begin() + static_cast<std::ptrdiff_t>(random_.below(3)));
    }
    addFields(members);
    if (mess_.strikes(Mess::kMemberRepeated, 10)) {
      members.push_back(pick(members));
    }
    if (mess_.strikes(Mess::kMemberRepeated, 10)) {
      members.push_back(pick({R"("name":"again")", R"("redirect":8)", R"("category":["again"])",
                              R"("val":["Cam 1"])", R"("Name":"other")"}));
    }
    random_.shuffle(members);
    std::string text = "{";
    for (const std::string& member : members) {
      text += (text.size() == 1 ? "" : ",") + member;
    }
    return text + "}";
  }

  void addFields(Texts& members) {
    const auto add = [&](const char* name, const std::string& value) {
      if (random_.percent(70)) {
        members.push_back(
            fmt::format(R"("{}":{})", name, mess_.strikes(Mess::kFieldOdd) ? oddValue() : value));
      }
    };
    add("key", random_.percent(80) ? "0" : "4");
    add("description", pick({R"("")", R"("left")", R"("d\u00e9 \"q\"")"}));
    add("tally", pick({R"("")", R"("on")", R"("off")"}));
    add("redirect", pick({"1", "1", "1.0", "0", "-1", "77"}));
    if (random_.percent(70)) {
      members.push_back(fmt::format(R"("category":{})", categories()));
    }
    if (mess_.strikes(Mess::kMemberUnknown)) {
      members.push_back(pick({R"("colour":"red")", R"("oidx":[1])", R"("Id":3)"}));
    }
  }

  std::string nameText(std::uint32_t record) {
    if (mess_.strikes(Mess::kNameOdd)) {
      return pick({R"("")", R"("lbl_1")", R"("a\"b")", R"("same")", R"("z\u0000z")", R"("\u0001")",
                   "5", "null"});
    }
    return fmt::format(R"("Name {}")", record + 1);
  }

  std::string idText(std::uint32_t record) {
    if (mess_.strikes(Mess::kIdRepeated, 50)) {
      return fmt::format("{}", random_.between(1, 3));
    }
    if (mess_.strikes(Mess::kIdOdd)) {
      return pick({"-1", "0", "1.5", "2.0", "4294967296", "-2147483648", "2147483648", "\"5\"",
                   "null", "true", "4294967295"});
    }
    return fmt::format("{}", record + 1);
  }

  std::string categories() {
    if (mess_.strikes(Mess::kCategoryOdd, 10)) {
      return oddValue();
    }
    std::string text = "[";
    const std::uint32_t filled =
        mess_.strikes(Mess::kCategoryBeyondSix) ? random_.between(6, 8) : random_.below(7);
    for (std::uint32_t place = 0; place < filled; ++place) {
      text += place == 0 ? "" : ",";
      text += mess_.strikes(Mess::kCategoryGap)
                  ? std::string(R"("")")
                  : (mess_.strikes(Mess::kCategoryOdd)
                         ? pick({"5", "-4", "1.5", "99999999999", "null", "true", R"("007")",
                                 R"("+7")", R"(" 7")", R"("7x")", R"("99999999999")", R"("-0")",
                                 R"("2147483648")", R"("-2147483648")", "0", "-0", R"("0")"})
                         : pick({R"("News")", R"("5")", R"("-4")", R"("x y")"}));
    }
    for (std::uint32_t left = random_.below(3); left > 0; --left) {
      text += text.size() == 1 ? R"("")" : R"(,"")";
    }
    return text + "]";
  }

  std::string portTexts() {
    std::string text;
    const std::uint32_t count = random_.below(5);
    for (std::uint32_t place = 0; place < count; ++place) {
      text += place == 0 ? "" : ",";
      text += place + 1 < count && random_.percent(15) ? std::string(R"("")") : portText();
    }
    const std::uint32_t wanted = mess_.strikes(Mess::kPortsEmptyAtEnd) ? count + 2 : levels_;
    for (std::uint32_t place = count; place < wanted; ++place) {
      text += place == 0 ? R"("")" : R"(,"")";
    }
    return text;
  }

  std::string portText() {
    if (ports_.empty() || mess_.strikes(Mess::kPortNowhere)) {
      return pick({R"("Nobody.slot0.in[1].t.ch1")", R"("no port")", R"("a.b.c[1].t")",
                   R"("A.slot0.in[99].t.ch1")", R"("a.b.c[99999999999].t.ch1")",
                   R"("a.b.c[1].a-type-of-more-than-fifteen.ch1")", R"("a.b.c[-1].t.ch-1")"});
    }
    if (mess_.strikes(Mess::kPortNoText)) {
      return oddValue();
    }
    const MessyPort& port = ports_[random_.below(static_cast<std::uint32_t>(ports_.size()))];
    if (mess_.strikes(Mess::kPortRenamed)) {
      return inQuotes(port.label + pick({" (old)", "", "x"}));
    }
    if (mess_.strikes(Mess::kPortOtherSpelling)) {
      return inQuotes(otherSpelling(port.name));
    }
    if (mess_.strikes(Mess::kPortBySerial)) {
      return inQuotes(
          fmt::format("SN{}{}", random_.between(1, 2),
                      port.name.substr(std::min(port.name.find('.'), port.name.size()))));
    }
    return inQuotes(port.label.empty() || random_.percent(10) ? port.name : port.label);
  }

  std::string otherSpelling(std::string name) {
    const std::size_t place = name.find('[');
    if (place != std::string::npos && random_.percent(50)) {
      return name.insert(place + 1, pick({"0", "+", " "}));
    }
    return name + pick({"x", ".t", " "});
  }

  const bool sources_;
  Random& random_;
  Untidiness& mess_;
  std::uint32_t levels_ = random_.percent(50) ? 4 : 0;
  std::vector<MessyPort> ports_;
};

}  // namespace

std::string tableText(const MessyPlant& plant, bool sources, Random& random, Untidiness& mess) {
  return TableWriter(plant, sources, random, mess).write();
}

}  // namespace quenfold::properties
