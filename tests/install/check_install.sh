#!/usr/bin/env bash
# Installs the built framework into a scratch prefix and builds and runs a host program that
# finds it with find_package(NorvikOfficeUI).
set -euo pipefail
build_dir=$1; source_dir=$2; extra_flags=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
cmake -S "$source_dir/host" -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
    -DCMAKE_CXX_FLAGS="$extra_flags" -DCMAKE_EXE_LINKER_FLAGS="$extra_flags" >/dev/null
cmake --build "$work/host" >/dev/null
test -f "$work/prefix/include/NorvikOfficeUI/kcommand.h"
test -f "$work/prefix/include/NorvikOfficeUI/norvikofficeui.h"
QT_QPA_PLATFORM=offscreen LD_LIBRARY_PATH="$work/prefix/lib:${LD_LIBRARY_PATH:-}" "$work/host/installed_host"
