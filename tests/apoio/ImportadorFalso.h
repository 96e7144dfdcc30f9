// An importer whose run a test writes: it stands where a real one would, with all steps of the base at hand.
#pragma once

#include "Apoio.h"

namespace impnfse::testes {

class TImportadorFalso : public TNFSeBase {
 public:
  using TAcao = std::function<void(TImportadorFalso&)>;
  static inline TAcao AoCarregar;  // what the next importer does

  TImportadorFalso() : TNFSeBase(false) {}

  void Carregar() override {
    TNFSeBase::Carregar();
    AoCarregar(*this);
  }
  String GetCNPJCPFEmitente() override { return Emitente; }
  String GetCNPJCPFDestinatario() override { return Destinatario; }
  TDateTime GetData() override { return Data; }
  // The values that CarregarA17R asks for.
  bool GetDocumentoTemISSRetido() override { return ISSRetido; }
  Currency GetBaseCalculo() override { return 100; }
  Currency GetValorISS() override { return 5; }
  Currency GetAliquotaISS() override { return 2; }
  Currency GetValorIR() override { return 1; }
  Currency GetValorCSLL() override { return 4; }

  String Emitente = kCNPJFilial;
  String Destinatario;
  TDateTime Data = DataDe(2026, 3, 15);
  bool ISSRetido = false;

  // A whole document with that number; `recheio` adds to it before it is stored.
  void Documento(const String& numero, const std::function<void()>& recheio = {}) {
    CarregarDosDoisLados(
        numero,
        [&] {
          IniciarA100();
          CarregarCabecalhoA100(StrToInt64Def(numero, 0));
          CarregarExecucaoA100(GetData());
          if (recheio) recheio();
          ConcluirA100();
        },
        "Documento: " + numero + " - ");
  }
  void Falhar(const String& erro) { Erro = erro; }

  using TNFSeBase::AdicionarA170, TNFSeBase::BuscarOuInserirParticipante, TNFSeBase::CarregarA17R,
      TNFSeBase::CarregarItem, TNFSeBase::CarregarUmaComProgresso, TNFSeBase::ComErroEstrutura, TNFSeBase::GetDadosA100,
      TNFSeBase::NovoA170, TNFSeBase::PercorrerNotasComProgresso;
};

// Runs that importer from the front end, as dispatch does.
class TTesteComImportador : public TTesteComBanco {
 protected:
  class TFront : public TImpNFSe {
   public:
    void Carregar() override {
      TArquivoImpBase::Carregar();
      const auto criar = []() -> std::unique_ptr<TNFSeBase> { return std::make_unique<TImportadorFalso>(); };
      CarregarNFSe({.Id = 99, .Classe = "TNFSeFalso", .Criar = criar, .Variacao = Variacao});
    }
    TVariacaoNFSe Variacao = TVariacaoNFSe::Nenhuma;
  };

  // A run over the file nota.xml; what came of it is in Front.
  void Executar(TImportadorFalso::TAcao acao, TVariacaoNFSe variacao = TVariacaoNFSe::Nenhuma,
                const String& leiaute = "43", const String& tipo = "NFSE") {
    TImportadorFalso::AoCarregar = std::move(acao);
    Front = std::make_unique<TFront>();
    Front->Variacao = variacao;
    Front->BarraProgresso = Barra;
    Front->OnArquivoCarregado = Retorno;
    Front->DadosArquivo = {
        .Arquivo = Pasta.Gravar("nota.xml", "x"), .CodigoLeiaute = leiaute, .TipoImportacao = tipo, .IDFILIAL = 1};
    Front->Start();
    Front->WaitFor();
  }
  // What a run tells: the worker's flag and last error, the front end's flag, where the file is, the error list.
  String Resultado() {
    const auto& r = Front->GetResumo();
    return fmt::format("{}, {}, {}, {}: {}", r.Importou ? "importou" : "não importou", r.Erro,
                       Front->GetTemErros() ? "tem erros" : "sem erros", Pasta.Tem("nota.xml") ? "ficou" : "foi",
                       Substituir(Erros(*Front), "\n", "; "));
  }

  std::unique_ptr<TFront> Front;
  TVXBarraProgresso* Barra = nullptr;
  std::function<void(TArquivoImpBase*)> Retorno;
};

}  // namespace impnfse::testes
