#!/bin/sh
# Installs a build and uses what was installed: install_test.sh BUILD_FOLDER [CMAKE]
#
# Looks for every file that belongs there, asks the installed snip for its help, and isolates a
# failure of a compiler that is a script, with the installed criteria.
set -eu

[ $# -ge 1 ] || {
  echo "usage: install_test.sh BUILD_FOLDER [CMAKE]" >&2
  exit 2
}
build=$(cd -- "$1" && pwd)
cmake=${2:-cmake}
project=$(cd -- "$(dirname -- "$0")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
# A signal that ends the shell does not count as an exit everywhere.
trap 'exit 1' HUP INT TERM
prefix=$folder/prefix
work=$folder/work
failures=0

fail() {
  echo "FAILED: $*" >&2
  failures=$((failures + 1))
}

expect_file() {
  [ -s "$prefix/$1" ] || fail "$1 is missing or empty"
}

expect_program() {
  expect_file "$1"
  [ -x "$prefix/$1" ] || fail "$1 is no program"
}

# The last character of a file; nothing if that is a line end.
last_of() {
  tail -c 1 "$1"
}

check_files() {
  expect_program bin/snip
  expect_program share/snipwell/g++.sh
  expect_file share/man/man1/snip.1
  if [ -e "$build/snip-cc" ]; then
    expect_program bin/snip-cc
    [ ! -e "$project/man/snip-cc.1" ] || expect_file share/man/man1/snip-cc.1
  fi
  for name in README.md NEWS.md copyright; do
    expect_file "share/doc/snipwell/$name"
  done
  for page in "$project"/docs/*.md; do
    expect_file "share/doc/snipwell/docs/${page##*/}"
  done
  for name in gcc clang msvc-style; do
    expect_file "share/snipwell/criteria/$name.criteria"
  done
}

check_manual() {
  if ! man --help 2>&1 | grep -q -e --warnings; then
    echo "NOT RUN: the manual pages, for want of a man that knows --warnings"
    return
  fi
  for page in "$prefix"/share/man/man1/*.1; do
    LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" \
      >"$folder/page" 2>"$folder/warnings" || fail "man cannot show $page"
    [ -s "$folder/page" ] || fail "man shows nothing of $page"
    [ ! -s "$folder/warnings" ] || fail "$page: $(cat "$folder/warnings")"
  done
}

check_help() {
  status=0
  env PATH="$prefix/bin" snip '/?' >"$folder/help" 2>"$folder/help.err" || status=$?
  [ "$status" -eq 0 ] || fail "snip /? has the exit status $status"
  [ "$(last_of "$folder/help")" = 0 ] || fail "snip /? does not end with the result 0"
  grep -q '^snip help$' "$folder/help" || fail "snip /? shows no help"
}

check_isolation() {
  mkdir "$work"
  cd "$work"
  cat >compiler <<'END'
#!/bin/sh
# Does not like one word. The source is the last argument.
for source; do :; done
line=$(grep -n wrong "$source") || exit 0
echo "$source(${line%%:*}): fatal error: something is wrong"
exit 1
END
  chmod +x compiler
  printf 'int a;\nint b() { return 1; }\nint c() { return wrong; }\nint d;\n' >prog.cpp

  status=0
  env PATH="$prefix/bin:$PATH" snip /COMPILER=./compiler /LOGFILE=log \
    "/ERRORMATCH=$prefix/share/snipwell/criteria/msvc-style.criteria" prog.cpp \
    >out 2>err || status=$?
  [ "$status" -eq 0 ] || fail "snip has the exit status $status"
  [ "$(last_of out)" = 1 ] || fail "snip does not end with the result 1: $(cat out err)"
  grep -q 'Matching Criteria from file .*/msvc-style.criteria' err ||
    fail "the installed criteria were not read"
  grep -q 'File "prog.fut.cpp" completed at' log || fail "no line in the log"
  grep -q wrong prog.tsf.cpp || fail "the failure is not in the isolated code"
  if grep -q 'int [abd]' prog.tsf.cpp; then
    fail "not isolated: $(cat prog.tsf.cpp)"
  fi
}

"$cmake" --install "$build" --prefix "$prefix" >"$folder/install" 2>&1 || {
  cat "$folder/install" >&2
  exit 1
}
check_files
check_manual
check_help
check_isolation
[ "$failures" -eq 0 ] || exit 1
echo "everything is installed and works"
