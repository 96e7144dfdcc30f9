// The fiscal registers, after the Brazilian EFD books. All of them stand under a period record (0000) of the branch.
// They are plain holders: a getter and a setter per field, under the field's name in the register layout. Numbers start
// at 0, texts empty, dates unset. Money, quantities and rates are Currency; a rate is in percent.
#pragma once

#include "SobDemanda.h"
#include "VX03704Dicionario.h"
#include "VX03704RegistroCampos.h"
#include "VX03704Tipos.h"

namespace impnfse {

class TVXClientDataSet;
class TDadosRegistro0150;
class TDadosRegistro0200;
class TDadosRegistroA100;
class TDadosRegistroA170;
class TDadosRegistroA17R;
class TDadosRegistro0000MSG;

// Receives each kind of register; the database store is one.
class IGravadorRegistros {
 public:
  virtual void Gravar(const TDadosRegistro0150&) = 0;
  virtual void Gravar(const TDadosRegistro0200&) = 0;
  virtual void Gravar(const TDadosRegistroA100&) = 0;
  virtual void Gravar(const TDadosRegistroA170&) = 0;
  virtual void Gravar(const TDadosRegistroA17R&) = 0;
  virtual void Gravar(const TDadosRegistro0000MSG&) = 0;

 protected:
  ~IGravadorRegistros() = default;
};

// The base of all registers.
class TDadosRegistroSped {
 public:
  virtual ~TDadosRegistroSped() = default;

  // The register's key in its owner's dictionary: its own id as text, so that lines never overwrite each other.
  virtual String GetChaveDicionario() const = 0;
  // The period record that the register belongs to.
  virtual Int64 GetIDREG0000() const { return FIDREG0000; }
  // Whether the register has something to write.
  virtual bool DeveIncluir() const { return true; }
  virtual void SetIDREG0000(Int64 valor) { FIDREG0000 = valor; }
  // Takes over another register of the same class, children included. Raises std::bad_cast for another class.
  virtual void Assign(const TDadosRegistroSped& outro) = 0;
  // Takes over the fields that the current row of the data set has; the others keep their value.
  virtual void AssignDataSet(const TVXClientDataSet& linha) = 0;
  // Hands the register, under its own class, to whoever stores it.
  virtual void EntregarA(IGravadorRegistros& gravador) const = 0;

  // Free auxiliary text: the nature of the operation, or a flag of the layout.
  const String& GetAUX1() const { return FAUX1; }
  void SetAUX1(String valor) { FAUX1 = std::move(valor); }
  // Additional key for the register's duplicate test.
  const String& GetChaveCondicaoAdicional() const { return FChaveCondicaoAdicional; }
  void SetChaveCondicaoAdicional(String valor) { FChaveCondicaoAdicional = std::move(valor); }

  static constexpr auto CamposComuns() {
    using R = TDadosRegistroSped;
    return std::make_tuple(Campo("IDREG0000", &R::FIDREG0000), Campo("AUX1", &R::FAUX1),
                           Campo("ChaveCondicaoAdicional", &R::FChaveCondicaoAdicional));
  }

 protected:
  TDadosRegistroSped() = default;
  TDadosRegistroSped(const TDadosRegistroSped&) = default;
  TDadosRegistroSped& operator=(const TDadosRegistroSped&) = default;

 private:
  Int64 FIDREG0000 = 0;
  String FAUX1;
  String FChaveCondicaoAdicional;
};

// What is the same in every register class, told once.
template <class Registro>
class TRegistroDe : public TDadosRegistroSped {
 public:
  void Assign(const TDadosRegistroSped& outro) final {
    static_cast<Registro&>(*this) = dynamic_cast<const Registro&>(outro);
  }
  void AssignDataSet(const TVXClientDataSet& linha) final;
  void EntregarA(IGravadorRegistros& gravador) const final { gravador.Gravar(static_cast<const Registro&>(*this)); }

