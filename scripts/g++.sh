#!/usr/bin/env bash
# Runs g++ as a compiler for snip: snip /COMPILER=scripts/g++.sh ...
#
# A compiler that snip starts is given snip's program name as its own. clang++
# does not mind; g++ looks for its parts (cc1plus) relative to that name and does
# not find them. Here it runs under its own name, and
# - in English, since the built-in criteria look for "error";
# - with file(line,column): instead of file:line:column:, since snip overlooks
#   what stands in parentheses. Otherwise no line before the error could be cut,
#   as that would change the number.
set -o pipefail
LC_ALL=C g++ "$@" 2>&1 | sed -E 's/^([^: ]+):([0-9]+):([0-9]+): /\1(\2,\3): /'
