#include "UnVX03704ImpNFSeCampoGrande.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {

void TNFSeCampoGrande::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeCampoGrande::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadNotasFiscais(GetArquivo());
    PercorrerNotas(raiz.Itens<"NOTA_FISCAL">(), [&](const IXMLCampoGrande<"NotaFiscal">& nota) {
      FNota = nota;
      CarregarDosDoisLados(GetNota().Texto("NUM_NOTA"), [&] { CarregarA100(); });
    });
  });
}

String TNFSeCampoGrande::GetCNPJCPFEmitente() { return GetNota().Texto("PRESTADOR_CPF_CNPJ"); }

String TNFSeCampoGrande::GetCNPJCPFDestinatario() { return GetNota().Texto("TOMADOR_CPF_CNPJ"); }

String TNFSeCampoGrande::GetChave() { return GetNota().Texto("CODIGO_VERIFICACAO"); }

TDateTime TNFSeCampoGrande::GetData() { return ConverteData(GetNota().Texto("DATA_HORA_EMISSAO"), fdDiaMesAno); }

bool TNFSeCampoGrande::DocumentoTemISSRetido() const { return GetNota().Valor("VALOR_ISS_RET") > 0; }

// A note that another one replaces isn't in force any more, but keeps its values; of every other situation but the
// normal one the head is all.
void TNFSeCampoGrande::CarregarA100() {
  const auto situacao = Maiusculas(GetNota().Texto("SITUACAO_NF"));
  const bool normal = situacao == "NORMAL";
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("NUM_NOTA"), 0), !normal);
  GetDadosA100()->SetSER(GetNota().Texto("SERIE_PRESTACAO"));
  if (normal || situacao == "SUBSTITUIDA") CarregarValoresA100();
  ConcluirA100();
}