  // All fields, those of the base first: a tuple of TCampo.
  static constexpr auto Campos() {
    return std::tuple_cat(TDadosRegistroSped::CamposComuns(), Registro::CamposProprios());
  }
};

// 0150, participant: the other party of the company's documents, kept per company.
class TDadosRegistro0150 final : public TRegistroDe<TDadosRegistro0150> {
#define IMPNFSE_CAMPOS_0150(CAMPO)                                                      \
  CAMPO(Int64, IDREG0150)                                                               \
  CAMPO(String, COD_PART) /* the participant's number, as decimal text */               \
  CAMPO(String, NOME)     /* corporate name */                                          \
  CAMPO(String, CNPJ)     /* 14 characters or empty */                                  \
  CAMPO(String, CPF)      /* fewer than 14 characters or empty */                       \
  CAMPO(String, IE)       /* state registration */                                      \
  CAMPO(int, COD_MUN)     /* federal code of the municipality; 0 where there is none */ \
  CAMPO(String, MUNICIPIO)                                                              \
  CAMPO(Int64, IDMUNICIPIO) /* id in CA06_MUNICIPIO */                                  \
  CAMPO(String, ENDERECO)                                                               \
  CAMPO(String, NUM)                                                                    \
  CAMPO(String, COMPL)                                                                  \
  CAMPO(String, BAIRRO)                                                                 \
  CAMPO(String, UF)                                                                     \
  CAMPO(int, COD_PAIS)          /* country by the Central Bank's table; 1058, Brazil */ \
  CAMPO(String, OPTANTESIMPLES) /* "S", "N" or empty: opted for the Simples regime */   \
  CAMPO(TTipoExtensaoArquivo, TPIMPORTACAO)
  IMPNFSE_CAMPOS(TDadosRegistro0150, IMPNFSE_CAMPOS_0150)
#undef IMPNFSE_CAMPOS_0150

 public:
  static constexpr std::string_view kTabela = "ES02_REG0150";
  static constexpr std::string_view kColunaId = "IDREG0150";
  // Brazil in the Central Bank's table of countries.
  static constexpr int kBrasil = 1058;

  TDadosRegistro0150() { SetCOD_PAIS(kBrasil); }
  String GetChaveDicionario() const override { return std::to_string(GetIDREG0150()); }
  // The number that identifies the party: the CNPJ, or the CPF where there is none.
  const String& GetDocumento() const { return GetCNPJ().empty() ? GetCPF() : GetCNPJ(); }
};

// 0200, item: one service by its description.
class TDadosRegistro0200 final : public TRegistroDe<TDadosRegistro0200> {
#define IMPNFSE_CAMPOS_0200(CAMPO)                                                      \
  CAMPO(Int64, IDREG0200)                                                               \
  CAMPO(String, COD_ITEM)                                                               \
  CAMPO(String, COD_PART)                                                               \
  CAMPO(TEmissao, IND_EMIT)                                                             \
  CAMPO(TTextoLivre, DESCR_ITEM)                                                        \
  CAMPO(int, TIPO_ITEM) /* 9, services */                                               \
  CAMPO(int, COD_GEN)                                                                   \
  CAMPO(String, COD_LST) /* item of the list of Lei Complementar 116, as in the note */ \
  CAMPO(String, UNID_INV)                                                               \
  CAMPO(TTipoExtensaoArquivo, TPIMPORTACAO)
  IMPNFSE_CAMPOS(TDadosRegistro0200, IMPNFSE_CAMPOS_0200)
#undef IMPNFSE_CAMPOS_0200

 public:
  static constexpr std::string_view kTabela = "ES02_REG0200";
  static constexpr std::string_view kColunaId = "IDREG0200";

  String GetChaveDicionario() const override { return std::to_string(GetIDREG0200()); }

