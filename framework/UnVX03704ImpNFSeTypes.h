// The notes of text layouts, as their lines tell them: plain values, read whole before any register is made.
#pragma once

#include <vector>

#include "VX03704Tipos.h"

namespace impnfse {

// A note of Blumenau.
struct TNotaServico {
  int Numero = 0;
  TDateTime DataEmissao = 0;
  TDateTime DataCancelamento = 0;
  String CodigoVerificacao = {};
  String Situacao = {};       // "C" when cancelled
  int TipoTributacao = 0;     // 0 to 3
  String CodigoServico = {};  // activity, and item of the national service list
  String Discriminacao = {};
  TPessoa Tomador = {};
  bool ISSRetido = false;
  Currency Aliquota;  // of ISS, percent
  Currency ValorServicos;
  Currency ValorDeducoes;
  Currency ValorISS;
  Currency ValorCredito;
  Currency ValorIR;
  Currency ValorINSS;
  Currency ValorPIS;
  Currency ValorCOFINS;
  Currency ValorCSLL;
};
using TListaNFSeBlumenau = std::vector<TNotaServico>;

// A line of GEFisco: the head of a document, or one of its items.
struct TNotaGEFisco {
  int Numero = 0;
  String Serie = {};
  TDateTime Data = 0;
  String Situacao = {};  // "N" regular, "C" cancelled
  String Retencao = {};  // "R" when ISS is retained
  TPessoa Pessoa = {};
  TProduto Produto = {};
  Currency Aliquota;  // of ISS, percent
  Currency ValorDocumento;
  Currency ValorISS;
  Currency BaseCalculo;
  Currency ValorIR;
  Currency ValorINSS;
  Currency ValorPIS;
  Currency ValorCOFINS;
  Currency ValorCSLL;
};
using TListaNFSeGEFisco = std::vector<TNotaGEFisco>;

}  // namespace impnfse
