// From the text of a display filter to its tree, by recursive descent:
//
//   any    = all { ("or" | "||") all }
//   all    = term { ("and" | "&&") term }
//   term   = ("not" | "!") term | "(" any ")" | test
//   test   = FIELD [ COMPARISON value | "in" "{" item { "," item } "}" ]
//   item   = value | NUMBER ".." NUMBER
#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "failure.hpp"
#include "filter_tree.hpp"

namespace wirelines::host {

namespace {

constexpr int kDeepest = 100;  // parentheses and nots in one another: neither parsing nor asking may use up the stack

bool is_word(char c) {
  const auto folded_c = fold(c);
  return (folded_c >= 'a' && folded_c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == ':' || c == '-' ||
         c == '_' || c == '/' || static_cast<unsigned char>(c) >= 0x80;
}

struct Token {
  enum class Kind { kWord, kText, kSign, kEnd };

  Kind kind = Kind::kEnd;
  std::size_t position = 0;
  std::string_view written = {};  // a word, a sign, or a text with its quotes
  std::string text = {};          // a text without quotes and backslashes

  [[nodiscard]] bool is(std::string_view sign) const { return kind == Kind::kSign && written == sign; }
  [[nodiscard]] bool is_keyword(std::string_view word) const { return kind == Kind::kWord && folded(written) == word; }
};

// Takes what stands at `position`, blanks before it left out.
Token token_at(std::string_view filter, std::size_t position) {
  constexpr std::string_view kBlanks = " \t\r\n";
  constexpr std::string_view kSigns[] = {"&&", "||", "==", "!=", "<=", ">=", "<", ">",
                                         "!",  "~",  "(",  ")",  "{",  "}",  ","};
  position = std::min(filter.find_first_not_of(kBlanks, position), filter.size());
  const auto rest = filter.substr(position);
  if (rest.empty()) return {Token::Kind::kEnd, position};
  if (rest[0] == '"') {
    std::string text;
    std::size_t i = 1;
    for (; i < rest.size() && rest[i] != '"'; i++) {
      if (rest[i] == '\\' && i + 1 < rest.size()) i++;
      text += rest[i];
    }
    if (i == rest.size()) throw FilterError(position, "this text has no closing quote");
    return {Token::Kind::kText, position, rest.substr(0, i + 1), text};
  }
  for (const auto sign : kSigns) {
    if (rest.starts_with(sign)) return {Token::Kind::kSign, position, rest.substr(0, sign.size())};
  }
  std::size_t size = 0;
  while (size < rest.size() && is_word(rest[size])) size++;
  if (size > 0) return {Token::Kind::kWord, position, rest.substr(0, size)};
  switch (rest[0]) {
    case '=': throw FilterError(position, "equal is written ==");
    case '&': throw FilterError(position, "and is written && or and");
    case '|': throw FilterError(position, "or is written || or or");
    case '\'': throw FilterError(position, "texts stand in double quotes");
    default: throw FilterError(position, in_quotes(rest.substr(0, 1)) + " means nothing here");
  }
}

std::optional<std::uint64_t> number_of(std::string_view text) {
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  if (hex) text.remove_prefix(2);
  std::uint64_t number = 0;
  const auto* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, hex ? 16 : 10);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

// "2024-05-01 10:00:00.25", or its beginning from the day on.
std::optional<Wanted> time_of(std::string_view text) {
  constexpr std::string_view kBetween = "-- ::.";
  constexpr std::size_t kWidths[] = {4, 2, 2, 2, 2, 2};
  Wanted wanted{.form = Wanted::Form::kTime};
  while (true) {
    const auto part = wanted.time_parts;
    const auto digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const bool fraction = part == 6;
    if (fraction ? digits == 0 || digits > 9 : digits != kWidths[part]) return std::nullopt;
    std::from_chars(text.data(), text.data() + digits, wanted.time[part]);
    for (auto i = digits; fraction && i < 9; i++) wanted.fraction_unit *= 10;
    wanted.time_parts++;
    text.remove_prefix(digits);
    if (text.empty()) break;
    const bool next = !fraction && (text[0] == kBetween[part] || (part == 2 && text[0] == 'T'));
    if (!next) return std::nullopt;
    text.remove_prefix(1);
  }
  // A day at least, or minutes behind the hour.
  if (wanted.time_parts < 3 || wanted.time_parts == 4) return std::nullopt;
  return wanted;
}

// What to write for a value of the field.
std::string wanted_for(const FilterField& field) {
  const auto form = [&field]() -> std::string {
    switch (field.type) {
      case FilterType::kNumber: return "a number, as 80 or 0x50";
      case FilterType::kHex: return "a hexadecimal number, as c0a80100";
      case FilterType::kMac: return "a MAC address, as 00:00:5e:00:53:01 or 00:00:5e:00:00:00/24";
      case FilterType::kIp: return "an IPv4 address, as 192.0.2.1 or 192.0.2.0/24";
      case FilterType::kIp6: return "an IPv6 address, as 2001:db8::1 or 2001:db8::/32";
      case FilterType::kIpx: return "an IPX network and node, as 1.00005e005301";
      case FilterType::kStation: return "a MAC, IPv4, IPv6 or IPX address";
      case FilterType::kTime: return "a time in double quotes, as \"2024-05-01 10:00:00\" or its beginning";
      case FilterType::kText:
      case FilterType::kFlag: break;
    }
    return "a text in double quotes";
  }();
  return form + (field.names != FilterNames::kNone ? ", or a name in double quotes" : "");
}

class Parser {
 public:
  explicit Parser(std::string_view filter) : filter_(filter) { advance(); }

  Filter::Node parse() {
    auto node = any();
    if (next_.is(")")) throw FilterError(next_.position, "no parenthesis is open here");
    if (next_.kind != Token::Kind::kEnd) throw FilterError(next_.position, "expected and, or, or the end" + here());
    return node;
  }

 private:
  using Node = Filter::Node;

  void advance() { next_ = token_at(filter_, next_.position + next_.written.size()); }

  bool take_sign(std::string_view sign) {
    const bool taken = next_.is(sign);
    if (taken) advance();
    return taken;
  }

  bool take_keyword(std::string_view word) {
    const bool taken = next_.is_keyword(word);
    if (taken) advance();
    return taken;
  }

  // ", not 'x'" for what stands here.
  [[nodiscard]] std::string here() const {
    return next_.kind == Token::Kind::kEnd ? "" : ", not " + in_quotes(next_.written);
  }

  void expect(std::string_view sign) {
    if (!take_sign(sign)) throw FilterError(next_.position, "expected " + std::string(sign) + here());
  }

  Node any() {
    Node node{.kind = Node::Kind::kAny};
    do node.parts.push_back(all());
    while (take_sign("||") || take_keyword("or"));
    return node.parts.size() == 1 ? std::move(node.parts[0]) : std::move(node);
  }

  Node all() {
    Node node{.kind = Node::Kind::kAll};
    do node.parts.push_back(term());
    while (take_sign("&&") || take_keyword("and"));
    return node.parts.size() == 1 ? std::move(node.parts[0]) : std::move(node);
  }

  Node term() {
    const auto position = next_.position;
    const bool negated = take_sign("!") || take_keyword("not");
    if (!negated && !take_sign("(")) return test();

    if (++depth_ > kDeepest) throw FilterError(position, "nested deeper than " + std::to_string(kDeepest));
    Node node;
    if (negated) {
      node.kind = Node::Kind::kNot;
      node.parts.push_back(term());
    } else {
      node = any();
      expect(")");
    }
    depth_--;
    return node;
  }

  Node test() {
    if (next_.kind != Token::Kind::kWord) {
      throw FilterError(next_.position, "expected a field or a protocol, not, or (" + here());
    }
    Node node{.field = find_filter_field(next_.written)};
    if (node.field == nullptr) throw unknown_field();
    advance();
    const auto position = next_.position;
    const auto relation = take_relation();
    const bool list = !relation && take_keyword("in");
    if (!relation && !list) return node;
    if (node.field->type == FilterType::kFlag) {
      throw FilterError(position, std::string(node.field->name) + " is a yes or no of its own, without a comparison");
    }
    node.relation = relation.value_or(Relation::kEqual);
    check_order(node, position);
    if (!list) {
      node.wanted.push_back(value(node));
      return node;
    }
    expect("{");
    do node.wanted.push_back(item(node));
    while (take_sign(","));
    expect("}");
    return node;
  }

  [[nodiscard]] FilterError unknown_field() const {
    const auto nearest = nearest_filter_field(next_.written);
    return {next_.position, in_quotes(next_.written) + " is no field or protocol" +
                                (nearest.empty() ? "" : "; did you mean " + std::string(nearest) + "?")};
  }

  std::optional<Relation> take_relation() {
    constexpr std::pair<std::string_view, Relation> kRelations[] = {
        {"==", Relation::kEqual},       {"!=", Relation::kNotEqual}, {"<", Relation::kLess},
        {"<=", Relation::kLessOrEqual}, {">", Relation::kGreater},   {">=", Relation::kGreaterOrEqual},
        {"~", Relation::kContains},
    };
    for (const auto& [sign, relation] : kRelations) {
      if (take_sign(sign)) return relation;
    }
    if (take_keyword("contains")) return Relation::kContains;
    return std::nullopt;
  }

  // Only numbers and times have an order, only texts and names contain something.
  static void check_order(const Node& node, std::size_t position) {
    const auto type = node.field->type;
    const bool has_text = type == FilterType::kText || node.field->names != FilterNames::kNone;
    const bool has_order = type == FilterType::kNumber || type == FilterType::kTime;
    const bool ordered = node.relation != Relation::kEqual && node.relation != Relation::kNotEqual;
    if (node.relation == Relation::kContains ? has_text : !ordered || has_order) return;
    throw FilterError(position, std::string(node.field->name) + " can be compared with == and != only");
  }

  Wanted item(const Node& node) {
    const auto dots = next_.written.find("..");
    if (node.field->type != FilterType::kNumber || next_.kind != Token::Kind::kWord || dots == std::string_view::npos) {
      return value(node);
    }
    const auto first = number_of(next_.written.substr(0, dots));
    const auto last = number_of(next_.written.substr(dots + 2));
    if (!first || !last) throw FilterError(next_.position, "expected a range of numbers, as 5..9" + here());
    if (*last < *first) throw FilterError(next_.position, "this range ends before it begins");
    advance();
    return {.first = *first, .last = *last};
  }

  Wanted value(const Node& node) {
    const auto& field = *node.field;
    auto wanted = next_.kind == Token::Kind::kText   ? text_value(node)
                  : next_.kind == Token::Kind::kWord ? word_value(node)
                                                     : std::nullopt;
    if (!wanted) throw FilterError(next_.position, "expected " + wanted_for(field) + here());
    advance();
    return *wanted;
  }

  [[nodiscard]] std::optional<Wanted> text_value(const Node& node) const {
    const auto& field = *node.field;
    if (field.type == FilterType::kTime) return time_of(next_.text);
    if (field.type != FilterType::kText && field.names == FilterNames::kNone) return std::nullopt;
    if (node.relation != Relation::kEqual && node.relation != Relation::kNotEqual &&
        node.relation != Relation::kContains) {
      throw FilterError(next_.position, "names have no order: they can be compared with ==, != and ~ only");
    }
    if (next_.text.empty()) throw FilterError(next_.position, "an empty text is nothing to look for");
    // As the texts of lines and names come out of the library's code page.
    std::string shown;
    Text().append(shown, line_bytes(next_.text));
    return Wanted{.form = Wanted::Form::kText, .bytes = folded(shown)};
  }

  std::optional<Wanted> word_value(const Node& node) {
    const auto type = node.field->type;
    if (node.relation == Relation::kContains) {
      throw FilterError(next_.position, "expected a text in double quotes" + here());
    }
    if (type == FilterType::kNumber) {
      const auto number = number_of(next_.written);
      return number ? std::optional(Wanted{.first = *number, .last = *number}) : std::nullopt;
    }
    auto wanted = filter_address(type, next_.written);
    return wanted.bytes.empty() ? std::nullopt : std::optional(std::move(wanted));
  }

  std::string_view filter_;
  Token next_;
  int depth_ = 0;
};

}  // namespace

Filter::Node parse_filter(std::string_view text) {
  return Parser(text).parse();
}

}  // namespace wirelines::host
