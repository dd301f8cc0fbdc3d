// wirelines classify: a row a frame, for databases.
#include <map>
#include <memory>

#include "command_line.hpp"
#include "failure.hpp"
#include "json_text.hpp"
#include "names.hpp"
#include "summary.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

constexpr std::string_view kAboutFile = "Name of the trace, - for standard input";

enum class Form { kTsv, kJsonl };
enum class Schema { kNone, kClickHouse, kJson };

struct ClassifyOptions {
  InputOptions input;
  NameOptions names;  // rows have none, but display filters may ask for them
  Form form = Form::kTsv;
  Schema schema = Schema::kNone;
};

template <typename Visit>
void each_field(Visit visit) {
  for (const auto& field : frame_fields()) visit(field);
  for (const auto& field : summary_fields()) visit(field);
}

// Tab-separated values as ClickHouse and others read them: \t, \n and \\ in texts, \N for what is absent.
std::string tsv_string(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\t': escaped += "\\t"; break;
      case '\n': escaped += "\\n"; break;
      case '\r': escaped += "\\r"; break;
      case '\\': escaped += "\\\\"; break;
      default: escaped += c; break;
    }
  }
  return escaped;
}

void tsv_row(Output& out, std::string_view file, const Summary& summary) {
  out.append(file);
  each_field([&](const Field& field) {
    out.append('\t');
    if (summary.has(field.part)) {
      put_value(out, field, summary);
    } else {
      out.append("\\N");
    }
  });
  out.append('\n');
}

void json_row(Output& out, std::string_view file_in_quotes, const Summary& summary) {
  out.append("{\"file\":");
  out.append(file_in_quotes);
  each_field([&](const Field& field) {
    if (!summary.has(field.part)) return;
    out.append(',');
    put_member(out, field, summary);
  });
  out.append("}\n");
}

std::string_view clickhouse_type(FieldType type) {
  switch (type) {
    case FieldType::kUInt8: return "UInt8";
    case FieldType::kUInt16: return "UInt16";
    case FieldType::kUInt32: return "UInt32";
    case FieldType::kUInt64: return "UInt64";
    case FieldType::kDateTime: return "DateTime('UTC')";
    case FieldType::kHex8: return "FixedString(8)";
    case FieldType::kHex12: return "FixedString(12)";
    case FieldType::kName:
    case FieldType::kIpText:
    case FieldType::kIp6Text: break;
  }
  return "String";
}

std::string_view json_type(FieldType type) {
  switch (type) {
    case FieldType::kUInt8: return R"("type": "integer", "minimum": 0, "maximum": 255)";
    case FieldType::kUInt16: return R"("type": "integer", "minimum": 0, "maximum": 65535)";
    case FieldType::kUInt32: return R"("type": "integer", "minimum": 0, "maximum": 4294967295)";
    case FieldType::kUInt64: return R"("type": "integer", "minimum": 0)";
    case FieldType::kDateTime:
      return R"("type": "string", "pattern": "^[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}$")";
    case FieldType::kName: return R"("type": "string", "pattern": "^[a-z0-9-]+$")";
    case FieldType::kIpText: return R"("type": "string", "format": "ipv4", "pattern": "^[0-9]+(\\.[0-9]+){3}$")";
    case FieldType::kIp6Text: return R"("type": "string", "format": "ipv6", "pattern": "^[0-9a-f:.]+$")";
    case FieldType::kHex8: return R"("type": "string", "pattern": "^[0-9a-f]{8}$")";
    case FieldType::kHex12: return R"("type": "string", "pattern": "^[0-9a-f]{12}$")";
  }
  return "";
}

