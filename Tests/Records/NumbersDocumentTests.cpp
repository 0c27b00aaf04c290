#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// docs/numbers.md has a row for each field and each derived reading of the records, and no other.

namespace quorvex {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAre;

/// What a record's declaration offers to its readers.
struct Members {
  std::vector<std::string> fields;
  std::vector<std::string> derived;  ///< functions of the record that take at most defaults

  [[nodiscard]] std::vector<std::string> all() const {
    std::vector<std::string> names = fields;
    names.insert(names.end(), derived.begin(), derived.end());
    return names;
  }
};

struct Row {
  std::string anchor;
  std::string name;
  std::vector<std::string> cells;  ///< those behind the name
};

using Rows = std::map<std::string, std::vector<Row>>;  ///< by record

std::string readText(const std::filesystem::path& path) {
  std::ifstream file{path};
  EXPECT_TRUE(file.is_open()) << path;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string withoutCommentsAndAttributes(const std::string& code) {
  static const std::regex noise{R"(//[^\n]*|\[\[[^\]]*\]\])"};
  return std::regex_replace(code, noise, " ");
}

/// The text between the brace that `open` is behind and its partner.
std::string bodyFrom(const std::string& code, std::size_t open) {
  int depth = 1;
  std::size_t end = open;
  while (end < code.size() && depth > 0) {
    depth += code[end] == '{' ? 1 : code[end] == '}' ? -1 : 0;
    ++end;
  }
  return code.substr(open, end - open - 1);
}

/// A body's declarations, each from its first significant character on.
std::vector<std::string> declarations(const std::string& body) {
  std::vector<std::string> result;
  std::string current;
  int depth = 0;
  for (const char character : body) {
    if (current.empty() && std::string_view{" \t\n;"}.find(character) != std::string_view::npos) {
      continue;
    }
    depth += character == '{' || character == '(' ? 1 : 0;
    depth -= character == '}' || character == ')' ? 1 : 0;
    current += character;
    // A function's body ends its declaration; the braces of a field's initial value do not. Behind
    // a constructor's first braces come those of its other members and its body.
    const bool isRestOfConstructor = current.front() == ',' || current.front() == '{';
    const bool isFunction = current.substr(0, current.find('{')).find('(') != std::string::npos;
    const bool endsBody = character == '}' && (isFunction || isRestOfConstructor);
    if (depth == 0 && (character == ';' || endsBody)) {
      if (!isRestOfConstructor) {
        result.push_back(current);
      }
      current.clear();
    }
  }
  return result;
}

std::string lastIdentifier(const std::string& text) {
  static const std::regex identifier{R"((\w+)\s*$)"};
  std::smatch match;
  return std::regex_search(text, match, identifier) ? match[1].str() : "";
}

/// The members of one record; none when the code does not define it.
std::optional<Members> membersOf(const std::string& record, const std::string& header) {
  const std::string code = withoutCommentsAndAttributes(header);
  const std::regex definition{R"(\b(?:struct|class)\s+)" + record + R"(\b[^;{<]*(?:<\w+>\s*)?\{)"};
  std::smatch match;
  if (!std::regex_search(code, match, definition)) {
    return std::nullopt;
  }
  static const std::regex passedOver{
      R"(^(?:(?:public|private)\s*:\s*)*(?:static|using|friend|struct|class|enum)\b|\boperator\b)"};
  Members members;
  const auto open = static_cast<std::size_t>(match.position() + match.length());
  for (const std::string& declaration : declarations(bodyFrom(code, open))) {
    if (std::regex_search(declaration, passedOver)) {
      continue;
    }
    const std::size_t nameEnd = declaration.find_first_of("(={;");
    const std::string name = lastIdentifier(declaration.substr(0, nameEnd));
    if (declaration[nameEnd] != '(') {
      members.fields.push_back(name);
    } else if (name != record) {
      members.derived.push_back(name);
    }
  }
  return members;
}

std::vector<std::string> recordsIn(const std::string& header) {
  static const std::regex definition{R"(\bstruct\s+(\w+)\s*\{)"};
  const std::string code = withoutCommentsAndAttributes(header);
  std::vector<std::string> names;
  for (std::sregex_iterator match{code.begin(), code.end(), definition}, end; match != end;
       ++match) {
    names.push_back((*match)[1]);
  }
  return names;
}

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The rows that carry an anchor, under the level-two heading that they stand under.
Rows rowsOf(const std::string& document) {
  static const std::regex rowStart{R"re(^\| <a id="([^"]*)"></a>`([^`]*)` \|(.*)\|$)re"};
  Rows rows;
  std::string record;
  std::istringstream lines{document};
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (line.starts_with("## ")) {
      record = line.substr(3);
    } else if (std::regex_match(line, match, rowStart)) {
      Row row{.anchor = match[1], .name = match[2], .cells = {}};
      std::istringstream cells{match[3].str()};
      for (std::string cell; std::getline(cells, cell, '|');) {
        row.cells.push_back(trimmed(cell));
      }
      rows[record].push_back(std::move(row));
    } else {
      EXPECT_EQ(line.find("<a id="), std::string::npos) << "not the form of a row: " << line;
    }
  }
  return rows;
}

std::vector<std::string> namesOf(const std::vector<Row>& rows) {
  std::vector<std::string> names;
  for (const Row& row : rows) {
    names.push_back(row.name);
  }
  return names;
}

std::string lowerCased(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char character) {
    return static_cast<char>(std::tolower(character));
  });
  return text;
}

class NumbersDocument : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::filesystem::path core{QUORVEX_CORE_FOLDER};
    for (const auto& entry : std::filesystem::directory_iterator{core / "Records"}) {
      if (entry.path().extension() != ".h") {
        continue;
      }
      const std::string header = readText(entry.path());
      for (const std::string& record : recordsIn(header)) {
        records_[record] = membersOf(record, header).value_or(Members{});
      }
    }
    engine_ = membersOf("MetricsEngine", readText(core / "Engine" / "MetricsEngine.h"))
                  .value_or(Members{});
    rows_ = rowsOf(readText(QUORVEX_NUMBERS_DOCUMENT));
  }

  std::map<std::string, Members> records_;
  Members engine_;
  Rows rows_;
};

TEST_F(NumbersDocument, KnowsTheRecordsOfTheHeaders) {
  std::vector<std::string> names;
  for (const auto& [record, members] : records_) {
    names.push_back(record);
    EXPECT_FALSE(members.fields.empty()) << record;
  }
  EXPECT_THAT(names, IsSupersetOf({"BatteryInfo", "PowerMetrics", "ThermalInfo", "FanInfo",
                                   "TemperatureSensor", "TemperatureDisplayReading",
                                   "NetworkInterfaceStats", "NetworkProcessInfo", "NetworkSnapshot",
                                   "ProcessActivityInfo", "PowerReading", "SystemPowerState",
                                   "ProTelemetrySnapshot", "ProProcessEnergy"}));
}

TEST_F(NumbersDocument, HasOneRowForEachFieldAndDerivedReadingInTheirOrder) {
  for (const auto& [record, members] : records_) {
    EXPECT_EQ(namesOf(rows_[record]), members.all()) << record;
  }
}

TEST_F(NumbersDocument, HasNoSectionWithoutARecord) {
  for (const auto& [section, rows] : rows_) {
    EXPECT_TRUE(records_.contains(section) || section == "MetricsEngine") << section;
  }
}

TEST_F(NumbersDocument, NamesOnlyWhatTheEngineOffers) {
  ASSERT_FALSE(rows_["MetricsEngine"].empty());
  EXPECT_THAT(engine_.derived, IsSupersetOf(namesOf(rows_["MetricsEngine"])));
}

TEST_F(NumbersDocument, GivesEachRowTheAnchorOfItsRecordAndName) {
  for (const auto& [record, rows] : rows_) {
    for (const Row& row : rows) {
      EXPECT_EQ(row.anchor, lowerCased(record + "-" + row.name));
    }
  }
}

TEST_F(NumbersDocument, FillsEveryColumnOfEveryRow) {
  constexpr std::size_t columnsBehindName = 6;
  for (const auto& [record, rows] : rows_) {
    for (const Row& row : rows) {
      EXPECT_EQ(row.cells.size(), columnsBehindName) << row.anchor;
      EXPECT_THAT(row.cells, Each(::testing::Not(IsEmpty()))) << row.anchor;
    }
  }
}

TEST_F(NumbersDocument, BeginsEachJudgementOfTrustWithAWordOfItsScale) {
  constexpr std::size_t trustColumn = 4;
  static const std::regex scale{
      R"(^(measured|computed|reported|modelled|estimated|exact|see its fields|as its `confidence`).*)"};
  for (const auto& [record, rows] : rows_) {
    for (const Row& row : rows) {
      ASSERT_GT(row.cells.size(), trustColumn) << row.anchor;
      EXPECT_TRUE(std::regex_match(row.cells[trustColumn], scale)) << row.anchor;
    }
  }
}

TEST_F(NumbersDocument, LinksOnlyToAnchorsThatItHas) {
  const std::string document = readText(QUORVEX_NUMBERS_DOCUMENT);
  std::vector<std::string> anchors;
  for (const auto& [record, rows] : rows_) {
    anchors.push_back(lowerCased(record));
    for (const Row& row : rows) {
      anchors.push_back(row.anchor);
    }
  }
  static const std::regex link{R"(\]\(#([^)]*)\))"};
  const std::sregex_iterator first{document.begin(), document.end(), link};
  ASSERT_NE(first, std::sregex_iterator{});
  for (auto match = first; match != std::sregex_iterator{}; ++match) {
    EXPECT_THAT(anchors, ::testing::Contains((*match)[1].str()));
  }
}

TEST(RecordHeader, TellsFieldsFromFunctionsAndTheRest) {
  const auto members = membersOf("Sample", R"(
    struct Sample {
      Sample() = default;
      Sample(int first, double second) : a{first}, b{second} { check(); }
      int z = 0;
      static constexpr double limit = 15.0;
      using Map = std::map<int, int>;
      int a = 0;  ///< a field; with a semicolon and a { in its comment
      double b{};
      std::optional<std::string> c;
      std::vector<Part> d = {{1}, {2}};
      Kind kind =
          Kind::none;  ///< over two lines
      [[nodiscard]] double sum() const { return a + b; }
      [[nodiscard]] std::optional<double> fresh(Date now, double age = limit) const;
      bool operator==(const Sample&) const = default;
    };
    struct Other { int e = 0; };)");
  ASSERT_TRUE(members.has_value());
  EXPECT_THAT(members->fields, ElementsAre("z", "a", "b", "c", "d", "kind"));
  EXPECT_THAT(members->derived, ElementsAre("sum", "fresh"));
}

TEST(RecordHeader, DefinesEachRecordOnceAndNoSpecialisation) {
  const std::string header = R"(
    // struct Commented { int a; };
    struct Declared;
    struct First { int a = 0; };
    template <>
    struct Texts<First> { int b = 0; };
    struct Second { int c = 0; };)";
  EXPECT_THAT(recordsIn(header), UnorderedElementsAre("First", "Second"));
  EXPECT_FALSE(membersOf("Declared", header).has_value());
}

}  // namespace
}  // namespace quorvex
