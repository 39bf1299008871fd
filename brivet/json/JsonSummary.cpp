#include "JsonSummary.h"

#include <rapidjson/prettywriter.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "BrivetModule.h"
#include "CheckedOutputStream.h"
#include "Diagnostics.h"
#include "Document.h"
#include "HeaderRecords.h"
#include "ModuleOptions.h"
#include "ProductModel.h"
#include "Progress.h"
#include "ShapeEvaluator.h"
#include "ValidUtf8.h"

namespace {

// Adapts an output stream to the stream concept of RapidJSON, in blocks.
class JsonStream {
 public:
  using Ch = char;

  explicit JsonStream(CheckedOutputStream& target) : stream(target) { buffer.reserve(kBlockSize); }

  void Put(char byte) {
    buffer.push_back(byte);
    if (buffer.size() >= kBlockSize) Flush();
  }
  void Flush() {
    if (!buffer.empty()) stream.write(buffer.data(), static_cast<int>(buffer.size()));
    stream.Check();
    buffer.clear();
  }

 private:
  static constexpr std::size_t kBlockSize = 65536;
  CheckedOutputStream& stream;
  std::string buffer;
};

using Writer = rapidjson::PrettyWriter<JsonStream>;

constexpr std::size_t kIndentedLevels = 16;

class Summary {
 public:
  Summary(BrivetWriteRequest const& request, HeaderRecords const& headerRecords, ProductModel const& productModel,
          JsonStream& stream)
      : document(*request.document), title(request.title), header(headerRecords), model(productModel), writer(stream) {
    writer.SetIndent(' ', 2);
    writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
  }

  void Write() {
    writer.StartObject();
    PutText("format", "brivet-summary");
    Key("version");
    writer.Int(1);
    WriteFile();
    WriteCounts();
    WriteStatus();
    WriteUnits();
    WriteProducts();
    WriteStructure();
    WriteExtent();
    WriteColours();
    WriteLayers();
    WriteProperties();
    WriteAnnotations();
    WriteViews();
    writer.EndObject();
  }

 private:
  void Key(char const* name) { writer.Key(name); }
  void PutString(std::string_view text) {
    std::string const valid = ValidUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
  }
  void PutText(char const* name, std::string_view text) {
    Key(name);
    PutString(text);
  }
  void PutOptional(char const* name, std::optional<std::string> const& text) {
    Key(name);
    if (text.has_value()) {
      PutString(*text);
    } else {
      writer.Null();
    }
  }
  void PutCount(char const* name, long number) {
    Key(name);
    writer.Int64(number);
  }
  void PutNumber(double number) {
    if (!std::isfinite(number)) {
      writer.Null();
    } else if (number == std::floor(number) && std::abs(number) < 1e15) {
      // Whole numbers without ".0", and no negative zero.
      writer.Int64(static_cast<std::int64_t>(number));
    } else {
      writer.Double(number);
    }
  }
  void PutReal(char const* name, std::optional<double> number) {
    Key(name);
    if (number.has_value()) {
      PutNumber(*number);
    } else {
      writer.Null();
    }
  }
  template <class Numbers>
  void PutNumbers(char const* name, Numbers const& numbers) {
    Key(name);
    writer.StartArray();
    for (double const number : numbers) PutNumber(number);
    writer.EndArray();
  }
  void PutList(char const* name, std::vector<std::string> const& strings) {
    Key(name);
    writer.StartArray();
    for (std::string const& each : strings) PutString(each);
    writer.EndArray();
  }
  void PutBox(ModelBox const& box, std::string const* unit) {
    Key("extent");
    if (box.isEmpty) {
      writer.Null();
      return;
    }
    writer.StartObject();
    PutNumbers("min", box.low);
    PutNumbers("max", box.high);
    if (unit != nullptr) PutText("unit", *unit);
    writer.EndObject();
  }

  void WriteFile() {
    Key("file");
    writer.StartObject();
    PutOptional("name", header.Text("FILE_NAME", 0));
    std::vector<std::string> const schemas = header.List("FILE_SCHEMA", 0);
    PutList("schemas", schemas);
    Key("applicationProtocol");
    char const* const protocol = header.ApplicationProtocol();
    if (protocol == nullptr) {
      writer.Null();
    } else {
      writer.String(protocol);
    }
    PutList("description", header.List("FILE_DESCRIPTION", 0));
    PutOptional("timeStamp", header.Text("FILE_NAME", 1));
    PutList("authors", header.List("FILE_NAME", 2));
    PutList("organizations", header.List("FILE_NAME", 3));
    PutOptional("preprocessor", header.Text("FILE_NAME", 4));
    PutOptional("originatingSystem", header.Text("FILE_NAME", 5));
    writer.EndObject();
  }

