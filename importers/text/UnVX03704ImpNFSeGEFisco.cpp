#include "UnVX03704ImpNFSeGEFisco.h"

#include <fmt/format.h>

#include <span>

#include "LinhaDeCampos.h"
#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

constexpr char kSeparador = ';';

// COD_SIT.
constexpr int kRegular = 0;
constexpr int kCancelado = 2;

// Longer numbers are those of companies.
constexpr std::size_t kTamanhoCPF = 11;

// The next field, as the type of its value has it. Money has two implied decimals, also where a decimal mark is
// written.
void BuscarValorProximoCampo(TLinhaDeCampos& linha, String& valor) { valor = Aparar(linha.CortarAte(kSeparador)); }

String BuscarTextoComVirgulas(TLinhaDeCampos& linha) {
  String texto;
  BuscarValorProximoCampo(linha, texto);
  return Substituir(texto, ".", ",");
}

void BuscarValorProximoCampo(TLinhaDeCampos& linha, int& valor) {
  valor = ConverterCampoInteiro(BuscarTextoComVirgulas(linha));
}

void BuscarValorProximoCampo(TLinhaDeCampos& linha, TDateTime& valor) {
  valor = ConverterCampoData(BuscarTextoComVirgulas(linha));
}

void BuscarValorProximoCampo(TLinhaDeCampos& linha, Currency& valor) {
  valor = ComDecimaisImplicitas(ConverterCurrency(BuscarTextoComVirgulas(linha)));
}

// Takes the next field off a line and puts it in its place.
using TCampoDaLinha = void (*)(TNotaGEFisco&, TLinhaDeCampos&);

// A field whose place in the note is told by its members, from the outer one in. Its type is the place's.
template <auto... Membros>
void Em(TNotaGEFisco& nota, TLinhaDeCampos& linha) {
  BuscarValorProximoCampo(linha, (nota.*....*Membros));
}

template <auto Membro>
void EmPessoa(TNotaGEFisco& nota, TLinhaDeCampos& linha) {
  BuscarValorProximoCampo(linha, (*nota.Pessoa).*Membro);
}

void EmCNPJCPF(TNotaGEFisco& nota, TLinhaDeCampos& linha) {
  auto& pessoa = *nota.Pessoa;
  BuscarValorProximoCampo(linha, pessoa.CNPJCPF);
  pessoa.TipoPessoa = Comprimento(pessoa.CNPJCPF) > kTamanhoCPF ? "J" : "F";
}

// A text that no register has.
constexpr TCampoDaLinha kPassar = nullptr;

constexpr TCampoDaLinha kCamposA100[] = {
    kPassar,
    Em<&TNotaGEFisco::Numero>,
    Em<&TNotaGEFisco::Serie>,
    Em<&TNotaGEFisco::Data>,
    Em<&TNotaGEFisco::Situacao>,
    kPassar,
    Em<&TNotaGEFisco::Retencao>,
    Em<&TNotaGEFisco::ValorDocumento>,
    Em<&TNotaGEFisco::ValorISS>,
    Em<&TNotaGEFisco::BaseCalculo>,
    kPassar,
    EmCNPJCPF,
    EmPessoa<&TPessoa::Nome>,
    EmPessoa<&TPessoa::Municipio>,
    EmPessoa<&TPessoa::CEP>,
    kPassar,
    kPassar,
    kPassar,
    Em<&TNotaGEFisco::Aliquota>,
    Em<&TNotaGEFisco::ValorIR>,
    Em<&TNotaGEFisco::ValorPIS>,
    Em<&TNotaGEFisco::ValorCOFINS>,
    Em<&TNotaGEFisco::ValorINSS>,
    Em<&TNotaGEFisco::ValorCSLL>,
    kPassar,
    kPassar,
    kPassar,
    kPassar,
    kPassar,
    kPassar,
    EmPessoa<&TPessoa::UF>,
    kPassar,  // "E": the person is a foreigner
};

