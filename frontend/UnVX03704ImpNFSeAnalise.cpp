// Which layouts a file may follow, from its first characters and its extension.
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "UnVX03704ImpNFSe.h"
#include "VXUtils.h"
#include "VXUtilsLista.h"

namespace impnfse {
namespace {

constexpr std::size_t kInicio = 200;

// A layout is a candidate when one of its needles stands at the beginning of the file, or the file is a .TXT and the
// layout has text files.
struct TSinais {
  static constexpr std::size_t kMaximo = 11;
  int Codigo;
  std::array<std::string_view, kMaximo> Agulhas;
  bool Txt = false;
};

// In the order in which the candidates are proposed.
constexpr std::array kSinais = {
    TSinais{1, {"ConsultarNfseResposta"}},
    TSinais{7, {"Notas"}},
    TSinais{8, {"movimento_economico"}},
    TSinais{17, {"ConsultarNfseRpsResposta"}},
    TSinais{21, {"NFe"}},
    TSinais{22, {"ConsultarNfseLote", "ConsultarLoteRpsResposta"}},
    TSinais{27, {"ConsultarNfseRpsResposta"}},
    TSinais{31, {"Nfse"}},
    TSinais{32, {"GerarNfseResposta"}},
    TSinais{33, {"ListaNfse", "ConsultarNfseResposta"}},
    TSinais{34, {"nfse"}, true},
    TSinais{36, {"lote"}},
    TSinais{39, {"envioLote", "NFS-e", "lote"}},
    TSinais{40, {"NOTAS_FISCAIS"}},
    TSinais{41, {}, true},
    TSinais{42, {}, true},
    TSinais{43, {"NFSE"}},
    TSinais{44,
            {"COMPNFSE", "CompNfse", "Nfse", "ListaNfse", "InfNfse", "ArrayOfTcCompNfse", "consultarNotaResponse",
             "ConsultarNfseServicoPrestadoResposta", "CompNfseList", "NFSE", "EnviarLoteRpsSincronoResposta"}},
    TSinais{45, {"ConsultarNfseFaixaResposta", "www.agili"}},
    TSinais{46, {"ConsultarNfseRpsResposta"}},
    TSinais{47, {"ConsultarNfseResposta"}},
    TSinais{48, {"declaracaoDeServicoDms"}},
    TSinais{49, {"listaNfs", "nfs"}},
    TSinais{50, {"ConsultarNfseServicoPrestadoResposta"}},
    TSinais{51, {"CompNfse", "ConsultarLoteRpsResposta", "ListaNfse"}},
    TSinais{53, {"NFPSe"}},
    TSinais{54, {"ConsultaRPSCompetencia"}},
    TSinais{55, {"ConsultarNfseFaixaResposta", "GerarNfseResposta"}},
    TSinais{57, {"ConsultarNfseFaixaResposta"}},
    TSinais{58, {"CompNfse", "EnviarLoteRpsSincronoResposta"}},
    TSinais{61, {"CompNfse"}},
    TSinais{62, {"notas"}},
};
// TMP_GENERICA has no column for the order of its rows: who reads the candidates orders them by their codes.
static_assert(std::is_sorted(kSinais.begin(), kSinais.end(),
                             [](const TSinais& a, const TSinais& b) { return a.Codigo <= b.Codigo; }));

}  // namespace

bool TImpNFSe::AnalisouLeiauteArquivo(const String& arquivo) {
  const auto inicio = InicioDoArquivo(arquivo, kInicio);
  const bool txt = BuscarExtencaoArquivo(arquivo) == ".TXT";

  TStringList candidatos;
  for (const auto& sinais : kSinais) {
    const bool temAgulha = std::any_of(sinais.Agulhas.begin(), sinais.Agulhas.end(), [&](std::string_view agulha) {
      return !agulha.empty() && EncontrouTexto(inicio, String(agulha));
    });
    if (temAgulha || (sinais.Txt && txt)) candidatos.Add(std::to_string(sinais.Codigo));
  }

  ExcluiuLeiauteTMPGenerica();
  for (const auto& codigo : candidatos) IncluiuLeiauteTMPGenerica(codigo);
  return true;
}

bool TImpNFSe::EncontrouTexto(const String& texto, const String& agulha) { return texto.find(agulha) != texto.npos; }

String TImpNFSe::BuscarExtencaoArquivo(const String& arquivo) {
  TArquivoInfo info;
  info.SetArquivo(arquivo);
  return Maiusculas(Aparar(info.GetExtensao()));
}

bool TImpNFSe::ExcluiuLeiauteTMPGenerica() {
  return GetDataModule().ExecutouSQL(
      fmt::format("DELETE FROM TMP_GENERICA\n WHERE TMP_GENERICA.TP12 = {}\n   AND TMP_GENERICA.ID12 = {}\n",
                  GetTMP_GENERICA_TP12(), GetTMP_GENERICA_ID12()));
}

bool TImpNFSe::IncluiuLeiauteTMPGenerica(const String& codigo) {
  auto& consulta = GetDataModule().DataSetConsulta;
  consulta.Close();
  consulta.SetCommandText(
      fmt::format("SELECT ES02_SERVICOLEIAUTE.* \n  FROM ES02_SERVICOLEIAUTE\n WHERE BIN_AND(ES02_SERVICOLEIAUTE.TP, "
                  "4) = 4\n   AND ES02_SERVICOLEIAUTE.CODIGO = {}\n",
                  codigo));
  GetDataModule().AbrirDataSetSomenteLeitura(&consulta);
  // A layout that the table doesn't have leaves the statement empty.
  String sql;
  if (!consulta.IsEmpty())
    sql = fmt::format("INSERT INTO TMP_GENERICA (ID1, ID2, TP1, INF1, TP12, ID12) VALUES ({},{},{},{},{},{});",
                      consulta.FieldByName("IDSERVICOLEIAUTE").GetAsString(),
                      consulta.FieldByName("CODIGO").GetAsString(), consulta.FieldByName("TP").GetAsString(),
                      CitarSQL(consulta.FieldByName("DESCRICAO").GetAsString()), GetTMP_GENERICA_TP12(),
                      GetTMP_GENERICA_ID12());
  consulta.Close();
  return GetDataModule().ExecutouSQL(sql);
}

bool AnalisePropoeLeiaute(std::string_view codigo) {
  return std::any_of(kSinais.begin(), kSinais.end(),
                     [&](const TSinais& sinais) { return std::to_string(sinais.Codigo) == codigo; });
}

}  // namespace impnfse
