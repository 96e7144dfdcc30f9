#include "UnVX03704ImpNFSeRLZInformatica.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {

void TNFSeRLZInformatica::Carregar() {
  TNFSeBase::Carregar();
  CarregouNFSe();
}

// The summary has no numbers, and a note that is nobody's doesn't enter the list of errors.
void TNFSeRLZInformatica::CarregouNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    PercorrerNotas(LoadnotasRLZInformatica(GetArquivo()).Itens<"nota">(), [&](const IXMLNotaRLZInformatica& nota) {
      FNota = nota;
      CarregarDosDoisLados(
          "", [&] { CarregouA100(); }, std::nullopt);
    });
  });
}

TDateTime TNFSeRLZInformatica::GetData() { return ConverteData(GetNota().Texto("data"), fdAnoMesDia); }

bool TNFSeRLZInformatica::DocumentoEstaCancelado() const {
  return Maiusculas(GetNota().Texto("situacao")) != "EMITIDA";
}

// The city of the note itself, that of neither party, gets the ISS.
String TNFSeRLZInformatica::BuscarCodigoMunicipioDevidoISS() {
  return MunicipioDevidoISS(
      {std::to_string(BuscarCodigoMunicipio("", GetNota().Texto("uf"), GetNota().Texto("cidade")))});
}

// A note whose ISS is retained at the source may have it there alone.
Currency TNFSeRLZInformatica::BuscarValorISS() const {
  const auto valor = GetNota().Valor("valoriss");
  return valor > 0 ? valor : GetNota().Valor("valorissretidonafonte");
}

Currency TNFSeRLZInformatica::BuscarValorImposto(Currency aliquota) const {
  return aliquota > 0 ? AplicarAliquota(GetNota().Valor("basecalculo"), aliquota) : 0;
}

void TNFSeRLZInformatica::CarregouA100() {
  IniciarA100();
  Carregou0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("numero"), 0), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregouValoresA100();
  ConcluirA100();
}

void TNFSeRLZInformatica::CarregouValoresA100() {
  CarregarExecucaoA100(GetData());
  GetDadosA100()->SetVL_DOC(GetNota().Valor("valorbruto"));
  GetDadosA100()->SetVL_ISS(BuscarValorISS());
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregouA17R();
  CarregouA170();
}

// An issuer without a state has none, also where its city is known.
void TNFSeRLZInformatica::Carregou0150() {
  CarregarEmitente([&] {
    auto parte = LerParte(GetNota().Filho<"prestador">());
    parte.SemUFDoMunicipio = true;
    parte.OPTANTESIMPLES = Maiusculas(Aparar(GetNota().Texto("optantesimples"))) == "SIM" ? "S" : "N";
    return parte;
  });
  CarregarDestinatario([&] { return LerParte(GetNota().Filho<"tomador">()); });
}

// The city is known by its name only. The address has a complement, which this layout doesn't use.
TDadosParte TNFSeRLZInformatica::LerParte(const IXMLParteRLZInformatica& parte) {
  const auto municipio = BuscarMunicipio(parte.Texto("uf"), parte.Texto("cidade"));
  return {.COD_MUN = InteiroDosDigitos(municipio.CODIGOFEDERAL),
          .NOME = parte.Texto("nome"),
          .ENDERECO = parte.Texto("endereco"),
          .NUM = parte.Texto("numero"),
          .BAIRRO = parte.Texto("bairro"),
          .UF = parte.Texto("uf"),
          .BuscaSemMunicipio = true,
          .MUNICIPIO = parte.Texto("cidade")};
}

Int64 TNFSeRLZInformatica::Carregou0200(const IXMLServicoRLZInformatica& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("atividade"), .COD_LST = servico.Texto("codigoservico")});
}

// A single service has the note's base and ISS; of several each has its own, and the last one takes what the note's
// ISS has more, or less, than all of them.
void TNFSeRLZInformatica::CarregouA170() {
  const auto servicos = GetNota().Itens<"servicos/servico">();
  const bool unico = servicos.Count() == 1;
  Currency soma;
  for (std::size_t i = 0; i < servicos.Count(); ++i) {
    const auto servico = servicos[i];
    auto item = NovoA170(Carregou0200(servico), static_cast<int>(i) + 1);
    item->SetChaveCondicaoAdicional(std::to_string(i));
    item->SetQTD(servico.Valor("quantidade"));
    item->SetVL_ITEM(servico.Valor("valor") * item->GetQTD());
    item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("codigoservico")));
    item->SetDEDUCAOISS(servico.Valor("deducao"));
    item->SetALIQ_ISS(servico.Valor("aliquota"));
    item->SetMUNICIPIODEVISS(BuscarCodigoMunicipioDevidoISS());
    item->SetVL_BC_ISS(unico ? GetNota().Valor("basecalculo") : item->GetVL_ITEM());
    item->SetVL_ISS(unico ? BuscarValorISS() : AplicarAliquota(item->GetVL_BC_ISS(), item->GetALIQ_ISS()));
    soma += item->GetVL_ISS();
    if (i + 1 == servicos.Count() && BuscarValorISS() > 0)
      item->SetVL_ISS(item->GetVL_ISS() + (BuscarValorISS() - soma));
    AdicionarA170(std::move(item));
  }
}

// The rate of the retained ISS is that of the first service, 0 without one.
void TNFSeRLZInformatica::CarregouA17R() {
  const auto base = GetNota().Valor("basecalculo");
  const auto servicos = GetNota().Itens<"servicos/servico">();
  const auto pis = GetNota().Valor("aliquotapis");
  const auto cofins = GetNota().Valor("aliquotacofins");
  const auto csll = GetNota().Valor("aliquotacsll");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, GetNota().Valor("valorissretidonafonte"),
                    servicos.Count() > 0 ? servicos[0].Valor("aliquota") : 0);
  for (const auto& servico : servicos) InserirRetencao(receita::kINSS, base, servico.Valor("inss"));
  InserirRetencao(receita::kIR, base, GetNota().Valor("valorirrf"), GetNota().Valor("aliquotairrf"));
  InserirRetencao(receita::kPIS, base, BuscarValorImposto(pis), pis);
  InserirRetencao(receita::kCOFINS, base, BuscarValorImposto(cofins), cofins);
  InserirRetencao(receita::kCSLL, base, BuscarValorImposto(csll), csll);
}

}  // namespace impnfse