  // A complex instance counts under the type of each of its records.
  void WriteCounts() {
    std::map<std::string, long> types;
    for (std::size_t type = 0; type < document.GetTypeCount(); ++type) {
      std::string const name = document.GetTypeName(type);
      long const count = document.GetTypeInstanceCount(type);
      for (std::size_t i = 0; i < name.size();) {
        std::size_t const begin = name.find_first_not_of("( )", i);
        if (begin == std::string::npos) break;
        std::size_t const end = std::min(name.find_first_of("( )", begin), name.size());
        types[name.substr(begin, end - begin)] += count;
        i = end;
      }
    }
    Key("counts");
    writer.StartObject();
    PutCount("instances", document.GetInstanceCount());
    PutCount("complex", document.GetComplexCount());
    PutCount("skipped", document.GetFailedCount());
    Key("types");
    writer.StartObject();
    for (auto const& [name, count] : types) {
      std::string const valid = ValidUtf8(name);
      writer.Key(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
      writer.Int64(count);
    }
    writer.EndObject();
    writer.EndObject();
  }

  void WriteStatus() {
    Key("status");
    writer.StartObject();
    VRINResult const state = document.GetState();
    bool const isPartial = state.IsPartialSuccess() || (state.IsSuccess() && document.GetFailedCount() > 0);
    PutText("result", state.IsFailure() ? "failure" : isPartial ? "partial" : "success");
    Key("lost");
    writer.StartArray();
    for (Loss const& loss : document.GetLosses()) {
      writer.StartObject();
      PutCount("line", loss.firstLine);
      PutCount("lastLine", loss.lastLine);
      PutList("instances", loss.instances);
      PutText("reason", loss.reason);
      writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
  }

  void WriteUnits() {
    Key("units");
    writer.StartArray();
    for (ModelUnits const& each : model.units) {
      writer.StartObject();
      Key("length");
      writer.StartObject();
      PutText("name", each.lengthName);
      PutReal("metres", each.metres);
      writer.EndObject();
      Key("planeAngle");
      if (each.angleName.empty()) {
        writer.Null();
      } else {
        writer.StartObject();
        PutText("name", each.angleName);
        PutReal("radians", each.radians);
        writer.EndObject();
      }
      PutReal("uncertainty", each.uncertainty);
      PutList("contexts", each.contexts);
      writer.EndObject();
    }
    writer.EndArray();
  }

  void WriteProducts() {
    Key("products");
    writer.StartArray();
    for (ModelProduct const& each : model.products) {
      writer.StartObject();
      PutOptional("instance", each.instance.empty() ? std::nullopt : std::optional(each.instance));
      PutOptional("id", each.id);
      PutOptional("name", each.name);
      PutOptional("description", each.description);
      PutOptional("version", each.version);
      PutText("definition", each.definition);
      PutList("shapes", each.shapes);
      PutCount("solids", each.solids);
      PutCount("shells", each.shells);
      PutCount("faces", each.faces);
      PutCount("edges", each.edges);
      PutBox(each.extent, nullptr);
      std::vector<std::string> colours;
      for (int const index : each.colours) {
        std::string const colour = model.colours[static_cast<std::size_t>(index)].colour.Hexadecimal();
        if (std::find(colours.begin(), colours.end(), colour) == colours.end()) colours.push_back(colour);
      }
      PutList("colours", colours);
      Key("computed");
      if (each.computed.has_value()) {
        writer.StartObject();
        PutReal("volume", each.computed->volume);
        PutReal("area", each.computed->area);
        PutNumbers("centroid", each.computed->centroid);
        writer.EndObject();
      } else {
        writer.Null();
      }
      writer.EndObject();
    }
    writer.EndArray();
  }

  void BeginNode(int product, int occurrence) {
    writer.StartObject();
    PutText("product", model.products[static_cast<std::size_t>(product)].definition);
    ModelOccurrence const* const use =
        occurrence < 0 ? nullptr : &model.occurrences[static_cast<std::size_t>(occurrence)];
    PutOptional("occurrence", use == nullptr ? std::nullopt : std::optional(use->instance));
    PutText("name", model.NodeName(product, occurrence));
    PutOptional("designator", use == nullptr ? std::nullopt : use->designator);
    PutNumbers("placement", use == nullptr ? Placement().Numbers() : use->placement.Numbers());
    Key("children");
    writer.StartArray();
  }

  // An explicit stack: structures can be as deep as the file is long. The number of nodes is bounded, since a short
  // file can describe an exponential number of them.
  void WriteStructure() {
    Key("structure");
    writer.StartArray();
    long nodes = 0;
    struct Level {
      int product;
      std::size_t next;
    };
    std::vector<Level> path;
    // Indentation ends at a depth, since that of deep structures would take quadratic space.
    auto const setIndent = [&] { writer.SetIndent(' ', path.size() < kIndentedLevels ? 2 : 0); };
    for (int const root : model.roots) {
      if (++nodes > ProductModel::kNodeLimit) break;
      BeginNode(root, -1);
      path.push_back({root, 0});
      setIndent();
      while (!path.empty()) {
        Level& level = path.back();
        auto const& children = model.products[static_cast<std::size_t>(level.product)].occurrences;
        if (level.next == children.size() || nodes >= ProductModel::kNodeLimit) {
          writer.EndArray();
          writer.EndObject();
          path.pop_back();
          setIndent();
          continue;
        }
        int const occurrence = children[level.next++];
        int const child = model.occurrences[static_cast<std::size_t>(occurrence)].child;
        ++nodes;
        BeginNode(child, occurrence);
        path.push_back({child, 0});
        setIndent();
      }
    }
    writer.EndArray();
    if (nodes < ProductModel::kNodeLimit) return;
    ReportWarning(title, "the structure has more than " + std::to_string(ProductModel::kNodeLimit - 1) +
                             " nodes; the rest is left out");
  }

  void WriteExtent() {
    std::string const unit =
        model.extentUnits < 0 ? "" : model.units[static_cast<std::size_t>(model.extentUnits)].lengthName;
    PutBox(model.extent, &unit);
  }

  void WriteColours() {
    Key("colours");
    writer.StartArray();
    for (ModelColourUse const& each : model.colours) {
      if (each.items == 0) continue;
      writer.StartObject();
      PutText("colour", each.colour.Hexadecimal());
      PutReal("transparency", each.colour.transparency);
      PutCount("items", each.items);
      writer.EndObject();
    }
    writer.EndArray();
  }

  void WriteLayers() {
    Key("layers");
    writer.StartArray();
    for (ModelLayer const& each : model.layers) {
      writer.StartObject();
      PutText("instance", each.instance);
      PutOptional("name", each.name);
      PutOptional("description", each.description);
      PutCount("items", static_cast<long>(each.items.size()));
      writer.EndObject();
    }
    writer.EndArray();
  }

  void WriteProperties() {
    Key("properties");
    writer.StartArray();
    for (ModelProperty const& each : model.properties) {
      writer.StartObject();
      PutText("instance", each.instance);
      PutOptional("product", each.product.empty() ? std::nullopt : std::optional(each.product));
      PutOptional("name", each.name);
      PutOptional("description", each.description);
      PutText("kind", each.KindName());
      Key("values");
      writer.StartArray();
      for (ModelPropertyValue const& value : each.values) {
        writer.StartObject();
        PutOptional("name", value.name);
        if (!value.point.empty()) {
          PutNumbers("value", value.point);
        } else if (value.number.has_value()) {
          PutReal("value", *value.number);
        } else {
          PutOptional("value", value.text);
        }
        PutOptional("unit", value.unit);
        writer.EndObject();
      }
      writer.EndArray();
      writer.EndObject();
    }
    writer.EndArray();
  }

  void WriteAnnotations() {
    Key("annotations");
    writer.StartArray();
    for (ModelAnnotation const& each : model.annotations) {
      writer.StartObject();
      PutText("instance", each.instance);
      PutOptional("name", each.name);
      PutText("kind", each.KindName());
      PutText("form", each.FormName());
      PutOptional("value", each.value);
      PutOptional("view", each.view);
      writer.EndObject();
    }
    writer.EndArray();
  }

  void WriteViews() {
    Key("views");
    writer.StartArray();
    for (ModelView const& each : model.views) {
      writer.StartObject();
      PutText("instance", each.instance);
      PutOptional("name", each.name);
      PutText("kind", each.kind == ModelView::Saved ? "saved" : "camera");
      writer.EndObject();
    }
    writer.EndArray();
  }

  Document& document;
  std::string const& title;
  HeaderRecords const& header;
  ProductModel const& model;
  Writer writer;
};

// Reports that nothing evaluates the exact shapes of a model.
void WarnOfMissingModule(BrivetWriteRequest const& request, ProductModel const& model) {
  bool const isAvailable = request.shapes != nullptr && request.shapes->IsAvailable();
  bool const hasExactShapes = std::any_of(model.products.begin(), model.products.end(),
                                          [](ModelProduct const& product) { return product.faces > 0; });
  if (isAvailable || !hasExactShapes) return;
  ReportWarning(
      request.shownName,
      "volumes, areas and centroids are not computed: install the package brivet-shape, which evaluates exact "
      "shapes");
}

}  // namespace

VRINResult WriteJsonSummary(BrivetWriteRequest& request, CheckedOutputStream& stream) {
  Document& document = *request.document;
  HeaderRecords header;
  VRINResult const described = document.DescribeHeader(header);
  if (described.IsFailure()) return described;
  ProductModel const none;
  bool const isComputed = ModuleOptions(request.options, "Json", ModuleOptions::Writer).GetBool("Computed", false);
  ProductModel const* const model =
      isComputed ? GetEvaluatedModel(request, ShapeEvaluator::Properties) : document.GetModel(false, *request.progress);
  if (document.GetModelResult().IsFailure()) return document.GetModelResult();
  if (isComputed && model != nullptr) WarnOfMissingModule(request, *model);
  JsonStream out(stream);
  Summary(request, header, model != nullptr ? *model : none, out).Write();
  out.Put('\n');
  out.Flush();
  return VREL_S_OK;
}
