// The format of RLZ files: a list of notes, each with its services and both parties.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoRLZInformatica =
    Formato("Notas: nota*(Nota)",
            "Nota: guia, numero, mes, cidade, uf, exercicio, data, modelo, serie, apuracao, optantesimples, situacao, "
            "valorbruto, basecalculo, valoriss, valorissretidonafonte, aliquotapis, aliquotacsll, aliquotacofins, "
            "aliquotairrf, valorirrf, valorliquido, vencimentofatura, fatura, orcamento, texto, servicos(Servicos), "
            "prestador(Parte), tomador(Parte)",
            "Servicos: servico*(Servico)",
            "Servico: quantidade, atividade, valor, deducao, codigoatividade, codigoservico, aliquota, inss, total",
            "Parte: endereco, numero, complemento, bairro, cep, cidade, uf, nome, inscricao, cpfcnpj");

using IXMLNotasRLZInformatica = TElemento<kFormatoRLZInformatica, "Notas">;
using IXMLNotaRLZInformatica = TElemento<kFormatoRLZInformatica, "Nota">;
using IXMLServicoRLZInformatica = TElemento<kFormatoRLZInformatica, "Servico">;
using IXMLParteRLZInformatica = TElemento<kFormatoRLZInformatica, "Parte">;

// The root of an RLZ file. Another root is an error: raises EXML.
inline IXMLNotasRLZInformatica LoadnotasRLZInformatica(const String& arquivo) {
  return LoadSemGuarda<IXMLNotasRLZInformatica>(arquivo, {.Tag = "notas"});
}

}  // namespace impnfse
