#!/bin/sh
# Installs the built module into a passing folder, and builds and runs the consumer against it: once by the CMake
# package, once by pkg-config. Usage: testar.sh SOURCE-DIR BUILD-DIR CXX CXX-FLAGS
set -eu
fonte=$1 build=$2 cxx=$3 opcoes=$4
aqui="$fonte/tests/instalacao"
pasta=$(mktemp -d)
trap 'rm -rf "$pasta"' EXIT

cmake --install "$build" --prefix "$pasta/raiz" >/dev/null

# The sample has five documents of this company.
conferir() {
  documentos=0
  "$1" "$pasta/$2.fdb" "$fonte/samples/43-ginfes/ginfes-outubro-2026.xml" || documentos=$?
  [ "$documentos" -eq 5 ] || { echo "$2: $documentos documentos, eram 5"; exit 1; }
}

cmake -G Ninja -S "$aqui" -B "$pasta/consumidor" -DCMAKE_PREFIX_PATH="$pasta/raiz" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_CXX_FLAGS="$opcoes" >/dev/null
cmake --build "$pasta/consumidor" >/dev/null
conferir "$pasta/consumidor/consumidor" cmake

PKG_CONFIG_PATH=$(dirname "$(find "$pasta/raiz" -name impnfse.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++20 $opcoes "$aqui/main.cpp" -o "$pasta/por-pkg-config" $(pkg-config --cflags --libs impnfse)
conferir "$pasta/por-pkg-config" pkg-config

"$pasta/raiz/bin/impnfse" --help | grep -q importar
