#!/bin/sh
# Lists the names in a DLL's export table with objdump and compares them with the expected ones, so a
# mangled, decorated, missing or stray export fails the build's test run.
# Usage: check-exports.sh <dll> <expected name>...
dll=$1
shift
actual=$(x86_64-w64-mingw32-objdump -p "$dll" | sed -n '/Ordinal\/Name Pointer/,/^$/p' | grep '^[[:space:]]*\[ *[0-9]' |
  awk '{print $NF}' | sort | tr '\n' ' ')
expected=$(printf '%s\n' "$@" | sort | tr '\n' ' ')
echo "exported: $actual"
[ "$actual" = "$expected" ] || { echo "expected: $expected"; exit 1; }
