#!/bin/sh
# Writes tests/amostras anew: the registers that each folder of samples gives. What changed is for somebody to review.
set -eu
cd "$(dirname "$0")/.."

cmake --preset release >/dev/null
cmake --build --preset release --target impnfse_programa_testes
mkdir -p tests/amostras
IMPNFSE_REGRAVAR_AMOSTRAS=1 ctest --preset release -R TTesteAmostras >/dev/null
git status --short tests/amostras