constexpr TCampoDaLinha kCamposA170[] = {
    kPassar,
    Em<&TNotaGEFisco::Numero>,
    Em<&TNotaGEFisco::Serie>,
    Em<&TNotaGEFisco::Data>,
    Em<&TNotaGEFisco::Produto, &TProduto::NumeroItem>,
    Em<&TNotaGEFisco::Produto, &TProduto::CodigoAtividade>,
    Em<&TNotaGEFisco::Produto, &TProduto::Unidade>,
    Em<&TNotaGEFisco::Produto, &TProduto::BaseCalculo>,
    Em<&TNotaGEFisco::Produto, &TProduto::Descricao>,
    Em<&TNotaGEFisco::Produto, &TProduto::Aliquota>,
    Em<&TNotaGEFisco::Produto, &TProduto::ValorISS>,
    Em<&TNotaGEFisco::Produto, &TProduto::ValorItem>,
};

TNotaGEFisco LerNota(const String& linha, std::span<const TCampoDaLinha> campos) {
  TNotaGEFisco nota;
  TLinhaDeCampos resto(linha);
  for (const auto campo : campos) {
    if (campo != kPassar)
      campo(nota, resto);
    else
      resto.CortarAte(kSeparador);
  }
  return nota;
}

}  // namespace

void TNFSeGEFisco::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// Nothing is stored before all lines are read. Then each document goes as soon as it is complete: a large file's don't
// all have to wait in memory. Where two differ by their dates alone, all wait, so that none is taken for one that the
// database had before.
void TNFSeGEFisco::CarregarNFSe() {
  CarregarNotas();
  for (; !Notas.empty(); Notas.pop_front()) {
    // A note that can't be placed, without a date above all, is passed over in silence.
    if (CarregouRegistro0000Emitente(kTipoRegistro0000).Carregou) {
      CarregarA100();
      IncluirFilialDocumento(tpeEmitente, "");
    }
    LimparDadosEmitenteDestinatario();
    --LinhasPorVir[BuscarChave()];
    if (!NumeroEmDuasDatas) Importar(false);
  }
  Importar(true);
}

// The file's name, without its path, tells what its lines are.
void TNFSeGEFisco::CarregarNotas() {
  const auto nome = GetArquivo().substr(GetArquivo().find_last_of("/\\") + 1);
  std::span<const TCampoDaLinha> campos;
  if (nome.starts_with('C')) campos = kCamposA100;
  if (nome.starts_with('D')) campos = kCamposA170;
  if (campos.empty()) return;
  std::unordered_map<String, TDateTime> datas;
  PercorrerLinhas([&](const String& linha) {
    Notas.push_back(LerNota(linha, campos));
    const auto& nota = Notas.back();
    ++LinhasPorVir[BuscarChave(nota.Numero, nota.Serie, nota.Data)];
    const auto data = datas.try_emplace(fmt::format("{}_{}", nota.Numero, nota.Serie), nota.Data).first->second;
    NumeroEmDuasDatas = NumeroEmDuasDatas || data != nota.Data;
  });
}

String TNFSeGEFisco::BuscarChave(int numero, const String& serie, TDateTime data) {
  return fmt::format("{}_{}_{}", numero, serie, data > 0 ? Substituir(DataComPontos(data), ".", "") : "");
}

// The documents are the current branch's own: the lines don't say who issued them.
String TNFSeGEFisco::GetCNPJCPFEmitente() { return GetDadosEmpresaImportacao()->GetDadosFilial().CNPJ; }

String TNFSeGEFisco::GetIEEmitente() { return GetDadosEmpresaImportacao()->GetDadosFilial().IE; }

String TNFSeGEFisco::GetCNPJCPFDestinatario() { return (*GetNota().Pessoa).CNPJCPF; }

TDateTime TNFSeGEFisco::GetData() { return GetNota().Data; }

bool TNFSeGEFisco::DocumentoTemISSRetido() const { return GetNota().Retencao == "R"; }

