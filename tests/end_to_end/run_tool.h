#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/end_to_end/workspace.h"

namespace snipwell::testing {

/// True where text files end a line with a carriage return and a line feed.
extern const bool kTextHasCarriageReturns;

/// A program of the project as `Start` names it, whatever PATH is.
std::string ToolName(const std::string& tool);

/// Makes a program known by another name in a folder.
void AddProgram(const std::filesystem::path& folder, const std::string& name,
                const std::filesystem::path& program);

/// The processes of fake compilers that run in a project's folder; the numbers of one system, the
/// paths of another.
std::string ProcessesOf(const std::filesystem::path& folder);

/// Where the fake compiler and the other programs of the tests stand.
std::filesystem::path TestProgramFolder();

/// Runs the tool, or another program of the tests, in `folder`, with nothing on its standard input
/// and its output in the files "test_out" and "test_err" there. Returns its exit status, or -1 when
/// it did not come to one.
int RunTool(const std::filesystem::path& folder, const std::vector<std::string>& arguments,
            const Start& start);

}  // namespace snipwell::testing
