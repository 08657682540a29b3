#!/bin/sh
# Wrong code: correct C whose output depends on the optimisation: clamp_level.sh SOURCE
#
# The program must stay correct: no warning tells of undefined behaviour, and without optimisation
# it prints the same under the sanitizers, which have no complaint.
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# build NAME OPTION... makes a program of that name, and its output in NAME.out
build() {
  name=$1
  shift
  gcc-12 "$@" -o "$folder/$name" -lsqlite3 -lz
  timeout 2 "$folder/$name" >"$folder/$name.out" 2>/dev/null
}

build optimised -O1 -Werror=uninitialized -Werror=return-type -Werror=implicit-int \
  -Werror=implicit-function-declaration -Werror=int-conversion -Werror=format \
  -Werror=incompatible-pointer-types -Werror=array-bounds -Werror=maybe-uninitialized \
  -Werror=strict-prototypes -Werror=builtin-declaration-mismatch "$1"
build plain -w -O0 "$1"
cmp -s "$folder/optimised.out" "$folder/plain.out" && exit 1
build checked -w -O0 -fsanitize=address,undefined -fno-sanitize-recover=all "$1"
cmp -s "$folder/checked.out" "$folder/plain.out"
