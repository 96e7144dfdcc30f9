// The XML document and the binding of formats.
#include <chrono>

#include "Apoio.h"
#include "XMLFormato.h"

namespace impnfse::testes {
namespace {

using namespace std::string_literals;

std::shared_ptr<const TDocumentoXML> Abrir(std::string_view xml) {
  const TPastaTemporaria pasta;
  return LoadXMLDocument(pasta.Gravar("a.xml", xml));
}

// The text of the root's child; of the root itself when `filho` is empty.
String Texto(const TDocumentoXML& d, std::string_view filho = "") {
  const auto no = filho.empty() ? d.Raiz() : d.Filho(d.Raiz(), filho);
  return no == TNoXML::Nenhum ? "(ausente)" : String(d.Texto(no));
}

String Malformado(std::string_view xml) {
  try {
    Abrir(xml);
  } catch (const EXML& erro) {
    return erro.what();
  }
  return {};
}

// ASCII and Latin-1 text as UTF-16.
String UTF16(std::u16string_view texto, bool maiorPrimeiro) {
  String bytes;
  for (const char16_t c : texto) {
    const auto alto = static_cast<char>(c >> 8U);
    const auto baixo = static_cast<char>(c & 0xFFU);
    bytes += maiorPrimeiro ? String{alto, baixo} : String{baixo, alto};
  }
  return bytes;
}

TEST(XMLDocumento, Codificacoes) {
  const std::u16string_view utf16 = u"\uFEFF<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>não €</a>";
  const std::vector<std::pair<const char*, String>> casos = {
      {"UTF-8 without declaration", "<a>não €</a>"},
      {"UTF-8 with mark", "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?><a>não €</a>"},
      {"UTF-16 LE", UTF16(utf16, false)},
      {"UTF-16 BE", UTF16(utf16, true)},
      {"Windows-1252", "<?xml version=\"1.0\" encoding=\"Windows-1252\"?><a>n\xE3o \x80</a>"},
      {"ISO-8859-1 and a reference", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>n\xE3o &#8364;</a>"}};
  for (const auto& [nome, bytes] : casos) EXPECT_EQ(Texto(*Abrir(bytes)), "não €") << nome;
  EXPECT_NE(Malformado("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>n\xE3o</a>"), "");
  EXPECT_NE(Malformado("<a>n\xE3o</a>"), "") << "what isn't declared is UTF-8";
  EXPECT_NE(Malformado("<?xml version=\"1.0\" encoding=\"x-inventada\"?><a>x</a>"), "");
}

TEST(XMLDocumento, MalformadoLevanta) {
  auto casos = Casos(
      "texto | \x7F\x45LF\1\2\3 | <a> | <a><b></a></b> | <a></A> | <a/><b/> | <a/>lixo | lixo<a/> | <a>x & y</a> | "
      "<a>x < "
      "y</a> | <a>&falta;</a> | <a>&#x1;</a> | <a>\x01</a> | <a b=1/> | <a b=\"1\" b=\"2\"/> | <a b=\"<\"/> | <1a/> | "
      "<a><!-- "
      "-- --></a> | <a><![CDATA[x</a> |  <?xml version=\"1.0\"?><a/> | {\"a\": 1} | <a>]]></a>");
  for (const auto& caso : {""s, " "s, "<a>\0</a>"s, "<a>" + String(1000, 'x')}) casos.emplace_back(caso, "");
  for (const auto& [xml, ignorado] : casos)
    EXPECT_TRUE(Malformado(xml).starts_with("XML malformado na linha ")) << xml << " -> " << Malformado(xml);
  EXPECT_EQ(Malformado("<a>\n\n<b></a>"), "XML malformado na linha 3.");
  const TPastaTemporaria pasta;
  EXPECT_THROW(LoadXMLDocument(pasta / "falta.xml"), EArquivo);
  EXPECT_THROW(LoadXMLDocument(pasta / "."), EArquivo);
}

TEST(XMLDocumento, EntradaHostilTemLimite) {
  const auto inicio = std::chrono::steady_clock::now();
  String bomba = "<!DOCTYPE a [<!ENTITY e0 \"hahahahaha\">";
  for (int i = 1; i < 12; ++i) {
    bomba += fmt::format("<!ENTITY e{} \"", i);
    for (int j = 0; j < 10; ++j) bomba += fmt::format("&e{};", i - 1);
    bomba += "\">";
  }
  EXPECT_NE(Malformado(bomba + "]><a>&e11;</a>"), "");
  EXPECT_NE(Malformado(bomba + "]><a b=\"&e11;\"/>"), "");
  EXPECT_NE(Malformado("<!DOCTYPE a [<!ENTITY e \"&e;\">]><a>&e;</a>"), "");
  // Quadratic: one long entity, many times.
  String quadratica = "<!DOCTYPE a [<!ENTITY e \"" + String(100000, 'x') + "\">]><a>";
  for (int i = 0; i < 3000; ++i) quadratica += "&e;";
  EXPECT_NE(Malformado(quadratica + "</a>"), "");

  String fundo;
  for (int i = 0; i < 100000; ++i) fundo += "<a>";
  EXPECT_NE(Malformado(fundo), "");
  for (int i = 0; i < 100000; ++i) fundo += "</a>";
  EXPECT_NE(Malformado(fundo), "");
  EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(5));
}

TEST(XMLDocumento, NadaForaDoArquivoELido) {
  const TPastaTemporaria pasta;
  const auto segredo = pasta.Gravar("segredo.txt", "SEGREDO");
  for (const auto& xml :
       {fmt::format("<!DOCTYPE a [<!ENTITY e SYSTEM \"file://{}\">]><a>&e;</a>", segredo),
        fmt::format("<!DOCTYPE a [<!ENTITY % p SYSTEM \"{}\"> %p;]><a>x</a>", segredo),
        fmt::format("<!DOCTYPE a [<!ENTITY e SYSTEM \"{}\"><!ENTITY f \"&e;\">]><a>&f;</a>", segredo)})
    EXPECT_EQ(Malformado(xml), "O arquivo usa uma entidade externa, que não é lida.") << xml;
  // A declaration alone, and the DTD that it names, are passed over.
  EXPECT_EQ(
      Texto(*Abrir(fmt::format("<!DOCTYPE a SYSTEM \"{}\" [<!ENTITY e SYSTEM \"{}\">]><a>x</a>", segredo, segredo))),
      "x");
}

TEST(XMLDocumento, EntidadesInternasEReferencias) {
  const auto d = Abrir(
      "<!DOCTYPE a [<!ENTITY e \"d'&#193;gua\"><!ENTITY n \"<c>1</c><c>2</c>\"><!ATTLIST b k CDATA \"padrão\">]>"
      "<a t=\"&lt;&e;&gt;\"><b>&e; &amp; &e;&#x41;</b>&n;<d>x&n;</d></a>");
  EXPECT_EQ(Texto(*d, "b"), "d'Água & d'ÁguaA");
  EXPECT_EQ(d->Atributo(d->Raiz(), "t"), "<d'Água>");
  EXPECT_EQ(Texto(*d, "c"), "1");
  EXPECT_EQ(d->Texto(d->ProximoIrmao(d->Filho(d->Raiz(), "c"))), "2");
  EXPECT_EQ(d->Atributo(d->Filho(d->Raiz(), "b"), "k"), "padrão");
}

TEST(XMLDocumento, TextoComoEstaNoArquivo) {
  const auto d = Abrir(
      "<?xml version=\"1.0\"?><!-- x --><?pi y?><a>\n  <b> x <!-- c -->y<![CDATA[ <z> & ]]>\r\nw<?pi?> </b>\n"
      "  <vazio/><branco>  </branco><longo>" +
      String(200000, 'l') + "</longo></a><!-- fim -->\n");
  EXPECT_EQ(Texto(*d, "b"), " x y <z> & \nw ");
  EXPECT_EQ(Texto(*d, "vazio"), "");
  EXPECT_EQ(Texto(*d, "branco"), "  ");
  EXPECT_THROW(Texto(*d), EXML) << "a structured element has no text";
  EXPECT_EQ(Abrir("<a>" + Substituir(String(200000, '.'), ".", "é") + "</a>")->Texto(TNoXML{0}).size(), 400000U);
}

TEST(XMLDocumento, NomesComoEscritos) {
  const auto d = Abrir(
      "<a xmlns=\"urn:p\" xmlns:tc=\"urn:t\" tc:k=\"1\" k=\"2\"><tc:Numero>com</tc:Numero><Numero>sem</Numero>"
      "<numero>min</numero></a>");
  EXPECT_EQ(d->Nome(d->Raiz()), "a");
  EXPECT_EQ(Texto(*d, "Numero"), "sem");
  EXPECT_EQ(Texto(*d, "tc:Numero"), "com");
  EXPECT_EQ(Texto(*d, "numero"), "min");
  EXPECT_EQ(d->Atributo(d->Raiz(), "k"), "2");
  EXPECT_EQ(d->Atributo(d->Raiz(), "tc:k"), "1");
  EXPECT_EQ(d->Atributo(d->Raiz(), "xmlns"), "urn:p");
  EXPECT_EQ(d->Atributo(d->Raiz(), "xmlns:tc"), "urn:t");
  EXPECT_EQ(d->Atributo(d->Raiz(), "falta"), "");
}

constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};

TEST(XMLPrefixos, SaemDeTodoOTextoNaOrdem) {
  const auto d = Abrir(
                     "<ns2:a xmlns:ns2=\"urn:ns2:x\" xmlns:ns3=\"urn:3\" ns3:k=\"v ns3:w\"><ns3:b>x ns2:y</ns3:b>"
                     "<c>nsns2:3:z</c><d>nsns3:2:z</d><e><![CDATA[<ns2:q>]]>ns2&#58;</e><f/></ns2:a>")
                     ->SemPrefixos(kPrefixos);
  EXPECT_EQ(d->Nome(d->Raiz()), "a");
  EXPECT_EQ(Texto(*d, "b"), "x y");
  EXPECT_EQ(Texto(*d, "c"), "z") << "what the first leaves, the second takes";
  EXPECT_EQ(Texto(*d, "d"), "ns2:z") << "but not the other way around";
  EXPECT_EQ(Texto(*d, "e"), "<q>");
  EXPECT_EQ(Texto(*d, "f"), "");
  EXPECT_EQ(d->Atributo(d->Raiz(), "k"), "v w");
  EXPECT_EQ(d->Atributo(d->Raiz(), "xmlns:ns2"), "urn:x");
  EXPECT_EQ(Texto(*Abrir("<NS2:a xmlns:NS2='u'>NS2:x</NS2:a>")->SemPrefixos(kPrefixos)), "NS2:x") << "case counts";
}

TEST(XMLPrefixos, OQueRestaDeveSerBemFormado) {
  for (const auto* const xml :
       {"<a xmlns:ns2='u' ns2:k='1' k='2'/>", "<a xmlns:ns2='u' xmlns:ns3='v' ns2:k='1' ns3:k='2'/>",
        "<a><ns2:1b xmlns:ns2='u'/></a>", "<a><ns2:-b xmlns:ns2='u'/></a>", "<a><ns2: xmlns:ns2='u'/></a>"})
    EXPECT_THROW(Abrir(xml)->SemPrefixos(kPrefixos), EXML) << xml;
}

// The binding --------------------------------------------------------------------------------------------------------

constexpr auto kFormatoTeste =
    Formato("Raiz: Lote(Lote), Nota*(Nota), @versao", "Lote: Nota*(Nota)",
            "Nota: Numero, @id, Valores(Valores), Doc=Cnpj|Cpf, Prestador=Prestador|PrestadorServico(Prestador)",
            "Valores: ISS, @moeda", "Prestador: Nome");
using TRaizTeste = TElemento<kFormatoTeste, "Raiz">;

std::optional<TRaizTeste> AbrirTeste(std::string_view xml, std::span<const std::string_view> prefixos = {}) {
  const TPastaTemporaria pasta;
  return Load<TRaizTeste>(pasta.Gravar("a.xml", xml), {.Tag = "Raiz", .Prefixos = prefixos});
}

TEST(XMLFormato, LePorCaminho) {
  const auto raiz = AbrirTeste(
      "<Raiz versao=\"2\"><Outra/><Nota id=\"n1\"><Numero>1</Numero><Numero>2</Numero><Valores "
      "moeda=\"R$\"><ISS>5</ISS>"
      "</Valores><Valores><ISS>6</ISS></Valores><Cpf>f</Cpf><Cnpj>j</Cnpj><PrestadorServico><Nome>P</Nome>"
      "</PrestadorServico></Nota><x:Nota xmlns:x=\"u\"/><Nota><Cpf>f</Cpf><Valores/></Nota><Nota><Cnpj/><Cpf>f</Cpf>"
      "</Nota></Raiz>");
  ASSERT_TRUE(raiz);
  EXPECT_EQ(raiz->Texto("versao"), "2");
  const auto notas = raiz->Itens<"Nota">();
  ASSERT_EQ(notas.Count(), 3U) << "only the item's tag counts";
  EXPECT_EQ(notas[0].Texto("Numero"), "1") << "the first of two";
  EXPECT_EQ(notas[0].Texto("id"), "n1");
  EXPECT_EQ(notas[0].Texto("Valores/ISS"), "5");
  EXPECT_EQ(notas[0].Texto("Valores/moeda"), "R$");
  EXPECT_EQ(notas[0].Filho<"Valores">().Texto("ISS"), "5");
  EXPECT_EQ(notas[0].Texto("Doc"), "j") << "the first tag wins, whatever the order in the file";
  EXPECT_EQ(notas[1].Texto("Doc"), "f");
  EXPECT_EQ(notas[2].Texto("Doc"), "") << "a present first tag wins even when it is empty";
  EXPECT_EQ(notas[0].Texto("Prestador/Nome"), "P");
  EXPECT_EQ(notas[0].Filho<"Prestador">().Texto("Nome"), "P");
  EXPECT_THROW(notas[3], std::out_of_range);
}

TEST(XMLFormato, AusenteEVazioEEstruturadoNaoTemTexto) {
  const auto raiz = AbrirTeste("<Raiz><Nota><Numero><x/></Numero></Nota></Raiz>");
  ASSERT_TRUE(raiz);
  const auto nota = raiz->Itens<"Nota">()[0];
  EXPECT_THROW(nota.Texto("Numero"), EXML);
  EXPECT_EQ(nota.Texto("Valores/ISS"), "");
  EXPECT_EQ(nota.Texto("Valores/moeda"), "");
  EXPECT_FALSE(nota.Filho<"Valores">().Presente());
  EXPECT_EQ(nota.Filho<"Valores">().Texto("ISS"), "");
  EXPECT_EQ(raiz->Filho<"Lote">().Itens<"Nota">().Count(), 0U);
  EXPECT_EQ(raiz->Itens<"Lote/Nota">().Count(), 0U);
  EXPECT_EQ(TRaizTeste().Itens<"Nota">().Count(), 0U);
  EXPECT_EQ(TRaizTeste().Texto("versao"), "");
}

TEST(XMLFormato, RaizDeOutroNomeNaoEErro) {
  EXPECT_FALSE(AbrirTeste("<raiz/>"));
  EXPECT_FALSE(AbrirTeste("<ns2:Raiz xmlns:ns2='u'/>"));
  EXPECT_TRUE(AbrirTeste("<ns2:Raiz xmlns:ns2='u'/>", kPrefixos));
  EXPECT_TRUE(AbrirTeste("<Raiz xmlns='u'/>"));
  EXPECT_THROW(AbrirTeste("<Raiz>"), EXML);
}

TEST(XMLFormato, ItemCustaSempreOMesmo) {
  String xml = "<Raiz>";
  for (int i = 0; i < 100000; ++i) xml += fmt::format("<Nota><Numero>{}</Numero></Nota>", i);
  const auto raiz = AbrirTeste(xml + "</Raiz>");
  ASSERT_TRUE(raiz);
  const auto notas = raiz->Itens<"Nota">();
  const auto inicio = std::chrono::steady_clock::now();
  for (std::size_t i = notas.Count(); i-- > 0;) ASSERT_EQ(notas[i].Texto("Numero"), std::to_string(i));
  EXPECT_LT(std::chrono::steady_clock::now() - inicio, std::chrono::seconds(2));
}

}  // namespace
}  // namespace impnfse::testes
