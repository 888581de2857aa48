#include "programs/frame/TableSource.h"

namespace tables {

// Columns and keys of what a run computes.
const std::vector<TableSource>& workingSources() {
    static const std::vector<TableSource> sources = {
        {130, "RLY_RDZTEM",
         "Case_No int(4) unsigned, ID int(8) unsigned AUTO_INCREMENT, RNo int(8) unsigned, "
         "ID_Name char(20) BINARY, I_Name char(20) BINARY, J_Name char(20) BINARY, Side int(1) unsigned, "
         "PNo int(1) unsigned, Cdz char(10) BINARY, RuleNo int(5) unsigned, Note char(100), Rdz double(13,6), "
         "PRTypeNo int(3) unsigned",
         "PRIMARY KEY(ID),INDEX(RNo,PNo,RuleNo)"},
        {231, "RLY_RKLMTEM_TEM",
         "ID int(8) unsigned AUTO_INCREMENT, RNo int(8) unsigned, ID_Name char(20) BINARY, I_Name char(20) BINARY, "
         "J_Name char(20) BINARY, Side int(1) unsigned, PNo int(1) unsigned, Cdz char(10) BINARY, "
         "RFault1 double(13,6), Note1 char(100), RuleNo int(5) unsigned, RFault2 double(13,6), Note2 char(100), "
         "DRuleNo int(5) unsigned, Valsense double(13,6), Flg int(2) unsigned",
         "PRIMARY KEY(ID),INDEX(RNo,PNo,Cdz)"},
        {232, "RLY_RLYOBJ_TEM",
         "TurnNo int(6) unsigned, RNo int(8) unsigned, RTypeCode char(40) BINARY, ID_Name char(20) BINARY, "
         "I_Name char(20) BINARY, J_Name char(20) BINARY, Side int(1) unsigned, NPart int(1) unsigned, "
         "DzNo int(3) unsigned, Cdz char(10) BINARY, ODz11 double(13,6), ODz21 double(13,6), ODz31 double(13,6), "
         "ODz41 double(13,6), ODz51 double(13,6), ODz12 double(13,6), ODz22 double(13,6), ODz32 double(13,6), "
         "ODz42 double(13,6), ODz52 double(13,6), NDz11 double(13,6), NDz21 double(13,6), NDz31 double(13,6), "
         "NDz41 double(13,6), NDz51 double(13,6), NDz12 double(13,6), NDz22 double(13,6), NDz32 double(13,6), "
         "NDz42 double(13,6), NDz52 double(13,6), VType int(1) unsigned",
         "PRIMARY KEY(RNo,Cdz)"},
        {133, "RLY_FAULTINF",
         "Case_No int(4) unsigned, NCal int(3) unsigned, RNo int(8) unsigned, PNo int(1) unsigned, "
         "RuleNo int(5) unsigned, RMNo int(2) unsigned, NSela int(3) unsigned, NSelb int(3) unsigned, "
         "NSelc int(3) unsigned, NSys int(3) unsigned",
         "INDEX(RNo,PNo,RuleNo)"},
        {134, "RLY_KFINF",
         "Case_No int(4) unsigned, FzNo int(8) unsigned, MINo int(6) unsigned, MJNo int(6) unsigned, "
         "MIDNo int(6) unsigned, MSide int(1) unsigned, BINo int(6) unsigned, BJNo int(6) unsigned, "
         "BIDNo int(6) unsigned, NLRNo int(5) unsigned, FZ1 double(13,6), NSel1a int(3) unsigned, "
         "NSel1b int(3) unsigned, NSys1 int(3) unsigned, FZ0 double(13,6), NSel0a int(3) unsigned, "
         "NSel0b int(3) unsigned, NSys0 int(3) unsigned",
         "INDEX(FzNo)"},
        {136, "RLY_RRVIN",
         "Case_No int(4) unsigned, NCal int(3) unsigned, RNo int(8) unsigned, PNo int(1) unsigned, "
         "RuleNo int(5) unsigned, V double(13,6), VarNo int(2) unsigned",
         "INDEX(RNo,PNo,RuleNo)"},
        {137, "RLY_RRNPH", "Case_No int(4) unsigned, NCal int(3) unsigned, RNo int(8) unsigned, PNo int(1) unsigned",
         "INDEX(RNo)"},
        {238, "RLY_RRBRANCH_TEM",
         "ID int(8) unsigned AUTO_INCREMENT, ID_Name char(20) BINARY, ID_No int(6) unsigned, "
         "I_Name char(20) BINARY, J_Name char(20) BINARY, I_No int(8) unsigned, J_No int(8) unsigned, "
         "Flg int(2) unsigned",
         "PRIMARY KEY(ID),INDEX(ID_Name,I_Name,J_Name),INDEX(I_No),INDEX(J_No)"},
        {139, "RLY_CRUDRM",
         "Case_No int(4) unsigned, RNo int(8) unsigned, PNo int(1) unsigned, RuleNo int(5) unsigned, "
         "RMode int(2) unsigned, MType int(2) unsigned, ID_No int(8) unsigned, I_No int(8) unsigned, "
         "J_No int(8) unsigned, K_Loc int(3) unsigned, FType int(1) unsigned, R double(13,6), X double(13,6), "
         "Flg int(1) unsigned",
         "INDEX(RNo,RuleNo,RMode)"},
        {140, "RLY_CFZXS",
         "Case_No int(4) unsigned, FzNo int(8) unsigned AUTO_INCREMENT, ID_No int(8) unsigned, "
         "I_No int(8) unsigned, J_No int(8) unsigned, Side int(1) unsigned, Flg int(1) unsigned",
         "PRIMARY KEY(Case_No,FzNo),INDEX(FzNo)"},
        {141, "RLY_CFZXSRM",
         "Case_No int(4) unsigned, FzNo int(8) unsigned, MType int(2) unsigned, ID_No int(8) unsigned, "
         "FINo int(8) unsigned, FJNo int(8) unsigned, K_Loc int(3) unsigned, FType int(1) unsigned, "
         "R double(13,6), X double(13,6), Flg int(1) unsigned",
         "INDEX(FzNo)"},
    };
    return sources;
}

}  // namespace tables
