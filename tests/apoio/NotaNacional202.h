// Files of the national schema's version 2.02 as several vendors write it: a valid note taken by the test branch, of
// which a test replaces what it needs.
#pragma once

#include "Apoio.h"

namespace impnfse::testes {

constexpr std::string_view kNotaNacional202 = R"(
<CompNfse><Nfse versao="2.02"><InfNfse><Numero>1</Numero><CodigoVerificacao> AB </CodigoVerificacao>
<DataEmissao>2026-03-15T10:20:30</DataEmissao><ValoresNfse><BaseCalculo>280</BaseCalculo><Aliquota>9</Aliquota>
<ValorIss>99</ValorIss></ValoresNfse><PrestadorServico><IdentificacaoPrestador><CpfCnpj><Cnpj>99888777000166</Cnpj>
</CpfCnpj></IdentificacaoPrestador><RazaoSocial>Sul</RazaoSocial><Endereco><Endereco>Rua A</Endereco>
<CodigoMunicipio>4106902</CodigoMunicipio><CodigoPais> 105 </CodigoPais></Endereco></PrestadorServico>
<DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico><Servico><Valores><ValorServicos>300</ValorServicos>
<ValorDeducoes>7</ValorDeducoes><ValorIss>15</ValorIss><Aliquota>5</Aliquota><DescontoIncondicionado>20
</DescontoIncondicionado></Valores><IssRetido>2</IssRetido><ItemListaServico>1402</ItemListaServico>
<Discriminacao>[1] Revisão</Discriminacao><CodigoMunicipio>42-04202</CodigoMunicipio>
<MunicipioIncidencia>41.06902</MunicipioIncidencia></Servico><Tomador><IdentificacaoTomador><CpfCnpj>
<Cnpj>11222333000181</Cnpj></CpfCnpj></IdentificacaoTomador><RazaoSocial>Aurora</RazaoSocial><Endereco>
<CodigoMunicipio>4209102</CodigoMunicipio></Endereco></Tomador><OptanteSimplesNacional>1</OptanteSimplesNacional>
</InfDeclaracaoPrestacaoServico></DeclaracaoPrestacaoServico></InfNfse></Nfse></CompNfse>)";

// Retains the federal taxes: 1 of PIS, 2 of COFINS, 3 of INSS, 4 of IR, 5 of CSLL.
inline const String kRetencoes202 =
    "<ValorServicos> => <ValorPis>1</ValorPis><ValorCofins>2</ValorCofins><ValorInss>3</ValorInss><ValorIr>4</ValorIr>"
    "<ValorCsll>5</ValorCsll><ValorServicos>";
// Takes everything out of the note.
inline const String kSemNota202 = "<InfNfse> => <InfNfse/><X> | </InfNfse> => </X>";

class TTesteNacional202 : public TTesteComBanco {
 protected:
  // Imports a file whose root has the notes in place of "{}". A note is told by what it replaces in the valid one, as
  // "text => other | text => other". The outcome: the worker's answer, the numbers in the summary, the error list.
  String ImportarNotas(const std::vector<String>& notas, const String& raiz, const String& leiaute) {
    String xml;
    for (const auto& trocas : notas) {
      String nota(kNotaNacional202);
      for (const auto& [de, para] : Casos(trocas)) nota.replace(nota.rfind(de), de.size(), para);
      xml += nota;
    }
    const auto i = Importar(Pasta.Gravar("nota.xml", Substituir(raiz, "{}", xml)), leiaute);
    auto resultado = fmt::format("{} ", i->GetResumo().Importou);
    for (const auto& documento : i->GetResumo().Documentos) resultado += "[" + documento.Numero + "]";
    resultado = Substituir(resultado + Erros(*i), i->BuscarErroNaoGerouBloco0(), "alheia");
    return Substituir(resultado, i->BuscarErroEstruturaArquivo(), "estrutura");
  }
  // What a layout reads of a note, and the retained taxes.
  String Campos() {
    return Documentos(
        "FIRST 1 A.NUM_DOC, Q.COD_MUN, Q.ENDERECO, Q.COD_PAIS, Q.OPTANTESIMPLES, A.CHV_NFSE, A.DT_DOC, A.DT_EXE_SERV, "
        "A.VL_DOC, A.VL_DESC, "
        "A.VL_ISS, A.VL_PIS_RET, A.VL_COFINS_RET, I.VL_ITEM, I.VL_DESC, I.VL_BC_ISS, I.VL_ISS, I.ALIQ_ISS, "
        "I.DEDUCAOISS, I.ATIVIDADE, D.COD_LST, CAST(D.DESCR_ITEM AS VARCHAR(99))");
  }
  String Retencoes() {
    return Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R");
  }
};

}  // namespace impnfse::testes
