#include "programs/frame/TableSource.h"

namespace tables {

// Columns and keys of the rule database.
const std::vector<TableSource>& ruleSources() {
    static const std::vector<TableSource> sources = {
        {101, "RULEINF",
         "RuleNo int(5) unsigned, NumMode int(2) unsigned, NPar int(2) unsigned, NRule int(3) unsigned, "
         "NVarin int(2) unsigned, NOutPut int(2) unsigned, Note char(100), Formula char(100), "
         "SFlg int(1) unsigned, PRTypeNo int(3)",
         "PRIMARY KEY(RuleNo)"},
        {102, "VARIN",
         "RuleNo int(5) unsigned, ModeNo int(2) unsigned, VarNo int(2) unsigned, VType int(3) unsigned, "
         "VPos int(2) unsigned, Cin char(30)",
         "INDEX(RuleNo,VarNo)"},
        {103, "PARAINF", "RuleNo int(5) unsigned, ParNo int(2) unsigned, C char(10), K double(13,6), KNo int",
         "INDEX(RuleNo,ParNo)"},
        {104, "MODEINF",
         "RuleNo int(5) unsigned, ModeNo int(2) unsigned, ItemNo int(2) unsigned, SelVar1 char(3), "
         "SelVar2 char(3), A double(10,4), B double(10,4), Nop int(3) unsigned, Cop char(6), Y int(2) unsigned, "
         "Consel int(1) unsigned, Note char(50)",
         "INDEX(RuleNo,ModeNo)"},
        {105, "RULE",
         "RuleNo int(5) unsigned, Line_No int(3) unsigned, X1 char(3), X2 char(3), A double(10,4), B double(10,4), "
         "Nop int(3) unsigned, Y char(2)",
         "PRIMARY KEY(RuleNo,Line_No)"},
        {106, "VAROUT", "RuleNo int(5) unsigned, DzNo int(3) unsigned, Cdz char(10) BINARY", "INDEX(RuleNo)"},
        {107, "RTYPERULE", "RTypeNo int(3) unsigned, RPartNo int(1) unsigned, RuleNo int(5) unsigned",
         "INDEX(RTypeNo,RPartNo)"},
        {108, "RMU", "RuleNo int(5) unsigned, ModeNo int(2) unsigned, PatNo int(4) unsigned",
         "PRIMARY KEY(RuleNo,ModeNo)"},
        {109, "RPRM",
         "PatNo int(4) unsigned, MType int(2) unsigned, LType int(1) unsigned, K_Loc int(3) unsigned, "
         "FType int(1) unsigned, R double(13,6), x double(13,6)",
         "INDEX(PatNo)"},
        {110, "RPATINF", "PatNo int(4) unsigned, PNote char(50)", ""},
        {111, "FZPRM",
         "PatNo int(4) unsigned, MType int(2) unsigned, LType int(1) unsigned, K_Loc int(3) unsigned, "
         "FType int(1) unsigned, R double(13,6), x double(13,6)",
         "INDEX(PatNo)"},
        {112, "FZMINF", "PatNo int(4) unsigned, PNote char(50)", ""},
        {113, "RTYPE",
         "RTypeNo int(3) unsigned, RTypeCode char(40) BINARY, RType int(2) unsigned, NPart int(1) unsigned, "
         "DzNo int(3) unsigned, Cdz char(10) BINARY, VType int(1) unsigned, DspCdz char(20) BINARY",
         "INDEX(RTypeNo)"},
        {114, "USEFKLM",
         "RTypeNo int(3) unsigned, PNo int(1) unsigned, Cdz char(10) BINARY, RuleNo int(5) unsigned, "
         "DRuleNo int(5) unsigned, KlmFlg int(1) unsigned",
         "PRIMARY KEY(RTypeNo,PNo,Cdz)"},
        {115, "RLYVER", "RlyVER double(6,2)", ""},
    };
    return sources;
}

}  // namespace tables
