// The layouts that a file may follow, from its beginning and its extension.
#include "Apoio.h"

namespace impnfse::testes::analise {

class TAnalise : public TTesteComBanco {
 protected:
  // The candidates of a file, as the screens read them.
  String Candidatos(std::string_view conteudo, const String& nome = "nota.xml") {
    EXPECT_TRUE(TImpNFSe().AnalisouLeiauteArquivo(Pasta.Gravar(nome, conteudo)));
    return Substituir(Tabela("SELECT ID2 FROM TMP_GENERICA WHERE TP12 = 3704 AND ID12 = 180920170811 ORDER BY ID2"),
                      "\n", " ");
  }
};

TEST_F(TAnalise, AgulhasDeCadaLeiaute) {
  for (
      const auto& [inicio, codigos] : Casos(
          "<ConsultarNfseResposta> => 1 31 33 44 47 | Notas => 7 | movimento_economico => 8 | "
          "<ConsultarNfseRpsResposta> => 17 27 31 44 46 | NFe => 21 | ConsultarNfseLote => 22 31 44 | "
          "ConsultarLoteRpsResposta => 22 51 | <Nfse> => 31 44 | GerarNfseResposta => 31 32 44 55 | ListaNfse => 31 33 "
          "44 51 | <nfse> => 34 49 | <lote> => 36 39 | envioLote => 39 | NFS-e => 39 | NOTAS_FISCAIS => 40 | <NFSE> => "
          "43 44 | COMPNFSE => 43 44 | CompNfse => 31 44 51 58 61 | InfNfse => 31 44 | ArrayOfTcCompNfse => 31 44 51 "
          "58 61 | consultarNotaResponse => 44 | ConsultarNfseServicoPrestadoResposta => 31 44 50 | CompNfseList => 31 "
          "44 51 58 61 | EnviarLoteRpsSincronoResposta => 44 58 | ConsultarNfseFaixaResposta => 31 44 45 55 57 | "
          "http://www.agili.x => 45 | agili => ; | declaracaoDeServicoDms => 48 | listaNfs => 49 | <nfs> => 49 | NFPSe "
          "=> 53 | ConsultaRPSCompetencia => 54 | <notas> => 62 | <NOTAS> => ;"))
    EXPECT_EQ(Candidatos(inicio), codigos == ";" ? "" : codigos) << inicio;
}

TEST_F(TAnalise, ExtensaoTxt) {
  for (const auto* const nome : {"a.txt", "a.TXT", "a.b.Txt", "a.txt "}) EXPECT_EQ(Candidatos("", nome), "34 41 42");
  for (const auto* const nome : {"txt", "a.txt.xml", "a.txtx", "txt.csv"}) EXPECT_EQ(Candidatos("", nome), "") << nome;
  EXPECT_EQ(Candidatos("nfse", "a.txt"), "34 41 42 49") << "once, though both of its signs are there";
}

// Characters count, not bytes; the XML declaration is part of the beginning, and a mark of the encoding isn't.
TEST_F(TAnalise, Inicio) {
  const auto apos = [](int caracteres) { return "\xEF\xBB\xBF" + Repetir("ç", caracteres) + "<notas>"; };
  EXPECT_EQ(Candidatos(apos(194)), "62");
  EXPECT_EQ(Candidatos(apos(195)), "");
  EXPECT_EQ(Candidatos("\r\n" + Repetir("a", 194) + "notas"), "62") << "a line break is one character";
}

TEST_F(TAnalise, TabelaDosCandidatos) {
  Banco().Executar("INSERT INTO TMP_GENERICA (ID2, TP12, ID12) VALUES (1, 3704, 1)");
  Banco().Executar("UPDATE ES02_SERVICOLEIAUTE SET DESCRICAO = 'd''água', TP = 6 WHERE CODIGO = 31");
  Banco().Executar("UPDATE ES02_SERVICOLEIAUTE SET TP = 3 WHERE CODIGO = 33");
  Banco().Executar("DELETE FROM ES02_SERVICOLEIAUTE WHERE CODIGO = 1");
  Candidatos("<notas>");
  EXPECT_EQ(Candidatos("<ConsultarNfseResposta>"), "31 44 47")
      << "only layouts of this module, and only the last file's";
  EXPECT_EQ(Tabela("SELECT T.ID1 - L.IDSERVICOLEIAUTE, T.ID2, T.TP1, T.INF1, T.TP12, T.ID12 FROM TMP_GENERICA T LEFT "
                   "JOIN ES02_SERVICOLEIAUTE L ON L.CODIGO = T.ID2 WHERE T.ID2 < 44 ORDER BY T.ID2"),
            "-|1|-|-|3704|1\n0|31|6|d'água|3704|180920170811");
  EXPECT_THROW(TImpNFSe().AnalisouLeiauteArquivo(Pasta / "falta.xml"), EArquivo);
  EXPECT_EQ(Contar("TMP_GENERICA"), 4) << "what was there stays";
}

// Another process's analysis may come in between: it is begun again.
TEST_F(TAnalise, ConflitoComOutroProcesso) {
  Candidatos("<notas>");
  TBancoFirebird outro(Pasta / "banco.fdb");
  int vezes = 0;
  Banco().EmTransacao([&] {
    Contar("TMP_GENERICA");
    if (++vezes == 1) outro.Executar("UPDATE TMP_GENERICA SET INF1 = 'outro'");
    EXPECT_EQ(Candidatos("<Notas>"), "7");
  });
  EXPECT_EQ(vezes, 2);
  EXPECT_EQ(Tabela("SELECT ID2 FROM TMP_GENERICA"), "7");
}

}  // namespace impnfse::testes::analise
