// The national schema (ABRASF) in the shapes in which it is delivered: a bare note, a note with its cancellation,
// lists, the answers of six consultations, and as the last resort anything with a number. Layout codes 17, 22, 33, 44,
// 46, 47, 57 and 58, and what 1 and 51 have in an older version.
//
// The versions fork inside the data: the same fact stands in the note in 1.0 and in its declaration in 2.x, and some
// answers hold it in one of them only. Where each is looked for depends on the shape, and for one vendor on the layout
// code; these orders differ from one field to the next, on purpose.
//
//   UnVX03704ImpNFSeAbrasf.cpp             how a file is opened, and each note is reached
//   UnVX03704ImpNFSeAbrasfRegistros.cpp    one note into the registers
//   UnVX03704ImpNFSeAbrasfProdutos.cpp     the items that a note's text may hold
#pragma once

#include <vector>

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBAbrasf.h"

namespace impnfse {

// The shape of the note being loaded.
enum TEstruturaArquivo {
  eaNenhum,
  eaNFSe,
  eaNfseU,
  eaCompNfse,
  eaGerarNfseResposta,
  eaListaNfse,
  eaCompNfseList,
  eaArrayOfTcCompNfse,
  eaConsultarNfseLote,
  eaConsultarNfseResposta,
  eaConsultarNfseServicoPrestadoResposta,
  eaConsultarNfseRpsResposta,
  eaConsultarNotaResponse,
  eaAbrasf,
  eaConsultarNfseFaixaResposta
};

// One item of a note.
struct TItensNFSe {
  int FNumeroItem = 0;  // from 1
  String FDescricao = {};
  Currency FQuantidade = 1;
  Currency FValor = {};          // total
  Currency FValorUnitario = {};  // used when there is no total
  Currency FDesconto = {};       // unconditional
  Currency FDeducao = {};
  String FCodigoAtividade = {};
  int FCOD_LST = 0;
  Currency FAliquotaISS = {};  // percent
  Currency FBaseCalculoISS = {};
  Currency FBaseCalculoA17R = {};  // of the retained taxes
  Currency FValorISS = {};
  bool FISSRetido = false;
  Currency FValorIssRetido = {};
  Currency FValorPIS = {};
  Currency FValorCOFINS = {};
  Currency FValorINSS = {};
  Currency FValorIR = {};
  Currency FValorCSLL = {};
};
using TListaItensNFSe = std::vector<TItensNFSe>;

class TNFSeAbrasf final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  // Repairs the file first if it has to, then tries the shapes. Raises EXML for a file that no parser accepts, and for
  // a document of nothing but an empty element.
  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override { return {}; }
  String GetIMEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override;
  String GetIMDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  struct TForma;
  struct TNota;

  // The file and its shapes.
  void CarregarNFSe();
  void RemoverCaracteresInvalidos();
  // Whether the shape has loaded the file; false when it has another shape.
  bool CarregouForma(const TForma& forma);
  // Whether the loop goes on behind the note.
  bool CarregarNota(const TForma& forma, const TNota& nota, bool& achou);
  bool CarregouAbrasf();
  bool CarregarArquivoAbrasf(TNoXML no);
  bool ConverterAbrasf(TNoXML no);

  // One note into the registers.
  const IXMLInfNfseAbrasf& GetNota() const { return FNota; }
  IXMLInfDeclaracaoAbrasf GetDeclaracao() const;
  IXMLDadosServicoAbrasf GetServico() const;
  IXMLDadosTomadorAbrasf GetTomadorServico() const { return GetNota().Filho<"TomadorServico">(); }
  bool EhForma(std::initializer_list<TEstruturaArquivo> formas) const;
  bool EhLeiaute(std::string_view codigo) const { return DadosArquivo.CodigoLeiaute == codigo; }
  bool DocumentoTemISSRetido() const { return FTemISSRetido; }

  void CarregarA100();
  void EscolherServico();
  void CarregarValoresA100();
  Int64 NumeroDocumento() const;
  Currency BuscarValorDocumento() const;
  TDateTime BuscarDataExecucaoOuConclusaoServico();
  String BuscarCodigoMunicipioDevidoISS();
  Currency BuscarAliquotaISSServico(const String& texto) const;
  void CarregouAuxManutencao();

  void Carregar0150();
  String LerDoTomador(TCaminho<kFormatoAbrasf, "DadosTomador"> caminho) const;
  String BuscarRazaoSocialTomador() const;
  String BuscarEnderecoTomador() const;
  String BuscarNumeroEnderecoTomador() const;
  String BuscarComplementoTomador() const;
  String BuscarBairroTomador() const;
  String BuscarUFTomador() const;
  int BuscarCodigoMunicipioTomador() const;
  int BuscarCodigoPaisTomador() const;

  void CarregarA170();
  Int64 Carregar0200(const TItensNFSe& item);
  void CarregarA17R(const TItensNFSe& item);

  // The items of the note, from the description of its service.
  TListaItensNFSe BuscarProdutos(const String& texto);
  TItensNFSe ProdutoDescricao(const String& s);
  TListaItensNFSe ProdutosEntreColchetes(std::string_view s);
  bool LerCampoEntreColchetes(std::string_view& grupo, TItensNFSe& item);
  TItensNFSe ProdutoUnico(const String& s);
  bool ServicoTemISSRetido() const;

  TArquivoXML FArquivo{""};
  TEstruturaArquivo FEstruturaArquivo = eaNenhum;
  IXMLInfNfseAbrasf FNota;
  std::optional<IXMLDadosServicoAbrasf> FServico;  // stands for the note's own once it is there
  bool FNotaCancelada = false;
  Currency FSomaValorRetencaoCOFINSA170;
  Currency FSomaValorRetencaoPISA170;
  Currency FSomaValorISSA170;
  bool FTemISSRetido = false;  // some item of the note has retained ISS
};

}  // namespace impnfse
