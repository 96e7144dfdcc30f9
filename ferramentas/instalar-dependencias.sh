#!/bin/sh
# Installs the Debian packages that building and running impnfse needs, as far as they are missing.
set -eu

pacotes="
g++ cmake ninja-build pkg-config
libsoci-dev libsoci-firebird4.0 libboost-dev firebird-dev libfbclient2 firebird3.0-server-core
libxml2-dev libssl-dev libfmt-dev libutf8proc-dev libcli11-dev nlohmann-json3-dev libgtest-dev
"

faltam=""
for pacote in $pacotes; do
  dpkg-query -W -f='${Status}' "$pacote" 2>/dev/null | grep -q 'install ok installed' || faltam="$faltam $pacote"
done
[ -n "$faltam" ] || exit 0

echo "Instalando:$faltam"
como_root=""
[ "$(id -u)" -eq 0 ] || como_root="sudo"
$como_root apt-get update -qq
# shellcheck disable=SC2086
$como_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $faltam >/dev/null