  // Whether the stored description loses its special characters (see SemCaracteresEspeciais).
  void SetRemoverCaracteresEspeciaisNome(bool valor) { FRemoverCaracteresEspeciaisNome = valor; }
  // The value for it from the word of the company's configuration: bit value 1.
  static bool GetRemoverCaracteresEspeciaisDescricaoNFSe(int configuracao) { return (configuracao & 1) != 0; }
  // The description as it is stored, and as items are told apart.
  String GetDescricaoArmazenada() const {
    return FRemoverCaracteresEspeciaisNome ? SemCaracteresEspeciais(GetDESCR_ITEM().Valor) : GetDESCR_ITEM().Valor;
  }

 private:
  bool FRemoverCaracteresEspeciaisNome = false;
};

// A170, item of a service document.
class TDadosRegistroA170 final : public TRegistroDe<TDadosRegistroA170> {
#define IMPNFSE_CAMPOS_A170(CAMPO)                                                        \
  CAMPO(Int64, IDREGA170)                                                                 \
  CAMPO(Int64, IDREGA100)                                                                 \
  CAMPO(Int64, IDREG0200)                                                                 \
  CAMPO(int, NUM_ITEM)                                                                    \
  CAMPO(String, COD_ITEM)                                                                 \
  CAMPO(Currency, QTD)                                                                    \
  CAMPO(String, UNID)                                                                     \
  CAMPO(Currency, VL_ITEM)                                                                \
  CAMPO(Currency, VL_DESC)                                                                \
  CAMPO(Currency, VL_BC_ISS)                                                              \
  CAMPO(Currency, VL_ISS)                                                                 \
  CAMPO(Currency, ALIQ_ISS)                                                               \
  CAMPO(Currency, DEDUCAOISS)                                                             \
  CAMPO(String, ATIVIDADE) /* activity code, after FormatarCodigoAtividade */             \
  CAMPO(String, CFOPICMS)                                                                 \
  CAMPO(String, CFOPISS)                                                                  \
  CAMPO(String, MUNICIPIODEVISS) /* federal code of the municipality that gets the ISS */ \
  CAMPO(String, TPRECOLHIMENTO)  /* kind of payment, where the layout has it */
  IMPNFSE_CAMPOS(TDadosRegistroA170, IMPNFSE_CAMPOS_A170)
#undef IMPNFSE_CAMPOS_A170

 public:
  static constexpr std::string_view kTabela = "ES02_REGA170";
  static constexpr std::string_view kColunaId = "IDREGA170";

  String GetChaveDicionario() const override { return std::to_string(GetIDREGA170()); }
  // True when it names an item or carries a value; its quantity, number and ids say nothing.
  bool DeveIncluir() const override;
};

// A17R, retained tax of a service document.
class TDadosRegistroA17R final : public TRegistroDe<TDadosRegistroA17R> {
#define IMPNFSE_CAMPOS_A17R(CAMPO)                                                                \
  CAMPO(Int64, IDREGA17R)                                                                         \
  CAMPO(Int64, IDREGA100)                                                                         \
  CAMPO(String, COD_RECEITA) /* 1010 ISS, 0714 IR, 0910 INSS, 1101 PIS, 1102 COFINS, 1103 CSLL */ \
  CAMPO(Currency, VL_BC)                                                                          \
  CAMPO(Currency, VL_IMPOSTO)                                                                     \
  CAMPO(Currency, ALIQUOTA) /* per cent; 0 where the layout gives the tax none */
  IMPNFSE_CAMPOS(TDadosRegistroA17R, IMPNFSE_CAMPOS_A17R)
#undef IMPNFSE_CAMPOS_A17R

 public:
  static constexpr std::string_view kTabela = "ES02_REGA17R";
  static constexpr std::string_view kColunaId = "IDREGA17R";

  String GetChaveDicionario() const override { return std::to_string(GetIDREGA17R()); }
  // True when something was retained.
  bool DeveIncluir() const override { return GetVL_IMPOSTO() != 0; }
};

// MSG, a free-text line of a document.
class TDadosRegistro0000MSG final : public TRegistroDe<TDadosRegistro0000MSG> {
#define IMPNFSE_CAMPOS_MSG(CAMPO)                   \
  CAMPO(Int64, IDREG) /* the document: IDREGA100 */ \
  CAMPO(TTextoLivre, INFORMACAO4)
  IMPNFSE_CAMPOS(TDadosRegistro0000MSG, IMPNFSE_CAMPOS_MSG)
#undef IMPNFSE_CAMPOS_MSG

