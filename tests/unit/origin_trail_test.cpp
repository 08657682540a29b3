#include "snipwell/origin_trail.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace snipwell {
namespace {

OriginTrail TrailOf(const std::string& text) {
  OriginTrail trail;
  trail.Start({text, LineMap("a.cpp", text)});
  return trail;
}

std::string PlacesOf(const OriginTrail& trail) {
  std::string places;
  for (const std::uint32_t place : trail.Places()) places += std::to_string(place) + ' ';
  return places;
}

TEST(OriginTrail, FindsWordsWhereTheyMostLikelyStood) {
  const struct {
    const char* before;
    const char* after;
    const char* places;
  } rows[] = {
      {"a b", "", ""},
      {"a b", "x y", "0 2 "},    // as many words: spelt otherwise
      {"a b c", "b x", "2 2 "},  // one that is new stands where the one before does
      {"a b c", "x c", "0 4 "},
      {"( a ) ; ( b ) ;", "( b ) ;", "8 10 12 14 "},
      {"int a ; int b ;", "int b ;", "8 12 14 "},  // what stands before a word stays with it
      {"x ; y ; z ;", "x ; z ;", "0 2 8 10 "},     // unless it ends what was before
      {"a b c", "c b", "4 4 "},                    // order is kept
  };
  for (const auto& row : rows) {
    OriginTrail trail = TrailOf(row.before);
    trail.Follow(row.after);
    EXPECT_EQ(PlacesOf(trail), row.places) << row.before << " -> " << row.after;
  }
}

/// The words of a text whose bits are set.
std::string Chosen(const std::vector<std::string>& words, unsigned bits) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if ((bits >> i & 1U) != 0) text += words[i] + ' ';
  }
  return text;
}

/// What is wrong with the places of a program's words, or "".
std::string Complaint(const OriginTrail& trail, const std::string& source, const Program& program) {
  if (trail.Places().size() != program.Size()) return "another number of places";
  for (std::size_t i = 0; i < program.Size(); ++i) {
    const std::uint32_t place = trail.Places()[i];
    if (i > 0 && place <= trail.Places()[i - 1]) return "places do not grow";
    if (source.compare(place, program.Text(i).size(), program.Text(i)) != 0) return "another word";
  }
  return "";
}

// Whatever words go, and then go again: each that is left stood where it is said to have stood.
TEST(OriginTrail, FollowsWordsThroughSeveralChanges) {
  const std::vector<std::string> words = {"a", "(", "b", ";", "a", ")", "b", ";", "(", "a"};
  const unsigned all = 1U << words.size();
  const std::string source = Chosen(words, all - 1);
  for (unsigned bits = 0; bits < all; ++bits) {
    OriginTrail trail = TrailOf(source);
    trail.Follow(Chosen(words, bits));
    const std::string last = Chosen(words, bits & 0x2DB);
    trail.Follow(last);
    ASSERT_EQ(Complaint(trail, source, Program(last)), "") << last;
    const std::string before = PlacesOf(trail);
    trail.Follow(trail.WithPlaces(last, Blanks::AsWritten));
    ASSERT_EQ(PlacesOf(trail), before) << "as a program: " << last;
  }
}

}  // namespace
}  // namespace snipwell
