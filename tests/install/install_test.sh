#!/bin/sh
# Installs a build and uses what was installed: install_test.sh BUILD_FOLDER [CMAKE]
#
# Looks for every file that belongs there, lets man read the manual pages, isolates a failure of a
# compiler that is a script, with the installed criteria, and reduces what a test tells of.
set -eu

build=$(cd -- "$1" && pwd)
project=$(cd -- "$(dirname -- "$0")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
# A signal that ends the shell does not count as an exit everywhere.
trap 'exit 1' HUP INT TERM
prefix=$folder/prefix

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

"${2:-cmake}" --install "$build" --prefix "$prefix" >"$folder/install" 2>&1 || fail "no installation"
for program in bin/snip bin/snip-cc bin/snipwell share/snipwell/g++.sh; do
  [ -x "$prefix/$program" ] || fail "$program is no program"
done
cd "$project"
for file in README.md NEWS.md docs/*.md; do
  cmp -s "$file" "$prefix/share/doc/snipwell/$file" || fail "no $file"
done
for file in share/doc/snipwell/copyright share/man/man1/snip.1 share/man/man1/snipwell.1 \
  share/snipwell/criteria/msvc-style.criteria share/bash-completion/completions/snipwell \
  share/zsh/site-functions/_snipwell share/fish/vendor_completions.d/snipwell.fish; do
  [ -s "$prefix/$file" ] || fail "no $file"
done
man --help 2>&1 | grep -q -e --warnings || echo "NOT RUN: the manual pages, for want of a man"
for page in "$prefix"/share/man/man1/*.1; do
  man --help 2>&1 | grep -q -e --warnings || break
  LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" >"$folder/page" 2>"$folder/warnings"
  { [ -s "$folder/page" ] && [ ! -s "$folder/warnings" ]; } || fail "$page: $(cat "$folder/warnings")"
done

cd "$folder"
cat >compiler <<'END'
#!/bin/sh
for source; do [ -f "$source" ] && break; done
line=$(grep -n wrong "$source") || exit 0
echo "$source(${line%%:*}): fatal error: something is wrong"
exit 1
END
chmod +x compiler
printf 'int a;\nint b() { return 1; }\nint c() { return wrong; }\nint d;\n' >prog.cpp
env PATH="$prefix/bin:$PATH" snip /COMPILER=./compiler /LOGFILE=log \
  "/ERRORMATCH=$prefix/share/snipwell/criteria/msvc-style.criteria" prog.cpp >out 2>err || fail "snip"
grep -q 'Matching Criteria from file .*/msvc-style.criteria' err || fail "the criteria were not read"
[ "$(cat prog.tsf.cpp)" = "$(printf '\nint c() { return wrong; }')" ] || fail "$(cat prog.tsf.cpp)"
env PATH="$prefix/bin:$PATH" snipwell -q --test='grep -q wrong prog.cpp' prog.cpp >out 2>&1 ||
  fail "snipwell: $(cat out)"
[ "$(cat prog.min.cpp)" = wrong ] || fail "$(cat prog.min.cpp)"
echo "everything is installed and works"
