#include "refine/passes.h"

namespace snipwell {

const std::vector<Pass>& Passes() {
  static const std::vector<Pass> passes = {
      {"includes", RemoveIncludes, 0},
      {"bodies", RemoveBodies, 0},
      {"unused", RemoveUnused, 0},
      {"large items", RemoveLargeItems, 32},
      {"items", RemoveItems},
      {"empty groups", EmptyGroups},
      {"groups unwrapped", UnwrapGroups},
      {"template heads", RemoveTemplateHeads},
      {"parameters", RemoveParameters},
      {"scopes joined", JoinScopes},
      {"namespaces", FlattenNamespaces},
      {"classes", PutInClasses},
      {"neighbours", RemoveNeighbours},
      {"everywhere", RemoveEverywhere},
      {"brackets", RemoveBrackets},
      {"values", PlainValues},
      {"types", PlainTypes},
      {"scopes", FlattenScopes},
      {"inlining", InlineNames},
      {"arguments", InlineArguments},
      {"declarations", MergeDeclarations},
      {"other bodies", MoveBodies},
      {"bases", PutInBases},
      {"objects", MakeObjects},
      {"other types", ReplaceTypes},
      {"pairs", RemovePairs},
      {"short names", ShortNames, 0, true},
  };
  return passes;
}

}  // namespace snipwell
