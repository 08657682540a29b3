#include "snipwell/stages.h"

namespace snipwell {

const std::vector<Stage>& Stages() {
  static const std::vector<Stage> stages = {
      {"preprocess", "preprocess", "preprocessed", true, Preprocess},
      {"plain", "make plain", "made plain", true, MakePlain},
      {"snip", "snip", "without what snip could take", true, RunSnip},
      {"refine", "refine", "refined token by token", false, Refine},
      {"options", "options", "with the options needed", false, ReduceOptions},
      {"layout", "lay out", "laid out", false, LayOut},
  };
  return stages;
}

std::vector<std::string> StageNames() {
  std::vector<std::string> names;
  for (const Stage& stage : Stages()) names.emplace_back(stage.name);
  return names;
}

/// Without snip, which takes whole declarations one after the other: to refine alone is quicker,
/// and so there is nothing to make plain.
std::vector<std::string> DefaultStages() { return {"preprocess", "refine", "options", "layout"}; }

}  // namespace snipwell
