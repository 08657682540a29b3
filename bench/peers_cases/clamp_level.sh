#!/bin/sh
# Wrong code: correct C whose output depends on the optimisation: clamp_level.sh SOURCE
#
# The program must be correct: two compilers have no warning of the kinds that tell of undefined
# behaviour, and it runs without complaint under the sanitizers.
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
wrong='-Wall -Wextra -Wno-unused -Wno-sign-compare -Werror=uninitialized -Werror=return-type
  -Werror=implicit-int -Werror=implicit-function-declaration -Werror=int-conversion
  -Werror=incompatible-pointer-types -Werror=format -Werror=array-bounds'
# shellcheck disable=SC2086 # the options are meant to be split
{
  gcc-12 -O1 $wrong "$1" -o "$folder/one" -lsqlite3 -lz
  gcc-12 -O0 -w "$1" -o "$folder/zero" -lsqlite3 -lz
}
timeout 2 "$folder/one" >"$folder/one.out"
timeout 2 "$folder/zero" >"$folder/zero.out"
cmp -s "$folder/one.out" "$folder/zero.out" && exit 1
gcc-12 -w -fsanitize=address,undefined -fno-sanitize-recover=all "$1" -o "$folder/checked" \
  -lsqlite3 -lz
timeout 5 "$folder/checked" >"$folder/checked.out"
cmp -s "$folder/checked.out" "$folder/zero.out"