 public:
  static constexpr std::string_view kTabela = "ES02_REG0000MSG";
  static constexpr std::string_view kColunaId = "IDREG0000MSG";

  TDadosRegistro0000MSG();
  // Messages have no id before they are stored: they are keyed by a running number.
  String GetChaveDicionario() const override { return std::to_string(FNumeroCorrente); }
  // True when there is a text.
  bool DeveIncluir() const override { return !GetINFORMACAO4().Valor.empty(); }

 private:
  Int64 FNumeroCorrente;
};

// A100, service document: one note seen from one side. It owns its items, retained taxes and messages; a copy has
// copies of them.
class TDadosRegistroA100 final : public TRegistroDe<TDadosRegistroA100> {
#define IMPNFSE_CAMPOS_A100(CAMPO)                                                                             \
  CAMPO(Int64, IDREGA100)                                                                                      \
  CAMPO(TTipoExtensaoArquivo, TPIMPORTACAO)                                                                    \
  CAMPO(String, CAMINHOARQORIG) /* the file as found */                                                        \
  CAMPO(String, CAMINHOARQDEST) /* its place in the archive, as asked for: the move may find the name taken */ \
  CAMPO(TTipoOperacao, IND_OPER)                                                                               \
  CAMPO(TEmissao, IND_EMIT)                                                                                    \
  CAMPO(String, COD_PART)                                                                                      \
  CAMPO(String, COD_MOD)                                                                                       \
  CAMPO(int, COD_SIT) /* 0 regular, 2 cancelled */                                                             \
  CAMPO(String, SER)                                                                                           \
  CAMPO(Int64, NUM_DOC)                                                                                        \
  CAMPO(String, CHV_NFSE) /* verification code of the note */                                                  \
  CAMPO(TDateTime, DT_DOC)                                                                                     \
  CAMPO(TDateTime, DT_EXE_SERV) /* date of execution */                                                        \
  CAMPO(String, IND_PGTO)                                                                                      \
  CAMPO(Currency, VL_DOC)                                                                                      \
  CAMPO(Currency, VL_DESC)                                                                                     \
  CAMPO(Currency, VL_ISS)                                                                                      \
  CAMPO(Currency, VL_PIS)                                                                                      \
  CAMPO(Currency, VL_COFINS)                                                                                   \
  CAMPO(Currency, VL_PIS_RET)                                                                                  \
  CAMPO(Currency, VL_COFINS_RET)                                                                               \
  CAMPO(Currency, VL_BC_PIS)                                                                                   \
  CAMPO(Currency, VL_BC_COFINS)                                                                                \
  CAMPO(int, TEMISSRETIDO) /* 1 when ISS is retained */
  IMPNFSE_CAMPOS(TDadosRegistroA100, IMPNFSE_CAMPOS_A100)
#undef IMPNFSE_CAMPOS_A100

 public:
  static constexpr std::string_view kTabela = "ES02_REGA100";
  static constexpr std::string_view kColunaId = "IDREGA100";

  // The values of one retained tax.
  struct TValoresA17R {
    Int64 IDREGA17R = 0;
    String COD_RECEITA;
    Currency VL_BC;
    Currency VL_IMPOSTO;
    Currency ALIQUOTA;
  };

  String GetChaveDicionario() const override { return std::to_string(GetIDREGA100()); }

  // The participant that the document carries.
  TDadosRegistro0150& GetDados0150() { return *FDados0150; }
  const TDadosRegistro0150& GetDados0150() const { return *FDados0150; }

