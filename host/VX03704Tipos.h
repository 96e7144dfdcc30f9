// The enumerations and small records that the registers and the base classes share.
#pragma once

#include "VX03704Currency.h"
#include "VX03704Data.h"
#include "VX03704RegistroCampos.h"
#include "VXUtilsTexto.h"

namespace impnfse {

enum TTipoExtensaoArquivo : int {
  teaDocumentoEletronico = 1,  // every register that comes from an invoice file
};

// Seen from the company: it takes the service (CFOP 1.933, 2.933) or provides it (5.933, 6.933).
enum TTipoOperacao : int { toEntrada = 0, toSaida = 1 };

// Who issued the document: a third party, or the company itself.
enum TEmissao : int { teTerceiros = 0, tePropria = 1 };

// The part that the company plays in a note.
enum TTPEmpresaArquivo : int { tpeEmitente = 0, tpeDestinatario = 1 };

// The shape of a field of the text layouts.
enum TTipoDeDado : int {
  tdInteiro = 0,
  tdTexto = 1,
  tdMoeda = 2,
  tdDecimal = 3,
  tdData = 4,
  tdHora = 5,
  tdLogico = 6,
};

enum TThreadPriority : int { tpNormal = 3 };

// Characters of a CNPJ; a shorter number is a CPF.
inline constexpr std::size_t kTamanhoCNPJ = 14;

// A branch of a company. Numbers are texts and are compared as such with those of the notes.
struct TDadosFilial {
  Int64 IDFILIAL = 0;
  Int64 IDEMPRESA = 0;
  String CODIGOMUNICIPIO = {};  // federal code; may carry punctuation
  String UF = {};
  String CNPJ = {};
  String IE = {};
};

// The company's import configuration.
struct TCfgCA06_IMPORTACFG {
  int REMOVERCARACTERES = 0;  // bit word; see GetRemoverCaracteresEspeciaisDescricaoNFSe
};

// The outcome of one statement.
struct TResultStatus {
  bool Sucesso = true;
  String Mensagem = {};
};

// The outcome of the operations that place a note on a period record.
struct TBuscarID {
  Int64 ID = 0;
  String Texto = {};
  bool Carregou = false;
};

// The key of a participant: document number, state registration, municipality (0 matches any).
struct TDadosPesquisaRegistro0150IOP {
  String CNPJCPF = {};
  String IE = {};
  int COD_MUN = 0;
};

// The other party of a note, as the text layouts read it.
struct TPessoa {
  String Bairro = {};
  String CNPJCPF = {};
  String Complemento = {};
  String CEP = {};
  String Endereco = {};
  String IE = {};
  String Municipio = {};
  String Numero = {};
  String Nome = {};
  String TipoPessoa = {};  // "J" or "F"
  String UF = {};
};

// A service line, as the text layouts read it.
struct TProduto {
  int NumeroItem = 0;
  String CodigoAtividade = {};
  String Unidade = {};
  String Descricao = {};
  Currency BaseCalculo;
  Currency Aliquota;  // percent
  Currency ValorISS;
  Currency ValorItem;
};

// The import request; copied whole from the front end to its worker.
struct TDadosListaImportacaoArquivo {
  String Arquivo = {};         // full path of the file
  String CodigoLeiaute = {};   // ES02_SERVICOLEIAUTE.CODIGO as text
  String TipoImportacao = {};  // kind of document: "NFSE"
  Int64 IDFILIAL = 0;          // the branch that asks
};

}  // namespace impnfse
