#!/bin/sh
# Sets everything up and runs the tests.
set -eu
cd "$(dirname "$0")"

ferramentas/instalar-dependencias.sh
cmake --preset release
cmake --build --preset release
ctest --preset release