  TDicionario<TDadosRegistroA170>& GetListaDadosA170() { return FListaDadosA170; }
  TDicionario<TDadosRegistroA17R>& GetListaDadosA17R() { return FListaDadosA17R; }
  TDicionario<TDadosRegistro0000MSG>& GetListaMSG() { return FListaMSG; }

  // Makes a retained tax of this document and adds it, also when its value is 0: what is written is decided later.
  void InserirA17R(const TValoresA17R& valores);
  // The same; true once it was added.
  bool CarregouA17R(const TValoresA17R& valores);

  // Completes a document that is already stored, in place, instead of adding one: its row is updated, and the kinds of
  // children that this document brings replace the stored ones.
  void SetUtilizarUpdateORInsert(bool valor) { FUtilizarUpdateORInsert = valor; }
  bool GetUtilizarUpdateORInsert() const { return FUtilizarUpdateORInsert; }

 private:
  TSobDemanda<TDadosRegistro0150> FDados0150;
  TDicionario<TDadosRegistroA170> FListaDadosA170;
  TDicionario<TDadosRegistroA17R> FListaDadosA17R;
  TDicionario<TDadosRegistro0000MSG> FListaMSG;
  bool FUtilizarUpdateORInsert = false;
};

// An auxiliary maintenance record of the suite's load.
class TRegistroAuxManutencao {
#define IMPNFSE_CAMPOS_AUX(CAMPO)                          \
  CAMPO(Int64, IDREG0000)                                  \
  CAMPO(Int64, IDREG) /* the register that it completes */ \
  CAMPO(String, Tipo)                                      \
  CAMPO(String, Campo)                                     \
  CAMPO(String, Valor)                                     \
  CAMPO(String, ChaveAdicional)
  IMPNFSE_CAMPOS(TRegistroAuxManutencao, IMPNFSE_CAMPOS_AUX)
#undef IMPNFSE_CAMPOS_AUX

 public:
  static constexpr std::string_view kTabela = "ES02_AUXMANUTENCAO";
  static constexpr std::string_view kColunaId = "IDAUXMANUTENCAO";
  static constexpr auto Campos() { return CamposProprios(); }
};

// 0000, period record: one month of one branch.
class TDadosRegistro0000 {
#define IMPNFSE_CAMPOS_0000(CAMPO)                      \
  CAMPO(Int64, IDREG0000)                               \
  CAMPO(Int64, IDEMPRESA)                               \
  CAMPO(Int64, IDFILIAL)                                \
  CAMPO(TDateTime, DT_INI) /* first day of the month */ \
  CAMPO(TDateTime, DT_FIN) /* last day of the month */
  IMPNFSE_CAMPOS(TDadosRegistro0000, IMPNFSE_CAMPOS_0000)
#undef IMPNFSE_CAMPOS_0000

 public:
  static constexpr std::string_view kTabela = "ES02_REG0000";
  static constexpr std::string_view kColunaId = "IDREG0000";
  static constexpr auto Campos() { return CamposProprios(); }
};

// The layout that a branch used last.
class TLinhaImportaCfg {
#define IMPNFSE_CAMPOS_IMPORTACFG(CAMPO)     \
  CAMPO(Int64, IDEMPRESA)                    \
  CAMPO(Int64, IDFILIAL)                     \
  CAMPO(int, ORIGEM) /* 1000: this module */ \
  CAMPO(int, TP)     /* 3: NFS-e */          \
  CAMPO(TDateTime, DATAINICIO)               \
  CAMPO(String, INFORMACAO3) /* ES02_SERVICOLEIAUTE.CODIGO */
  IMPNFSE_CAMPOS(TLinhaImportaCfg, IMPNFSE_CAMPOS_IMPORTACFG)
#undef IMPNFSE_CAMPOS_IMPORTACFG

 public:
  static constexpr std::string_view kTabela = "CA06_IMPORTACFG";
  static constexpr std::string_view kColunaId = "SEQUENCIA";
  static constexpr auto Campos() { return CamposProprios(); }
};

}  // namespace impnfse
