// Candidates: writing one from the isolated file, compiling it, accepting or rejecting it.
//
// A candidate is written by reading the isolated file through the same counting reader as the
// scanner did, so that each object's text runs from just after the End of the object before it
// through its own End. In a body, the text before its first object and after its last one is copied
// too; at the top level nothing stands outside the objects.

#include <ctime>
#include <iostream>
#include <string_view>

#include "compile/run_compiler.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/interrupt.h"
#include "reduce/file_org.h"
#include "source/position.h"
#include "text/file_helpers.h"
#include "text/text_reader.h"
#include "text/text_writer.h"

namespace snipwell {

namespace {

/// Copies text from the isolated file by positions; the bounds are inclusive.
class Copier {
 public:
  Copier(TextReader& source, TextWriter& target) : in(source), out(target) {}

  void SetPosition(const Position& position) { current = position; }

  void CopyThrough(const Position& bound) {
    for (std::string_view run = current.GetRun(in, bound); !run.empty();
         run = current.GetRun(in, bound)) {
      out.Put(run);
    }
  }

  void SkipThrough(const Position& bound) {
    while (!current.GetRun(in, bound).empty()) {
    }
  }

  void CopyRest() {
    for (std::string_view text = in.ReadSome(); !text.empty(); text = in.ReadSome()) out.Put(text);
  }

 private:
  TextReader& in;
  TextWriter& out;
  Position current;
};

}  // namespace

bool FileOrg::WriteCandidateFile() {
  TextReader in(isolatedFileName, LineEnds::Native);
  TextWriter out(candidateFileName);
  Copier copier(in, out);
  if (level > 0) copier.CopyThrough(parentObject->GetStartBody());
  if (objectList) copier.SetPosition(objectList->GetStart());
  for (const ObjOrg* object = objectList.get(); object != nullptr; object = object->GetNext()) {
    if (object->GetStatus() == ObjStatus::Remove) {
      copier.SkipThrough(object->GetEnd());
    } else {
      copier.CopyThrough(object->GetEnd());
    }
  }
  if (level > 0) copier.CopyRest();
  const bool written = out.Close() && !in.Failed();
  if (!written) ReportError("Cannot write candidate file", candidateFileName.c_str());
  return written;
}

bool FileOrg::CompileCandidate() {
  BuildErrorDetectList();
  const bool written = WriteCandidateFile();
  const std::time_t before = platform::CurrentTime();
  RunCompiler(compilerPath.c_str(), errorFileName.c_str(), argCount, argv);
  const std::time_t after = platform::CurrentTime();
  compileSeconds += std::difftime(after, before);
  if (verbose) {
    std::cerr << "Total compile time so far: " << compileSeconds << " seconds" << std::endl;
  }
  CheckClock();
  const bool sameError = errorMatch.Scan(false);
  // What the disk did not take as a whole must not replace a whole program.
  return sameError && written;
}

void FileOrg::Update() {
  if (verbose) std::cerr << "*SAME Error: UPDATING *" << std::endl;
  bool replaced = false;
  {
    const platform::InterruptIgnored ignored;
    replaced = platform::RenameOver(candidateFileName, isolatedFileName);
  }
  // The compiler itself can have taken the candidate away.
  if (!replaced) ReportError("Cannot replace isolated file", isolatedFileName.c_str());
  BuildList();
}

void FileOrg::Restore() {
  if (verbose) std::cerr << "*NOT the Same Error: RESTORING *" << std::endl;
  ResetStatus();
}

}  // namespace snipwell
