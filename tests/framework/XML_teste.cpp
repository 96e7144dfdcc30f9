// The XML document and the binding of formats.
#include "Apoio.h"
#include "XMLFormato.h"

namespace impnfse::testes::xml {

std::shared_ptr<const TDocumentoXML> Abrir(std::string_view xml) {
  const TPastaTemporaria pasta;
  return LoadXMLDocument(pasta.Gravar("a.xml", xml));
}

// The document as one text: name, attributes in brackets, then the text or the children in braces.
String Despejar(const TDocumentoXML& d, const std::vector<std::string_view>& atributos = {}, TNoXML no = {}) {
  String texto(d.Nome(no));
  for (const auto atributo : atributos)
    if (const auto valor = d.Atributo(no, atributo); !valor.empty()) texto += fmt::format("[{}={}]", atributo, valor);
  auto filho = d.PrimeiroFilho(no);
  if (filho == TNoXML::Nenhum) return texto + fmt::format("({})", d.Texto(no));
  texto += '{';
  for (; filho != TNoXML::Nenhum; filho = d.ProximoIrmao(filho)) texto += Despejar(d, atributos, filho);
  return texto + '}';
}

TEST(XMLDocumento, MalformadoLevanta) {
  auto casos = Casos(
      "texto | \x7F\x45LF\1\2\3 | <a> | <a><b></a></b> | <a></A> | <a/><b/> | <a/>lixo | lixo<a/> | <a>x & y</a> | "
      "<a>x < y</a> | <a>&falta;</a> | <a>&#x1;</a> | <a>\x01</a> | <a b=1/> | <a b=\"1\" b=\"2\"/> | <a b=\"<\"/> | "
      "<1a/> | <a><!-- -- --></a> | <a><![CDATA[x</a> |  <?xml version=\"1.0\"?><a/> | {\"a\": 1} | <a>]]></a> | "
      "<a>n\xE3o</a> | <?xml version=\"1.0\" encoding=\"UTF-8\"?><a>n\xE3o</a>");
  casos.emplace_back(String("<a>\0</a>", 8), "");
  for (const auto& caso : casos)
    EXPECT_TRUE(Levantado([&] { Abrir(caso.first); }).starts_with("XML malformado na linha ")) << caso.first;
  EXPECT_EQ(Levantado([] { Abrir("<a>\n\n<b></a>"); }), "XML malformado na linha 3.");
  EXPECT_THROW(Abrir("<?xml version=\"1.0\" encoding=\"x-inventada\"?><a>x</a>"), EXML);
  EXPECT_THROW(LoadXMLDocument("/falta.xml"), EArquivo);
}

TEST(XMLDocumento, NadaForaDoArquivoELido) {
  const TPastaTemporaria pasta;
  const auto segredo = pasta.Gravar("segredo.txt", "SEGREDO");
  for (const String tipo : {" [<!ENTITY e SYSTEM \"file://#\">]><a>&e;</a>", " [<!ENTITY % p SYSTEM \"#\"> %p;]><a/>",
                            " [<!ENTITY e SYSTEM \"#\"><!ENTITY f \"&e;\">]><a>&f;</a>"})
    EXPECT_EQ(Levantado([&] { Abrir("<!DOCTYPE a" + Substituir(tipo, "#", segredo)); }),
              "O arquivo usa uma entidade externa, que não é lida.");
  // A declaration alone, and the DTD that it names, are passed over.
  EXPECT_EQ(Despejar(*Abrir(Substituir("<!DOCTYPE a SYSTEM \"#\" [<!ENTITY e SYSTEM \"#\">]><a>x</a>", "#", segredo))),
            "a(x)");
}

TEST(XMLDocumento, TextoENomesComoEscritos) {
  EXPECT_EQ(Despejar(*Abrir("<!DOCTYPE a [<!ENTITY e \"d'&#193;gua\"><!ENTITY n \"<c>1</c><c>2</c>\"><!ATTLIST b k "
                            "CDATA \"padrão\">]><a k=\"&lt;&e;&gt;\"><b>&e; &amp; &e;&#x41;</b>&n;</a>"),
                     {"k"}),
            "a[k=<d'Água>]{b[k=padrão](d'Água & d'ÁguaA)c(1)c(2)}");
  EXPECT_EQ(Despejar(*Abrir(
                "<?xml version=\"1.0\"?><!-- x --><?pi y?><a>\n  <b> x <!-- c -->y<![CDATA[ <z> & ]]>\r\nw<?pi?> </b>\n"
                "  <vazio/><branco>  </branco></a><!-- fim -->\n")),
            "a{b( x y <z> & \nw )vazio()branco(  )}");
  const auto d = Abrir(
      "<a xmlns=\"urn:p\" xmlns:tc=\"urn:t\" tc:k=\"1\" k=\"2\"><tc:Numero>com</tc:Numero><Numero>sem</Numero></a>");
  EXPECT_EQ(Despejar(*d, {"k", "tc:k", "xmlns", "xmlns:tc", "falta"}),
            "a[k=2][tc:k=1][xmlns=urn:p][xmlns:tc=urn:t]{tc:Numero(com)Numero(sem)}");
  EXPECT_EQ(d->Texto(d->Filho(d->Raiz(), "Numero")), "sem");
  EXPECT_THROW(d->Texto(d->Raiz()), EXML) << "a structured element has no text";
  EXPECT_EQ(Despejar(*Abrir("<a>" + Repetir("é", 200'000) + "</a>")), "a(" + Repetir("é", 200'000) + ")");
}

constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};

TEST(XMLPrefixos, SaemDeTodoOTextoNaOrdem) {
  // What the first leaves, the second takes, but not the other way around; case counts.
  EXPECT_EQ(Despejar(*Abrir("<ns2:a xmlns:ns2=\"urn:ns2:x\" xmlns:ns3=\"urn:3\" ns3:k=\"v ns3:w\"><ns3:b>x ns2:y"
                            "</ns3:b><c>nsns2:3:z</c><d>nsns3:2:z</d><e><![CDATA[<ns2:q>]]>ns2&#58;</e><f/><g>NS2:x</g>"
                            "</ns2:a>")
                          ->SemPrefixos(kPrefixos),
                     {"k", "xmlns:ns2"}),
            "a[k=v w][xmlns:ns2=urn:x]{b(x y)c(z)d(ns2:z)e(<q>)f()g(NS2:x)}");
  for (const auto* const xml :  // what is left must be well-formed
       {"<a xmlns:ns2='u' ns2:k='1' k='2'/>", "<a xmlns:ns2='u' xmlns:ns3='v' ns2:k='1' ns3:k='2'/>",
        "<a><ns2:1b xmlns:ns2='u'/></a>", "<a><ns2:-b xmlns:ns2='u'/></a>", "<a><ns2: xmlns:ns2='u'/></a>"})
    EXPECT_THROW(Abrir(xml)->SemPrefixos(kPrefixos), EXML) << xml;
}

// The binding --------------------------------------------------------------------------------------------------------

constexpr auto kFormatoTeste =
    Formato("Raiz: Lote(Lote), Nota*(Nota), Qualquer=x:Nota|Nota*(Nota), @versao", "Lote: Nota*(Nota)",
            "Nota: Numero, @id, Valores(Valores), Doc=Cnpj|Cpf, Prestador=Prestador|PrestadorServico(Prestador)",
            "Valores: ISS, @moeda", "Prestador: Nome, Pais?1058");
using TRaizTeste = TElemento<kFormatoTeste, "Raiz">;

TEST(XMLFormato, LePorCaminho) {
  const TPastaTemporaria pasta;
  const auto arquivo = pasta.Gravar(
      "a.xml",
      "<Raiz versao='2'><Outra/><Nota id='n1'><Numero>1</Numero><Numero>2</Numero><Valores moeda='R$'><ISS>5</ISS>"
      "</Valores><Valores><ISS>6</ISS></Valores><Cpf>f</Cpf><Cnpj>j</Cnpj><PrestadorServico><Nome>P</Nome>"
      "<Pais/></PrestadorServico></Nota><x:Nota "
      "xmlns:x='u'/><Nota><Cpf>f</Cpf><Valores/></Nota><Nota><Cnpj/><Cpf>f</Cpf>"
      "<Numero><x/></Numero></Nota></Raiz>");
  const auto raiz = Load<TRaizTeste>(arquivo, {.Tag = "Raiz", .Prefixos = {}});
  const auto notas = raiz->Itens<"Nota">();
  String lido = raiz->Texto("@versao");
  for (std::size_t i = 0; i < notas.Count(); ++i)
    lido += fmt::format("; {},{},{},{},{},{}", notas[i].Texto("@id"), notas[i].Texto("Valores/ISS"),
                        notas[i].Texto("Valores/@moeda"), notas[i].Texto("Doc"), notas[i].Texto("Prestador/Nome"),
                        notas[i].Texto("Prestador/Pais"));
  // Only the item's tag counts; the first of two elements; the first of two tags, whatever their order in the file,
  // also when it is empty; what is absent is empty,
  // or what the format has for it.
  EXPECT_EQ(lido, "2; n1,5,R$,j,P,; ,,,f,,1058; ,,,,,1058");
  EXPECT_EQ(raiz->Itens<"Qualquer">().Count(), 4U);
  EXPECT_TRUE(notas[0].Tem("Valores/ISS") && !notas[1].Tem("Valores/ISS") && notas[2].Tem("Doc"));
  EXPECT_TRUE(!notas[0].Vazio() && notas[1].Filho<"Valores">().Vazio() && notas[2].Filho<"Valores">().Vazio());
  EXPECT_EQ(notas[0].Filho<"Valores">().Texto("ISS") + notas[0].Texto("Numero"), "51");
  EXPECT_THROW(notas[2].Texto("Numero"), EXML) << "structured";
  EXPECT_THROW(notas[3], std::out_of_range);
  EXPECT_FALSE(notas[2].Filho<"Valores">().Presente());
  EXPECT_EQ(raiz->Filho<"Lote">().Itens<"Nota">().Count() + raiz->Itens<"Lote/Nota">().Count(), 0U);
}

// What can't be parsed stays so for every root that is tried, also when the file has changed meanwhile.
TEST(XMLFormato, ArquivoDeVariasRaizesELidoUmaVez) {
  const TPastaTemporaria pasta;
  const auto caminho = pasta.Gravar("a.xml", "<Raiz><ns2:Nota xmlns:ns2='u'/></Raiz>");
  TArquivoXML arquivo(caminho);
  EXPECT_FALSE(Load<TRaizTeste>(arquivo, {.Tag = "raiz"}));
  pasta.Gravar("a.xml", "<quebrado");
  EXPECT_EQ(Load<TRaizTeste>(arquivo, {.Tag = "Raiz"})->Itens<"Nota">().Count(), 0U);
  EXPECT_EQ(Load<TRaizTeste>(arquivo, {.Tag = "Raiz", .Prefixos = kPrefixos})->Itens<"Nota">().Count(), 1U);
  TArquivoXML quebrado(caminho);
  EXPECT_THROW(quebrado.Documento(), EXML);
  pasta.Gravar("a.xml", "<Raiz/>");
  EXPECT_THROW(quebrado.Documento(kPrefixos), EXML);
  EXPECT_THROW(quebrado.Documento(), EXML);
  const auto topo = Abrir("<?xml version='1.0'?><!DOCTYPE a []><!-- --><?x?><a><!-- -->b<?y?></a><!-- -->");
  EXPECT_EQ(topo->NosAntesDaRaiz() * 10 + topo->NosDepoisDaRaiz(), 41U);
  EXPECT_EQ(Abrir("<a/>")->NosAntesDaRaiz() + Abrir("<a/>")->NosDepoisDaRaiz(), 0U);
}

}  // namespace impnfse::testes::xml
