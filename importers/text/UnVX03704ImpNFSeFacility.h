// Facility, layout code 34 for files that aren't XML: a text file with fields separated by ";", some of fixed length
// among them. Its first line tells whether it has documents of entry or of exit; a note is a line "10", followed by its
// service lines "20" and what completes a party, "30". The whole file is read before any register is made.
#pragma once

#include <vector>

#include "UnVX03704ImpNFSeBase.h"

namespace impnfse {

struct TNFSeFacilityPessoa {
  String TipoPessoa = {};  // "F" or "J", or a longer text that begins so
  String Cnpj = {};
  String Cpf = {};
  String Nome = {};
  String Endereco = {};
  String NR = {};
  String Complemento = {};
  String Bairro = {};
  String Cidade = {};
  String UF = {};
  String CEP = {};

  // An empty kind changes nothing; one that begins with neither letter is a "J".
  void SetTipoPessoa(const String& valor);
  const String& GetNumero() const { return Cnpj.empty() ? Cpf : Cnpj; }
};

struct TNFSeFacilityServico {
  String CodigoItemLista = {};  // item of the national service list, without its point
  String Descricao = {};
  String CST = {};             // of ISS
  String LocalPrestacao = {};  // municipality, by the code of the federal revenue service
  bool TributadoMunicipioPrestador = false;
  Currency Aliquota;  // of ISS, percent
  Currency ValorTributavel;
  Currency Deducao;
};

struct TNotaFacility {
  int NumeroDoc = 0;
  int Serie = 0;
  String Chave = {};
  TDateTime DataEmissao = 0;
  bool Cancelado = false;
  TNFSeFacilityPessoa Prestador = {};
  TNFSeFacilityPessoa Tomador = {};
  std::vector<TNFSeFacilityServico> Itens = {};
  Currency ValorTotalNota;
  Currency ValorDesconto;
  Currency ValorIR;
  Currency ValorINSS;
  Currency ValorCSLL;
  Currency ValorPis;
  Currency ValorCofins;
};

// The notes of a file, in its order.
class TListaNFSeFacility {
 public:
  TNotaFacility& Add() { return FNotas.emplace_back(); }
  std::size_t Count() const { return FNotas.size(); }
  const TNotaFacility& operator[](std::size_t i) const { return FNotas[i]; }
  // The open note: the last one.
  TNotaFacility& Ultima() { return FNotas.back(); }

 private:
  std::vector<TNotaFacility> FNotas;
};

class TNFSeFacility final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  // Raises EConversao for a field that can't be read, with nothing stored.
  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  enum class TTipoDocumento : unsigned char {
    Entrada = 0,           // the lines "30" complete the issuer
    EntradaDoTomador = 1,  // the taker
    Saida = 2,
  };

  const TNotaFacility& GetNota() const { return Notas[NotaAtual]; }

  void CarregarNFSe();
  void CarregarArquivo();
  void LerLinha(const String& texto);
  bool CarregouLado(TTPEmpresaArquivo lado);
  void CarregarA100();
  void Carregar0150();
  TDadosParte LerParte(const TNFSeFacilityPessoa& pessoa);
  Int64 Carregar0200(const TNFSeFacilityServico& servico);
  void CarregarA170();
  void CarregarA17R();
  String BuscarMunicipioDevidoISS(const TNFSeFacilityServico& servico);
  void LimitarProgresso(std::size_t quantidade);

  // Nothing in the layout tells of it: every document in force counts as one with ISS retained.
  static constexpr bool DocumentoTemISSRetido() { return true; }

  TTipoDocumento TipoDocumento = TTipoDocumento::Saida;
  TListaNFSeFacility Notas;
  std::size_t NotaAtual = 0;
};

}  // namespace impnfse
