// The notes of text layouts, as their lines tell them: plain values, read whole before any register is made.
#pragma once

#include <deque>
#include <vector>

#include "SobDemanda.h"
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

// A line of GEFisco: the head of a document, or one of its items, which tell no person.
struct TNotaGEFisco {
  int Numero = 0;
  String Serie = {};
  TDateTime Data = 0;
  String Situacao = {};  // "N" regular, "C" cancelled
  String Retencao = {};  // "R" when ISS is retained
  TSobDemanda<TPessoa> Pessoa;
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
// Lines go as their documents come, so that a large file isn't held twice.
using TListaNFSeGEFisco = std::deque<TNotaGEFisco>;

}  // namespace impnfse
