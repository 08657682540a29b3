// What the tool adds to the compiler runs, part by part.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "compile/argument_vector.h"
#include "failure/error_match.h"
#include "reduce/file_org.h"
#include "text/stream_cleaner.h"
#include "text/string_array.h"
#include "text/text_reader.h"
#include "text/text_writer.h"

extern char** environ;

namespace snipwell {
namespace {

namespace fs = std::filesystem;

// A program that does nothing, in the place of the compiler.
constexpr char kNoCompiler[] = "/bin/true";

/// A text of about 100 bytes an object, in the shapes that sources are made of.
std::string SourceText(int objects) {
  std::string text;
  for (int i = 0; i < objects; ++i) {
    const std::string number = std::to_string(i);
    if (i % 2 == 0) {
      text += "extern int declared_value_" + number +
              "; /* a declaration with a remark that is long enough to make up for it */\n";
    } else {
      text += "static int function_" + number + "(int a, char b) {\n  if (a) { b = 'x'; }\n" +
              "  return a + b;  // and a remark\n}\n";
    }
  }
  return text;
}

/// Keeps the lines that the engine writes out of the table.
class SilentErrors {
 public:
  SilentErrors() : before(std::cerr.rdbuf(nullptr)) {}
  ~SilentErrors() {
    std::cerr.rdbuf(before);
    std::cerr.clear();
  }
  SilentErrors(const SilentErrors&) = delete;
  SilentErrors& operator=(const SilentErrors&) = delete;

 private:
  std::streambuf* before;
};

/// The engine on a text of its own, in a folder of its own, with a compiler that does nothing.
class Engine {
 public:
  explicit Engine(const std::string& text)
      : folder(fs::temp_directory_path() / ("snip_bench_" + std::to_string(::getpid()))),
        vector(Arguments(text)),
        engine(1, vector.Get()[1], ErrorMatch(OutputFile(), "", false), kNoCompiler, OutputFile(),
               0, 0, 0, false, vector.Count(), vector.Get()) {
    engine.BuildList();
  }
  ~Engine() { fs::remove_all(folder); }
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  FileOrg* operator->() { return &engine; }
  std::string OutputFile() const { return (folder / "out").string(); }

 private:
  StringArray Arguments(const std::string& text) const {
    fs::create_directory(folder);
    std::ofstream(folder / "x.cpp", std::ios::binary) << text;
    StringArray arguments;
    arguments.Add("snip");
    arguments.Add((folder / "x.cpp").string());
    return arguments;
  }

  fs::path folder;
  SilentErrors silent;
  ArgumentVector vector;
  FileOrg engine;
};

void BuildList(benchmark::State& state) {
  const std::string text = SourceText(static_cast<int>(state.range(0)));
  Engine engine(text);
  for (auto _ : state) engine->BuildList();
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BuildList)
    ->RangeMultiplier(10)
    ->Range(1000, 100'000)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

void WriteCandidate(benchmark::State& state) {
  const std::string text = SourceText(static_cast<int>(state.range(0)));
  Engine engine(text);
  for (auto _ : state) engine->WriteCandidateFile();
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(WriteCandidate)
    ->RangeMultiplier(10)
    ->Range(1000, 100'000)
    ->Complexity()
    ->Unit(benchmark::kMillisecond);

/// The measure of one try: the same program started and awaited, its output in a file.
void BareSpawn(benchmark::State& state) {
  const std::string output = (fs::temp_directory_path() / "snip_bench_out").string();
  std::string program = kNoCompiler;
  char* argv[] = {program.data(), nullptr};
  for (auto _ : state) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                       0666);
    ::posix_spawn_file_actions_adddup2(&actions, 1, 2);
    pid_t child = -1;
    ::posix_spawn(&child, program.c_str(), &actions, nullptr, argv, environ);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::posix_spawn_file_actions_destroy(&actions);
  }
  fs::remove(output);
}
BENCHMARK(BareSpawn)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// One try of the search: mirror, candidate, compiler run, comparison.
void OneTry(benchmark::State& state) {
  Engine engine(SourceText(static_cast<int>(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(engine->CompileCandidate());
}
BENCHMARK(OneTry)->Arg(100)->Unit(benchmark::kMicrosecond)->UseRealTime();  // 10 KB

void Clean(benchmark::State& state) {
  const std::string text = SourceText(10'000);
  for (auto _ : state) {
    std::string cleaned;
    TextReader in = TextReader::OverMemory(text);
    TextWriter out = TextWriter::IntoMemory(cleaned);
    StreamCleaner(in, out).Run();
    out.Close();
    benchmark::DoNotOptimize(cleaned);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(Clean)->Unit(benchmark::kMillisecond);

/// An output of many lines of which the last one matches.
void ScanOutput(benchmark::State& state) {
  Engine engine("");
  std::string output;
  for (int i = 0; i < 10'000; ++i) output += "x.cpp(12) : warning: nothing that counts here\n";
  output += "x.cpp(13) : error: this does\n";
  std::ofstream(engine.OutputFile(), std::ios::binary) << output;
  ErrorMatch match = engine->GetErrorMatch();
  for (auto _ : state) benchmark::DoNotOptimize(match.Scan(true));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(output.size()));
}
BENCHMARK(ScanOutput)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace snipwell

BENCHMARK_MAIN();