// What a line doesn't tell stays as it is: the two files each know a part of the document, and neither erases what the
// other one brought.
void TNFSeGEFisco::CarregarA100() {
  auto& documento = DocumentoDaNota();
  if (!GetCNPJCPFDestinatario().empty()) {
    Carregar0150();
    documento.SetCOD_PART(std::to_string(IDParticipante));
  }
  documento.SetIND_OPER(GetOrigem());
  documento.SetIND_EMIT(GetEmissao());
  if (GetNota().Situacao == "N") documento.SetCOD_SIT(kRegular);
  if (GetNota().Situacao == "C") documento.SetCOD_SIT(kCancelado);
  documento.SetIND_PGTO("0");
  documento.SetDT_EXE_SERV(GetData());
  if (GetNota().ValorDocumento > 0) documento.SetVL_DOC(GetNota().ValorDocumento);
  if (GetNota().ValorISS > 0) documento.SetVL_ISS(GetNota().ValorISS);
  if (GetNota().ValorPIS > 0) documento.SetVL_PIS_RET(GetNota().ValorPIS);
  if (GetNota().ValorCOFINS > 0) documento.SetVL_COFINS_RET(GetNota().ValorCOFINS);
  // The mark of retained ISS belongs to the A100 that Importar overwrites: no document of this layout carries it, and
  // the retained tax 1010 is what tells of it.
  CarregarA17R(documento);
  CarregarA170(documento);
}

// The document of the line at hand: the file's, or the one that is stored, or a new one. A line that was placed has a
// date.
TDadosRegistroA100& TNFSeGEFisco::DocumentoDaNota() {
  const auto chave = BuscarChave();
  if (auto* const daLista = ListaDadosA100.TryGetValue(chave)) return *daLista;
  auto& documento = ListaDadosA100.Add(chave, std::make_unique<TDadosRegistroA100>());
  documento.SetIDREG0000(GetIDREG0000());
  documento.SetNUM_DOC(GetNota().Numero);
  documento.SetSER(GetNota().Serie);
  documento.SetDT_DOC(GetData());
  documento.SetTPIMPORTACAO(teaDocumentoEletronico);
  documento.SetCAMINHOARQORIG(DecodificarTexto(GetArquivo()));
  documento.SetCAMINHOARQDEST(DecodificarTexto(BuscarDiretorioDestinoArquivo()));
  if (PodeEstarNoBanco(documento)) AssignA100Banco(documento);
  if (documento.GetIDREGA100() <= 0) documento.SetIDREGA100(BuscarID("A100", true).ID);
  return documento;
}

// Whether the document's period has a document with its number: the others need not be looked for one by one.
bool TNFSeGEFisco::PodeEstarNoBanco(const TDadosRegistroA100& documento) {
  const auto [numeros, novo] = NumerosNoBanco.try_emplace(documento.GetIDREG0000());
  if (novo) {
    auto& consulta = GetDataModule().DataSetConsulta;
    consulta.SetCommandText(
        fmt::format("SELECT NUM_DOC FROM ES02_REGA100 WHERE IDREG0000 = {}", documento.GetIDREG0000()));
    GetDataModule().AbrirDataSetSomenteLeitura(&consulta);
    for (; !consulta.IsEmpty(); consulta.Next()) numeros->second.insert(consulta.GetInt64FieldValue("NUM_DOC"));
    consulta.Close();
  }
  return numeros->second.contains(documento.GetNUM_DOC());
}

// Takes over what the period's document with that series and number, and its participant, have in the database.
void TNFSeGEFisco::AssignA100Banco(TDadosRegistroA100& documento) {
  const auto& empresa = *GetDadosEmpresaImportacao();
  auto& consulta = GetDataModule().DataSetConsulta;
  consulta.SetCommandText(
      fmt::format("SELECT ES02_REGA100.*   FROM ES02_REGA100  INNER JOIN ES02_REG0000     ON (ES02_REG0000.IDREG0000 = "
                  "ES02_REGA100.IDREG0000)  WHERE ES02_REG0000.IDFILIAL = {}   AND ES02_REG0000.DT_INI = {}   AND "
                  "ES02_REG0000.DT_FIN = {}   AND ES02_REGA100.COD_MOD = {}   AND ES02_REGA100.SER = {}   AND "
                  "ES02_REGA100.NUM_DOC = {}",
                  empresa.GetDadosFilial().IDFILIAL, FormatarDataConsultaSQL(empresa.DataInicial),
                  FormatarDataConsultaSQL(empresa.DataFinal), CitarSQL(documento.GetCOD_MOD()),
                  CitarSQL(documento.GetSER()), documento.GetNUM_DOC()));
  GetDataModule().AbrirDataSetSomenteLeitura(&consulta);
  if (!consulta.IsEmpty()) {
    documento.AssignDataSet(consulta);
    const auto idParticipante = consulta.GetInt64FieldValue("IDREG0150");
    consulta.Close();
    consulta.SetCommandText(
        fmt::format("SELECT * FROM ES02_REG0150  WHERE ES02_REG0150.IDREG0150 = {}", idParticipante));
    GetDataModule().AbrirDataSetMemorizado(&consulta);
    // A document of which only the items have come has none.
    if (!consulta.IsEmpty()) documento.GetDados0150().AssignDataSet(consulta);
  }
  consulta.Close();
}

