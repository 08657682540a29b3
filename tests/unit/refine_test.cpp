// The second stage without a compiler: what must hold for every text, and searches with judges
// that only look at the text.

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <random>

#include "refine/search.h"
#include "refine_invariants.h"

namespace snipwell {

namespace {

/// Tries `text` and every text that goes on from it by up to `more` pieces.
void TryEveryText(const std::vector<std::string>& pieces, int more, const std::string& text = "") {
  ASSERT_EQ(ComplaintAboutRefining(text), "") << testing::PrintToString(text);
  for (const std::string& piece : pieces) {
    if (more > 0 && !testing::Test::HasFailure()) TryEveryText(pieces, more - 1, text + piece);
  }
}

}  // namespace

TEST(RefineInvariants, HoldForEveryShortText) {
  TryEveryText(
      {"a", "0", "\"", "'", "/", "*", "\\", "#", "\n", " ", "R\"(", ")", "{", "<", ">", ":"}, 3);
  TryEveryText({"struct A", "template", "int f", "(", ")", "{", "}", "<", ">>", ",", ";",
                "::", "\n#define X", "\n", "= 1"},
               3);
}

TEST(RefineInvariants, HoldForRandomPrograms) {
  const std::vector<std::string> pieces = {"struct ",
                                           "A",
                                           "B ",
                                           "f",
                                           "{",
                                           "}",
                                           "(",
                                           ")",
                                           "<",
                                           ">",
                                           ";",
                                           ",",
                                           "int ",
                                           "=",
                                           "return ",
                                           "::",
                                           "1",
                                           "\"x\"",
                                           "template ",
                                           "class ",
                                           ":",
                                           "\n",
                                           "#define M(a) a\n",
                                           "x"};
  std::mt19937 random(1);
  for (int i = 0; i < 300; ++i) {
    std::string text;
    for (int length = 0; length < 60; ++length) text += pieces[random() % pieces.size()];
    ASSERT_EQ(ComplaintAboutRefining(text), "") << text;
  }
}

namespace {

/// Judges by the text alone, and answers open questions in a random order.
class TextJudge : public Judge {
 public:
  TextJudge(std::size_t placeCount, unsigned seed, std::function<bool(const std::string&)> judging)
      : places(placeCount), random(seed), judge(std::move(judging)) {}

  std::size_t Places() const override { return places; }
  void Ask(std::size_t place, const std::string& program) override {
    open.push_back({place, judge(program)});
  }
  void Drop(std::size_t place) override {
    const auto isAt = [place](const Answer& answer) { return answer.place == place; };
    open.erase(std::remove_if(open.begin(), open.end(), isAt), open.end());
  }
  std::optional<Answer> Await() override {
    std::swap(open.at(random() % open.size()), open.back());
    const Answer answer = open.back();
    open.pop_back();
    return answer;
  }

 private:
  std::size_t places;
  std::mt19937 random;
  std::function<bool(const std::string&)> judge;
  std::vector<Answer> open;
};

bool HoldsInOrder(const std::vector<std::string>& wanted, const std::string& text) {
  const Program program(text);
  std::size_t next = 0;
  for (std::size_t i = 0; i < program.Size() && next < wanted.size(); ++i) {
    if (program.Text(i) == wanted[next]) ++next;
  }
  return next == wanted.size();
}

/// All programs that a search accepts, joined.
std::string Accepted(const std::string& source, const std::vector<std::string>& wanted,
                     std::size_t places, unsigned seed) {
  TextJudge judge(places, seed,
                  [&](const std::string& text) { return HoldsInOrder(wanted, text); });
  std::string all;
  Search search(judge, Program(source),
                [&](const Program&, const std::string& text) { all += text + "\n--\n"; });
  EXPECT_TRUE(search.Run(Passes()));
  const Program& result = search.Result();
  EXPECT_EQ(TextsOf(result, result.Words()), wanted);
  return all;
}

const char kSource[] =
    "#include <vector>\n#define TWICE(x) x x\n"
    "namespace one { template <class T> struct Pool { T item; int size() const { return 3; } }; }\n"
    "int sum(int first, int second) { for (int i = 0; i < second; ++i) { first += i; } return "
    "first; }\n"
    "struct Job : one::Pool<int> { Job() : priority(1) {} int priority; };\n"
    "int main() { Job job; return sum(job.priority, \"text\"[0]) + one::Pool<Job>().size(); }\n";

}  // namespace

TEST(RefineSearch, LeavesJustWhatIsWanted) {
  const Program program(kSource);
  std::vector<std::string> plain;  // what brackets and directives do not hold together
  for (const Word& word : program.Words()) {
    const std::string text(program.Text(word));
    if (std::string("#()[]{}<>\n<vector>").find(text) == std::string::npos) plain.push_back(text);
  }
  std::mt19937 random(2);
  for (unsigned round = 0; round < 20; ++round) {
    std::vector<std::string> wanted;
    for (const std::string& text : plain) {
      if (random() % 12 == 0) wanted.push_back(text);
    }
    const std::string accepted = Accepted(kSource, wanted, 1, round);
    for (const std::size_t places : {2, 7}) {
      EXPECT_EQ(Accepted(kSource, wanted, places, round), accepted) << places << " places";
    }
  }
}

}  // namespace snipwell