// Two tables: the rows that one server has, and those of all servers. What is sent again replaces what is there,
// because all rows of a file are on one server, and of those with the same file and frame one stays.
void clickhouse_schema(Output& out) {
  out.append("CREATE TABLE frames_local\n(\n    file String");
  each_field([&](const Field& field) {
    out.append(",\n    ");
    out.append(field.name);
    out.append(field.part == Summary::kAlways ? " " : " Nullable(");
    out.append(clickhouse_type(field.type));
    if (field.part != Summary::kAlways) out.append(')');
  });
  out.append(
      "\n)\nENGINE = ReplacingMergeTree()\nPARTITION BY toYYYYMMDD(time)\n"
      "ORDER BY (file, frame);\n\n"
      "CREATE TABLE frames AS frames_local\n"
      "ENGINE = Distributed(wirelines, currentDatabase(), frames_local, sipHash64(file));\n");
}

void json_schema(Output& out) {
  out.append(
      "{\n  \"$schema\": \"http://json-schema.org/draft-07/schema#\",\n"
      "  \"title\": \"A row of wirelines classify -T jsonl\",\n  \"type\": \"object\",\n  \"properties\": {\n"
      "    \"file\": {\"type\": \"string\", \"description\": \"");
  out.append(kAboutFile);
  out.append("\"}");
  each_field([&](const Field& field) {
    out.append(",\n    \"");
    out.append(field.name);
    out.append("\": {");
    out.append(json_type(field.type));
    out.append(R"(, "description": ")");
    out.append(field.about);
    out.append("\"}");
  });
  out.append("\n  },\n  \"required\": [\"file\"");
  each_field([&](const Field& field) {
    if (field.part != Summary::kAlways) return;
    out.append(", \"");
    out.append(field.name);
    out.append('"');
  });
  out.append("],\n  \"additionalProperties\": false\n}\n");
}

class RowWriter : public Visitor {
 public:
  RowWriter(Output& out, const ClassifyOptions& options)
      : out_(out), tsv_(options.form == Form::kTsv), lift_(options.input.lift_tags) {}

  void visit(const Frame& frame) override {
    auto& file = files_[frame.trace];
    if (file.empty()) file = tsv_ ? tsv_string(*frame.trace) : json_string(*frame.trace);
    lift_.take(frame);
    const Summary summary(frame, lift_);
    tsv_ ? tsv_row(out_, file, summary) : json_row(out_, file, summary);
  }

 private:
  Output& out_;
  bool tsv_;
  Lift lift_;
  std::map<const std::string*, std::string> files_;  // their names as they are written
};

int classify(const ClassifyOptions& options, Output& out) {
  if (options.schema != Schema::kNone) {
    options.schema == Schema::kJson ? json_schema(out) : clickhouse_schema(out);
    return finish(out, 0);
  }
  if (options.input.display_filter) load_names(options.names, options.input.traces());
  const auto writer = [&options](Output& to) { return std::make_unique<RowWriter>(to, options); };
  return finish(out, walk(options.input, out, {writer, {}}));
}

}  // namespace

void add_classify(CLI::App& program, Run& run) {
  auto options = std::make_shared<ClassifyOptions>();
  auto& app = add_command(program, run, "classify", "Write a row a frame, for databases",
                          "Examples:\n"
                          "  wirelines classify --schema clickhouse | clickhouse-client --multiquery\n"
                          "  wirelines classify trace.pcap |\n"
                          "    clickhouse-client --query 'INSERT INTO frames FORMAT TSV'",
                          [options](Output& out) { return classify(*options, out); });
  add_input_options(app, options->input);
  add_jobs_option(app, options->input);
  add_display_filter_option(app, options->input);
  add_lift_option(app, options->input);
  add_name_file_options(app, options->names);
  add_one_of(app, "-T", options->form, {{"tsv", Form::kTsv}, {"jsonl", Form::kJsonl}},
             "Form of the rows: tab-separated, or JSON");
  add_one_of(app, "--schema", options->schema, {{"clickhouse", Schema::kClickHouse}, {"json", Schema::kJson}},
             "Print the definition of a row and end");
}

}  // namespace wirelines::host
