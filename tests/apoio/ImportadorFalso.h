// An importer whose run a test writes: it stands where a real one would, with all steps of the base at hand.
#pragma once

#include "Apoio.h"

namespace impnfse::testes {

class TImportadorFalso : public TNFSeBase {
 public:
  using TAcao = std::function<void(TImportadorFalso&)>;
  // What the next importers do when they are prepared and when they run.
  static inline TAcao AoInicializar;
  static inline TAcao AoCarregar;

  TImportadorFalso() : TNFSeBase(false) {}
  static std::unique_ptr<TNFSeBase> Criar() { return std::make_unique<TImportadorFalso>(); }

  void InicializarDados(const String& classe) override {
    TNFSeBase::InicializarDados(classe);
    if (AoInicializar) AoInicializar(*this);
  }
  void Carregar() override {
    TNFSeBase::Carregar();
    if (AoCarregar) AoCarregar(*this);
  }
  String GetCNPJCPFEmitente() override { return Emitente; }
  String GetCNPJCPFDestinatario() override { return Destinatario; }
  TDateTime GetData() override { return Data; }
  String GetChave() override { return "CHAVE"; }

  String Emitente = kCNPJFilial;
  String Destinatario;
  TDateTime Data = DataDe(2026, 3, 15);

  // A whole document with that number; `recheio` adds to it before it is stored.
  void Documento(const String& numero, const std::function<void()>& recheio = {}) {
    CarregarDosDoisLados(
        numero,
        [&] {
          IniciarA100();
          CarregarCabecalhoA100(numero);
          if (recheio) recheio();
          ConcluirA100();
        },
        "Documento: " + numero + " - ");
  }
  void Falhar(const String& erro) { Erro = erro; }

  using TNFSeBase::AdicionarA170;
  using TNFSeBase::BuscarOuInserirParticipante;
  using TNFSeBase::CarregarA17R;
  using TNFSeBase::CarregarItem;
  using TNFSeBase::ComErroEstrutura;
  using TNFSeBase::DestroyA100;
  using TNFSeBase::GetDadosA100;
  using TNFSeBase::InserirRetencao;
  using TNFSeBase::NovoA170;
  using TNFSeBase::PercorrerNotasComProgresso;
};

}  // namespace impnfse::testes