void TNFSeGEFisco::Carregar0150() {
  IDParticipante = 0;
  CarregarDestinatario([&]() -> TDadosParte {
    const auto& pessoa = *GetNota().Pessoa;
    const auto codigo = BuscarMunicipio(pessoa.UF, pessoa.Municipio).CODIGOFEDERAL;
    return {.COD_MUN = InteiroDosDigitos(codigo), .NOME = pessoa.Nome, .UF = pessoa.UF, .MUNICIPIO = pessoa.Municipio};
  });
}

Int64 TNFSeGEFisco::Carregar0200(const TDadosRegistroA100& documento) {
  // An item takes its side from the importer's A100, which here isn't the document.
  GetDadosA100()->SetIND_EMIT(documento.GetIND_EMIT());
  return CarregarItem({.DESCR_ITEM = GetNota().Produto.Descricao});
}

void TNFSeGEFisco::CarregarA17R(TDadosRegistroA100& documento) {
  const auto inserir = [&](std::string_view codigo, Currency valor) {
    if (valor == 0) return;
    documento.InserirA17R({.IDREGA17R = BuscarID("A17R", true).ID,
                           .COD_RECEITA = String(codigo),
                           .VL_BC = GetNota().BaseCalculo,
                           .VL_IMPOSTO = valor,
                           .ALIQUOTA = {}});
  };
  if (DocumentoTemISSRetido()) inserir(receita::kISS, GetNota().ValorISS);
  inserir(receita::kIR, GetNota().ValorIR);
  inserir(receita::kINSS, GetNota().ValorINSS);
  inserir(receita::kPIS, GetNota().ValorPIS);
  inserir(receita::kCOFINS, GetNota().ValorCOFINS);
  inserir(receita::kCSLL, GetNota().ValorCSLL);
}

// The first line of a document is an item in any case; of a head nothing of it is stored. A further line is one when
// it says of what.
void TNFSeGEFisco::CarregarA170(TDadosRegistroA100& documento) {
  const auto& produto = GetNota().Produto;
  if (documento.GetListaDadosA170().Count() > 0 && produto.Descricao.empty()) return;
  // Its period stays that of the importer's A100, the period of the file's first document.
  auto item = NovoA170(produto.Descricao.empty() ? 0 : Carregar0200(documento), produto.NumeroItem);
  item->SetIDREGA100(documento.GetIDREGA100());
  item->SetVL_ITEM(produto.ValorItem);
  item->SetATIVIDADE(FormatarCodigoAtividade(produto.CodigoAtividade));
  item->SetVL_BC_ISS(produto.BaseCalculo);
  item->SetVL_ISS(produto.ValorISS);
  item->SetALIQ_ISS(produto.Aliquota);
  const auto chave = item->GetChaveDicionario();
  documento.GetListaDadosA170().Add(chave, std::move(item));
}

// The documents are stored in the order of their first lines; unless all are to be, as far as no line is left for them.
void TNFSeGEFisco::Importar(bool todos) {
  for (; Importados < ListaDadosA100.Count(); ++Importados) {
    const auto& proximo = *ListaDadosA100.Values()[Importados];
    const auto numero = static_cast<int>(proximo.GetNUM_DOC());
    if (!todos && LinhasPorVir[BuscarChave(numero, proximo.GetSER(), proximo.GetDT_DOC())] > 0) return;
    const auto documento = ListaDadosA100.Retirar(Importados);
    documento->SetUtilizarUpdateORInsert(true);
    ImportarA100(*documento);
  }
}

}  // namespace impnfse
