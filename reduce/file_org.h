#pragma once

#include <ctime>
#include <memory>
#include <string>

#include "failure/error_match.h"
#include "reduce/err_detect.h"
#include "reduce/object_list.h"
#include "source/int_array.h"
#include "source/obj_org.h"

namespace snipwell {

/// The reduction engine: shrinks one program, held in two files beside the source, as long as the
/// compiler fails with the same error.
///
/// - The isolated file is the smallest program found so far that still fails. Once the engine is
///   built, it changes only by a candidate's being renamed over it. Where the system cannot do that
///   in one step, there is an instant in which only the candidate file exists.
/// - The candidate file is what the compiler is run on. The source is only read, once.
///
/// The work is done on one level at a time: level 0 is the list of the file's objects, a deeper one
/// the list of the objects in the body of `parentObject`. The list always describes the isolated
/// file. Everything the engine writes goes to standard error, but for "Could not run the compiler".
class FileOrg {
 public:
  // Files and accessors: file_org.cpp.

  /// Copies the source `sourceName` onto both working files, makes the last entry of `engineArgv`
  /// name the candidate file, compiles it and takes the reference error from that. `runStart` is
  /// the start of the whole run, `initialSeconds` what has been spent in the compiler so far,
  /// `limitMinutes` the time limit (0 none). `engineArgv` has `engineArgCount` entries before its
  /// null entry and stays the caller's, who keeps it valid as long as the engine; the replaced
  /// entry is not released here. Ends the process with exit status 1 when the compiler cannot be
  /// started.
  FileOrg(int sourceIsCpp, const std::string& sourceName, const ErrorMatch& driverMatch,
          const std::string& compiler, const std::string& outputFileName, std::time_t runStart,
          double initialSeconds, double limitMinutes, bool traceLines, int engineArgCount,
          char** engineArgv);
  FileOrg(const FileOrg&) = delete;
  FileOrg& operator=(const FileOrg&) = delete;
  /// Writes the time spent in the compiler. The files stay.
  ~FileOrg();

  std::string GetIsolatedFileName() const { return isolatedFileName; }
  std::string GetCandidateFileName() const { return candidateFileName; }
  ErrorMatch GetErrorMatch() const { return errorMatch; }
  int GetArgCount() const { return argCount; }
  char** GetArgv() const { return argv; }
  /// A vector set here must have the candidate file's name as its last entry and stay valid as long
  /// as the engine.
  void SetArgv(char** newArgv) { argv = newArgv; }
  void SetArgCount(int newCount) { argCount = newCount; }

  // Candidates: file_org_candidate.cpp.

  /// Writes the current program, without the objects whose status is Remove.
  /// False, reported, when it could not be written as a whole.
  bool WriteCandidateFile();
  /// Writes and compiles the candidate. True when the compiler still fails with the same error.
  /// Throws the elapsed seconds, a double, when the time limit is exceeded; the candidate is then
  /// neither accepted nor rejected.
  bool CompileCandidate();
  /// Accepts the candidate: it becomes the isolated file, and the level's list is built again.
  void Update();
  /// Rejects the candidate: every object of the list is kept again.
  void Restore();

  // State of the level: file_org_state.cpp.

  /// Scans the isolated file into the list of the current level, gives the objects the Error flags
  /// that the mirror holds for their places, and fills `ErrAll` and `NonErrAll`.
  void BuildList();

  // Search: file_org_search.cpp.

  /// Reduces the current level and the bodies of its needed objects.
  void Reduce();

 private:
  bool MakeWorkingFiles(const std::string& sourceName);
  void TraceArguments() const;
  void TakeReference(bool candidateIsWhole);

  void ScanFile();
  void ScanParentBody();
  void RefreshParent();
  void ReleaseObjectList();
  void TakeObjectList(ObjectList newList, int created);
  void BuildErrorDetectList();
  void ApplyErrorDetectList(ObjOrg* list, const ErrDetect* nodes) const;
  void FillErrorArrays(const ObjOrg* list);
  void ResetStatus();
  void MarkRemove(const IntArray& ids);
  void MarkError(int id);
  ObjOrg* FindObject(int id) const;

  bool TryWithout(const IntArray& ids);
  void Split();
  void Settle(const IntArray& half);
  void OneByOne();
  void RestoreWithErrorIndicator(int id);
  void Descend(const ObjOrg& object);

  void CheckClock() const;

  std::string isolatedFileName;
  std::string candidateFileName;
  std::string compilerPath;
  std::string errorFileName;
  char** argv;
  int argCount;
  ObjectList objectList;  // the objects of the level
  // Copy of the object whose body is reduced; none at level 0.
  std::unique_ptr<ObjOrg> parentObject;
  ErrorMatch errorMatch;
  int level = 0;
  ErrDetectList errorDetectList;  // mirror of the Error flags
  IntArray Working;               // IDs of the objects still to be tried, ascending
  IntArray ErrAll;                // IDs of the objects with the Error flag, ascending
  IntArray NonErrAll;             // IDs of the others, ascending
  std::time_t startTime;
  double timeoutMinutes;
  double compileSeconds;
  int isCpp;
  bool verbose;
  std::string lastArgument;  // the entry of `argv` that the engine put in
};

}  // namespace snipwell
