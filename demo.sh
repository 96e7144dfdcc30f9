#!/bin/sh
# Sets everything up and runs the main job: a new database, a company, the samples imported, the registers shown.
set -eu
cd "$(dirname "$0")"

ferramentas/instalar-dependencias.sh
echo "Compilando..."
cmake --preset release >/dev/null
cmake --build --preset release --target impnfse_programa >/dev/null

impnfse="$PWD/build/release/app/impnfse"
rm -rf demo
mkdir -p demo/entrada
cd demo

mostrar() {
  printf '\n$ impnfse'
  for argumento in "$@"; do
    case $argumento in
      *" "*) printf ' "%s"' "$argumento" ;;
      *) printf ' %s' "$argumento" ;;
    esac
  done
  printf '\n'
  "$impnfse" "$@"
}

mostrar criar escritorio.fdb
mostrar filial escritorio.fdb --cnpj 11.222.333/0001-81 --uf SC --municipio 4205407 --nome "Aurora Consultoria Ltda" \
  --arquivo-morto arquivo
mostrar filial escritorio.fdb --cnpj 11.222.333/0002-62 --uf PR --municipio 4106902 --nome "Aurora, filial Curitiba" \
  --arquivo-morto arquivo

# A folder of samples is named after its layout: CODE-name.
for pasta in ../samples/*/; do
  leiaute=$(basename "$pasta")
  cp -r "$pasta" entrada/
  mostrar importar escritorio.fdb "entrada/$leiaute" --leiaute "${leiaute%%-*}"
done

mostrar registros escritorio.fdb
printf '\nO banco e o arquivo morto ficaram em %s.\n' "$PWD"
