#include "refine/passes.h"

namespace snipwell {

const std::vector<Pass>& Passes() {
  static const std::vector<Pass> passes = {
      {"bodies", RemoveBodies},
      {"unused", RemoveUnused},
      {"items", RemoveItems},
      {"empty groups", EmptyGroups},
      {"groups unwrapped", UnwrapGroups},
      {"template heads", RemoveTemplateHeads},
      {"parameters", RemoveParameters},
      {"neighbours", RemoveNeighbours},
      {"everywhere", RemoveEverywhere},
      {"brackets", RemoveBrackets},
      {"values", PlainValues},
      {"types", PlainTypes},
      {"inlining", InlineNames},
      {"declarations", MergeDeclarations},
      {"other bodies", MoveBodies},
      {"other types", ReplaceTypes},
      {"short names", ShortNames},
      {"pairs", RemovePairs},
  };
  return passes;
}

}  // namespace snipwell