void TNFSeCampoGrande::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("VALOR_NOTA"));
  a100.SetVL_PIS_RET(GetNota().Valor("VALOR_PIS"));
  a100.SetVL_COFINS_RET(GetNota().Valor("VALOR_COFINS"));
  a100.SetVL_ISS(GetNota().Valor("VALOR_ISS"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA170();
  CarregarA17R();
}

void TNFSeCampoGrande::Carregar0150() {
  const auto& nota = GetNota();
  CarregarEmitente([&] {
    const auto uf = nota.Texto("PRESTADOR_UF"), cidade = nota.Texto("PRESTADOR_CIDADE");
    return TDadosParte{.COD_MUN = BuscarCodigoMunicipio(nota.Texto("PRESTADOR_CIDADE_CODIGO"), uf, cidade),
                       .NOME = nota.Texto("PRESTADOR_RAZAO_SOCIAL"),
                       .ENDERECO = nota.Texto("PRESTADOR_LOGRADOURO"),
                       .NUM = nota.Texto("PRESTADOR_PREST_NUMERO"),
                       .BAIRRO = nota.Texto("PRESTADOR_BAIRRO"),
                       .UF = uf,
                       .MUNICIPIO = cidade};
  });
  CarregarDestinatario([&] {
    const auto uf = nota.Texto("TOMADOR_UF"), cidade = nota.Texto("TOMADOR_CIDADE");
    return TDadosParte{.COD_MUN = BuscarCodigoMunicipio(nota.Texto("TOMADOR_CIDADE_CODIGO"), uf, cidade),
                       .NOME = nota.Texto("TOMADOR_RAZAO_SOCIAL"),
                       .ENDERECO = nota.Texto("TOMADOR_LOGRADOURO"),
                       .NUM = nota.Texto("TOMADOR_NUMERO"),
                       .COMPL = nota.Texto("TOMADOR_COMPLEMENTO"),
                       .BAIRRO = nota.Texto("TOMADOR_BAIRRO"),
                       .UF = uf,
                       .MUNICIPIO = cidade};
  });
}

// The items and the retained taxes
// -----------------------------------------------------------------------------------

Int64 TNFSeCampoGrande::Carregar0200(const IXMLCampoGrande<"Item">& linha) {
  return CarregarItem({.DESCR_ITEM = linha.Texto("DESCRICAO"), .COD_LST = GetNota().Texto("COS_SERVICO")});
}

void TNFSeCampoGrande::CarregarA170() {
  const auto linhas = GetNota().Itens<"ITENS/ITEM">();
  int numero = 0;
  for (const auto& linha : linhas) {
    const auto total = linha.Valor("VALOR_TOTAL");
    const auto quantidade = linha.Valor("QUANTIDADE");
    auto item = NovoA170(Carregar0200(linha), ++numero);
    item->SetVL_ITEM(total);
    if (quantidade > 0) item->SetQTD(quantidade);
    item->SetATIVIDADE(FormatarCodigoAtividade(GetNota().Texto("COS_SERVICO")));
    item->SetVL_BC_ISS(total);
    item->SetVL_ISS(BuscarValorISS(linha, linhas.Count() == 1));
    item->SetALIQ_ISS(GetNota().Valor("ALIQUOTA"));
    item->SetMUNICIPIODEVISS(BuscarMunicipioDevidoISS());
    AdicionarA170(std::move(item));
  }
}

// The only service of a note takes the note's ISS when it has none of its own; among several the note's can't be
// shared out.
Currency TNFSeCampoGrande::BuscarValorISS(const IXMLCampoGrande<"Item">& linha, bool unica) const {
  const auto valor = linha.Valor("VALOR_ISS_UNITARIO");
  const bool daNota = unica && valor <= 0 && Maiusculas(linha.Texto("TRIBUTAVEL")) == "S";
  return daNota ? GetNota().Valor("VALOR_ISS") : valor;
}

// The place of the service, else the city of the note, which is taken to lie in the same state, else the issuer's.
String TNFSeCampoGrande::BuscarMunicipioDevidoISS() {
  const auto& nota = GetNota();
  const auto tem = [](const String& codigo) { return StrToIntDef(codigo, 0) > 0; };
  const auto codigo = [&](const String& cidade, const String& uf) {
    return std::to_string(BuscarCodigoMunicipio(cidade, uf, ""));
  };
  for (const auto& local : {nota.Texto("CIDADE_CODIGO_PRESTACAO"), nota.Texto("CODIGO_CIDADE")})
    if (tem(local)) return codigo(local, nota.Texto("UF_PRESTACAO"));
  const auto prestador = nota.Texto("PRESTADOR_CIDADE_CODIGO");
  return tem(prestador) ? codigo(prestador, nota.Texto("PRESTADOR_UF")) : MunicipioDaFilial();
}

// The deductions of the services are read here and nowhere else, so that one that can't be read costs the note its
// deductions and a message, not the file its import.
Currency TNFSeCampoGrande::BaseRetencoes() {
  const auto valorNota = GetNota().Valor("VALOR_NOTA");
  try {
    Currency deducao;
    for (const auto& linha : GetNota().Itens<"ITENS/ITEM">()) deducao += linha.Valor("DEDUCAO");
    return valorNota - deducao;
  } catch (const std::exception&) {
    InserirMensagemDivergencia();
    return valorNota;
  }
}

void TNFSeCampoGrande::CarregarA17R() {
  const auto& nota = GetNota();
  const auto base = BaseRetencoes();
  const auto inserir = [&](std::string_view codigo, const String& valor, const String& aliquota) {
    InserirRetencao(codigo, base, ConverterCurrency(valor), ConverterCurrency(aliquota));
  };
  inserir(receita::kISS, nota.Texto("VALOR_ISS_RET"), nota.Texto("ALIQ_RET"));
  inserir(receita::kIR, nota.Texto("VALOR_IR"), nota.Texto("ALIQUOTA_IR"));
  inserir(receita::kINSS, nota.Texto("VALOR_INSS"), nota.Texto("ALIQUOTA_INSS"));
  inserir(receita::kPIS, nota.Texto("VALOR_PIS"), nota.Texto("ALIQUOTA_PIS"));
  inserir(receita::kCOFINS, nota.Texto("VALOR_COFINS"), nota.Texto("ALIQUOTA_COFINS"));
  inserir(receita::kCSLL, nota.Texto("VALOR_CSLL"), nota.Texto("ALIQUOTA_CSLL"));
}

}  // namespace impnfse
