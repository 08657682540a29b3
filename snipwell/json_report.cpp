#include "snipwell/json_report.h"

#include <nlohmann/json.hpp>

namespace snipwell {

namespace {

using Json = nlohmann::ordered_json;

Json ToJson(const StageSize& stage) {
  return {{"stage", stage.stage}, {"bytes", stage.bytes}, {"tokens", stage.tokens}};
}

Json ToJson(const LineRange& range) {
  return {{"file", range.file},
          {"first", range.first},
          {"last", range.last},
          {"isSystem", range.isSystem}};
}

Json ToJson(const OtherCrash& crash) {
  return {{"headline", crash.headline}, {"file", crash.file}};
}

Json ToJson(const SizePoint& point) { return {{"seconds", point.seconds}, {"bytes", point.bytes}}; }

template <typename Item>
Json ListOf(const std::vector<Item>& items) {
  Json list = Json::array();
  for (const Item& item : items) list.push_back(ToJson(item));
  return list;
}

Json FailureOf(const Findings& findings) {
  return {{"headline", findings.headline},
          {"kind", findings.kind},
          {"compilerVersion", findings.compilerVersion},
          {"command", findings.command},
          {"reducedCommand", findings.reducedCommand},
          {"sourceName", findings.sourceName},
          {"source", findings.source},
          {"acceptedBy", findings.acceptedBy.empty() ? Json() : Json(findings.acceptedBy)},
          {"output", findings.output},
          {"origin", ListOf(findings.origin)}};
}

Json ReductionOf(const Findings& findings) {
  return {{"stages", ListOf(findings.stages)},
          {"compilations", findings.compilations},
          {"seconds", findings.seconds},
          {"notes", findings.notes},
          {"otherCrashes", ListOf(findings.otherCrashes)},
          {"history", ListOf(findings.history)},
          {"version", findings.version}};
}

}  // namespace

std::string JsonReport(const Findings& findings) {
  constexpr int kIndent = 2;
  Json report = FailureOf(findings);
  report.update(ReductionOf(findings));
  return report.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace snipwell
