#!/usr/bin/env bash
# Configures and builds into build/ (Release). CI builds treat warnings as errors.
set -euo pipefail
cd "$(dirname "$0")/.."

werror=OFF
if [ -n "${CI:-}" ]; then werror=ON; fi

cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DVERDALY_WERROR="$werror" >/dev/null
cmake --build build -j"$(nproc)"
