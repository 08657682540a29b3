#pragma once

#include <string>
#include <vector>

#include "compile/command_words.h"
#include "compile/compile_command.h"

namespace snipwell {

using Words = std::vector<std::string>;

inline std::string Joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

/// "compiler | arguments | action language source", or the complaint.
inline std::string TakenApart(const Words& words, const std::string& folder) {
  const CommandOrComplaint taken = TakeCommandApart(words, folder);
  const CompileCommand& command = taken.command;
  if (!taken.complaint.empty()) return taken.complaint;
  std::string text = Joined(command.environment) + (command.environment.empty() ? "" : " ");
  text += command.compiler + (command.frontEnd ? " -cc1 | " : " | ") + Joined(command.arguments);
  text += (command.arguments.empty() ? "| " : " | ") + command.action + " ";
  return text + (command.language.empty() ? "" : command.language + " ") + command.source;
}

/// "folder: word|word", or the complaint.
inline std::string Told(const CommandWords& command) {
  if (!command.complaint.empty()) return command.complaint;
  std::string told;
  for (const std::string& word : command.words) told += (told.empty() ? ": " : "|") + word;
  return command.folder + told;
}

}  // namespace snipwell
