// The format of INFISC files: one note, one note in a transmission envelope, or a batch of notes.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoINFISC = Formato(
    "envioLote: @versao, Documento=CNPJ|CPF, dhTrans, NFS-e(NFSe)", "lote: NFS-e*(NFSe)", "NFSe: infNFSe(InfNFSe)",
    "InfNFSe: @versao, Id(Id), emit(Emit), prest(Emit), TomS(TomS), det*(Det), total(Total), cobr(Cobr), "
    "Observacoes(Observacoes), reemb(Reemb), ISSST(ISSST), infAdicLT, infAdic, faturas(Faturas)",
    "Id: cNFS-e, natOp, mod, serie, nNFS-e, dEmi, dSaiEnt, tpNF, cMunFG, refNF, tpImp, tpEmis, anulada, cancelada, "
    "notadebito",
    "Emit: Documento=CNPJ|CPF, xNome, xFant, IM, end(End), IE, regimeTrib",
    "End: xLgr, nro, xBairro, cMun, xMun, xCpl, UF, CEP, cPais, xPais, fone, IE, IEST, IMSTS",
    "TomS: Documento=CNPJ|CPF, xNome, ender(Ender), IE, Praca",
    "Ender: xLgr, nro, xCpl, xBairro, cMun, xMun, UF, CEP, cPais, xPais, fone", "Det: nItem, serv(Serv), ISSST(ISSST)",
    "Serv: cServ, xServ, uTrib, qTrib, vUnit, vServ, vDesc, vBCISS, pISS, vISS, pRetINSS, vRetINSS, cLCServ, "
    "localTributacao, localVerifResServ, vBCINSS, vRed, vBCRetIR, pRetIR, vRetIR, vBCCOFINS, pRetCOFINS, vRetCOFINS, "
    "vBCCSLL, pRetCSLL, vRetCSLL, vBCPISPASEP, pRetPISPASEP, vRetPISPASEP",
    "ISSST: pRedBCST, vRedBCST, vBCST, pISSST, vISSST",
    "Total: vReemb, vServ, vDesc, vOutro, vtNF, vtLiq, Ret(Ret), fat(Fat), ISS(ISS)",
    "Ret: xRetIRF, pRetIRF, vRetIRF, xRetLei10833-PIS-PASEP, pRetLei10833-PIS-PASEP, vRetLei10833-PIS-PASEP, "
    "xRetLei10833-COFINS, pRetLei10833-COFINS, vRetLei10833-COFINS, xRetLei10833-CSLL, pRetLei10833-CSLL, "
    "vRetLei10833-CSLL, xRetINSS, vtRetINSS",
    "ISS: vBCISS, vISS, vBCSTISS, vSTISS", "Fat: nFat, vOrig, vDesc, vLiq, nItem, dVenc, vFat, tipoVencFat",
    "Faturas: fat(Fat)", "Cobr: dup(Dup)", "Dup: nDup, dVenc, vDup, urlBol, bBol", "Observacoes: xinf",
    "Reemb: nItemReemb, nTit, cReemb, xReemb, uReemb, qReemb, vReemb, vRepass, vLiquid, tPagto, nLote, dPagto, vDesc");

template <TTextoFixo Tipo>
using IXMLINFISC = TElemento<kFormatoINFISC, Tipo>;

}  // namespace impnfse
