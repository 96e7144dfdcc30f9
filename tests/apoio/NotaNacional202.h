// Files of the national schema's version 2.02 as several vendors write it: a valid note taken by the test branch, of
// which a test replaces what it needs.
#pragma once

#include "Apoio.h"

namespace impnfse::testes {

constexpr std::string_view kNotaNacional202 = R"(<CompNfse><Nfse versao="2.02"><InfNfse>Numero=1;CodigoVerificacao= AB ;
DataEmissao=2026-03-15T10:20:30;<ValoresNfse>BaseCalculo=280;Aliquota=9;ValorIss=99;</ValoresNfse><PrestadorServico>
<IdentificacaoPrestador><CpfCnpj>Cnpj=99888777000166;</CpfCnpj></IdentificacaoPrestador>RazaoSocial=Sul;<Endereco>
Endereco=Rua A;CodigoMunicipio=4106902;CodigoPais= 105 ;</Endereco></PrestadorServico><DeclaracaoPrestacaoServico>
<InfDeclaracaoPrestacaoServico><Servico><Valores>ValorServicos=300;ValorDeducoes=7;ValorIss=15;Aliquota=5;
DescontoIncondicionado=20;</Valores>IssRetido=2;ItemListaServico=1402;<Discriminacao>[1] Revisão</Discriminacao>
CodigoMunicipio=42-04202;MunicipioIncidencia=41.06902;</Servico><Tomador><IdentificacaoTomador><CpfCnpj>
Cnpj=11222333000181;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Aurora;<Endereco>CodigoMunicipio=4209102;</Endereco>
</Tomador>OptanteSimplesNacional=1;</InfDeclaracaoPrestacaoServico></DeclaracaoPrestacaoServico></InfNfse></Nfse>
</CompNfse>)";

// Retains the federal taxes: 1 of PIS, 2 of COFINS, 3 of INSS, 4 of IR, 5 of CSLL.
inline const String kRetencoes202 =
    "ValorServicos= => ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorCsll=5;ValorServicos=";
// Takes everything out of the note.
inline const String kSemNota202 = "<InfNfse> => <InfNfse/><X> | </InfNfse> => </X>";

struct TTesteNacional202 : TTesteComBanco {
  String ImportarNotas(const String& leiaute, const std::vector<String>& trocas, std::string_view raiz) {
    return TTesteComBanco::ImportarNotas(leiaute, kNotaNacional202, trocas, raiz);
  }
  // What a layout reads of a note, and the retained taxes.
  String Campos() {
    return Documentos(
               "FIRST 1 NUM_DOC, COD_MUN, ENDERECO, COD_PAIS, OPTANTESIMPLES, CHV_NFSE, DT_DOC, DT_EXE_SERV, VL_DOC, "
               "A.VL_DESC, A.VL_ISS, VL_PIS_RET, VL_COFINS_RET, VL_ITEM, I.VL_DESC, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, "
               "DEDUCAOISS, ATIVIDADE, COD_LST, CAST(DESCR_ITEM AS VARCHAR(99))") +
           "\n" + Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R");
  }
};

}  // namespace impnfse::testes
