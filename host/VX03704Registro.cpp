#include "VX03704Registro.h"

#include <atomic>

#include "VXDataAccess.h"

namespace impnfse {
namespace {

// The text of a data set's cell as the field's type. NULL leaves what a new register has.
void Ler(String& campo, const String& texto) { campo = texto; }
void Ler(TTextoLivre& campo, const String& texto) { campo = texto; }
void Ler(Int64& campo, const String& texto) { campo = StrToInt64Def(texto, 0); }
void Ler(int& campo, const String& texto) { campo = StrToIntDef(texto, 0); }
void Ler(Currency& campo, const String& texto) { campo = ConverterCurrency(texto); }
void Ler(TDateTime& campo, const String& texto) { campo = ConverteData(texto, fdAnoMesDia); }
template <class Enumeracao>
requires std::is_enum_v<Enumeracao>
void Ler(Enumeracao& campo, const String& texto) { campo = static_cast<Enumeracao>(StrToIntDef(texto, 0)); }

}  // namespace

template <class Registro>
void TRegistroDe<Registro>::AssignDataSet(const TVXClientDataSet& linha) {
  auto& registro = static_cast<Registro&>(*this);
  std::apply(
      [&](auto... campo) {
        ((linha.TemColuna(campo.Nome) ? Ler(registro.*campo.Membro, linha.FieldByName(campo.Nome).GetAsString())
                                      : void()),
         ...);
      },
      Campos());
}

template class TRegistroDe<TDadosRegistro0150>;
template class TRegistroDe<TDadosRegistro0200>;
template class TRegistroDe<TDadosRegistroA100>;
template class TRegistroDe<TDadosRegistroA170>;
template class TRegistroDe<TDadosRegistroA17R>;
template class TRegistroDe<TDadosRegistro0000MSG>;

bool TDadosRegistroA170::DeveIncluir() const {
  return GetIDREG0200() != 0 || GetVL_ITEM() != 0 || GetVL_DESC() != 0 || GetVL_BC_ISS() != 0 || GetVL_ISS() != 0 ||
         GetALIQ_ISS() != 0 || GetDEDUCAOISS() != 0;
}

TDadosRegistro0000MSG::TDadosRegistro0000MSG() {
  static std::atomic<Int64> proximo{0};
  FNumeroCorrente = ++proximo;
}

void TDadosRegistroA100::InserirA17R(const TValoresA17R& valores) {
  auto registro = std::make_unique<TDadosRegistroA17R>();
  registro->SetIDREG0000(GetIDREG0000());
  registro->SetIDREGA17R(valores.IDREGA17R);
  registro->SetIDREGA100(GetIDREGA100());
  registro->SetCOD_RECEITA(valores.COD_RECEITA);
  registro->SetVL_BC(valores.VL_BC);
  registro->SetVL_IMPOSTO(valores.VL_IMPOSTO);
  registro->SetALIQUOTA(valores.ALIQUOTA);
  const auto chave = registro->GetChaveDicionario();
  FListaDadosA17R.Add(chave, std::move(registro));
}

bool TDadosRegistroA100::CarregouA17R(const TValoresA17R& valores) {
  InserirA17R(valores);
  return true;
}

}  // namespace impnfse
