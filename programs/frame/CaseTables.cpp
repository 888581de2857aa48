#include "programs/frame/TableSource.h"

namespace tables {

// Columns and keys of the cases.
const std::vector<TableSource>& caseSources() {
    static const std::vector<TableSource> sources = {
        {121, "RLY_CASE_RLY",
         "Case_No int(4) unsigned, Case_Name char(20), RTypeNo int(3), RTypeCode char(40) BINARY, "
         "Mlf int(1) unsigned, Case_lf int(3) DEFAULT -1, Scheme char(10), NPara int(1) unsigned, "
         "Lgup int(1) unsigned, Note char(100), PartFlg1 int(1) unsigned, PartFlg2 int(1) unsigned, "
         "PartFlg3 int(1) unsigned, PartFlg4 int(1) unsigned, PartFlg5 int(1) unsigned",
         "PRIMARY KEY(Case_No)"},
        {161, "RLY_CASERLYCOP",
         "Case_No int(4) unsigned, RNo int(8) unsigned, PartNo int(1) unsigned, CoRNo int(8) unsigned, "
         "CoPartNo int(1) unsigned",
         "INDEX(Case_No,CoRNo,CoPartNo)"},
        {151, "RLY_CKFCHK",
         "Case_No int(4) unsigned, ZID_Name char(20) BINARY, ZI_Name char(20) BINARY, ZJ_Name char(20) BINARY, "
         "Side int(1), ID_Name char(20) BINARY, I_Name char(20) BINARY, J_Name char(20) BINARY, Sum int(3)",
         "INDEX(Case_No,ZID_Name,ZI_Name,ZJ_Name)"},
        {152, "RLY_FZXSSYS",
         "Case_No int(4) unsigned, ZID_Name char(20) BINARY, ZI_Name char(20) BINARY, ZJ_Name char(20) BINARY, "
         "Side int(1), SysName char(20) BINARY, SysNo int(3) unsigned",
         "INDEX(Case_No)"},
        {154, "RLY_KLMPFAULT",
         "ID_Name char(20) BINARY, I_Name char(20) BINARY, J_Name char(20) BINARY, Side int(1) unsigned, "
         "RuleNo int(5) unsigned, RMode int(2) unsigned, MType int(2) unsigned, FID_Name char(20) BINARY, "
         "FIName char(20) BINARY, FJName char(20) BINARY, K_Loc int(3) unsigned, FType int(1) unsigned, "
         "R double(13,6), X double(13,6), Valid int(1) unsigned, Flg int(1) unsigned",
         "INDEX(ID_Name,I_Name,J_Name,Side,RuleNo,RMode)"},
        {153, "RLY_KLMFSYS", "Case_No int(8) unsigned, SysName char(20) BINARY, SysNo int(3) unsigned",
         "INDEX(Case_No)"},
        {122, "RLY_NPHRLY",
         "Case_No int(4) unsigned, PartNo int(1) unsigned, RNo1 int(8) unsigned, RNo2 int(8) unsigned, "
         "RNo3 int(8) unsigned, RNo4 int(8) unsigned, RNo5 int(8) unsigned",
         "PRIMARY KEY(Case_No)"},
        {123, "RLY_RUDSYS",
         "Case_No int(4) unsigned, SysName char(20) BINARY, SysNo int(6) unsigned, SFlg int(1) unsigned",
         "INDEX(Case_No)"},
        {124, "RLY_CASEINF",
         "Case_No int(4) unsigned, TurnNo int(6) unsigned, RNO int(8) unsigned, PNo int(1) unsigned, "
         "PValid int(1) unsigned, RuleNo int(5) unsigned, RValid int(1) unsigned, ParNo int(2) unsigned",
         "PRIMARY KEY(Case_No,RNo,PNo,RuleNo)"},
        {125, "RLY_CASERDZ",
         "Case_No int(4) unsigned, RNo int(8) unsigned, DzNo int(3) unsigned, Cdz char(10) BINARY, "
         "Rdz11 double(13,6), Rdz21 double(13,6), Rdz31 double(13,6), Rdz41 double(13,6), Rdz51 double(13,6), "
         "Rdz12 double(13,6), Rdz22 double(13,6), Rdz32 double(13,6), Rdz42 double(13,6), Rdz52 double(13,6)",
         "INDEX(Case_No,RNo,Cdz)"},
        {126, "RLY_CELECHK",
         "Case_No int(4) unsigned, RNo int(8) unsigned, ID_Name char(20) BINARY, I_Name char(20) BINARY, "
         "J_Name char(20) BINARY",
         "INDEX(Case_No,RNo)"},
        {127, "RLY_RUDRM",
         "RNo int(8) unsigned, PNo int(1) unsigned, RuleNo int(5) unsigned, RMode int(2) unsigned, "
         "MType int(2) unsigned, ID_Name char(20) BINARY, I_Name char(20) BINARY, J_Name char(20) BINARY, "
         "K_Loc int(3) unsigned, FType int(1) unsigned, R double(13,6), X double(13,6), Valid int(1) unsigned, "
         "Flg int(1) unsigned",
         "INDEX(RNo,RuleNo,RMode)"},
        {128, "RLY_FZXS",
         "FzNo int(8) unsigned, ID_Name char(20) BINARY, I_Name char(20) BINARY, J_Name char(20) BINARY, "
         "Side int(1), Valid int(1) unsigned, Flg int(1) unsigned",
         "INDEX(ID_Name,I_Name,J_Name)"},
        {129, "RLY_FZXSRM",
         "FzNo int(8) unsigned, MType int(2) unsigned, ID_Name char(20) BINARY, FIName char(20) BINARY, "
         "FJName char(20) BINARY, K_Loc int(3) unsigned, FType int(1) unsigned, R double(13,6), X double(13,6)",
         "INDEX(FzNo)"},
    };
    return sources;
}

}  // namespace tables
