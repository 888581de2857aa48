#include "programs/frame/TableSource.h"

namespace tables {

// Columns and keys of the protection model of a project.
const std::vector<TableSource>& relaySources() {
    static const std::vector<TableSource> sources = {
        {116, "RLY_RSYSMODE", "SysName char(20) BINARY, Note char(100)", "PRIMARY KEY(SysName)"},
        {160, "RLY_RLYCOP",
         "RNo int(8) unsigned, PartNo int(1) unsigned, CoRNo int(8) unsigned, CoPartNo int(1) unsigned", "INDEX(RNo)"},
        {159, "RLY_RLYUSER", "User_Name char(40) BINARY, User_PurView int(1) unsigned, User_PassWord char(6) BINARY",
         "PRIMARY KEY(User_Name)"},
        {158, "RLY_RLYDSP",
         "AllDsp int(1) unsigned, RlyAss int(1) unsigned, RlyLoc int(1) unsigned, RlyDspNo int(2) unsigned, "
         "RTypeNo int(3) unsigned, DzDspNo int(2) unsigned, CDz char(10) BINARY, DspDz char(20) BINARY, "
         "RTypeCode char(40) BINARY",
         "INDEX(RTypeNo,CDz)"},
        {157, "RLY_RLYDEV", "Dev_Name char(40) BINARY", "PRIMARY KEY(Dev_Name)"},
        {156, "RLY_ELMSEARCHWAY",
         "RNo int(8) unsigned, ElemType int(2) unsigned, ID_Name char(20) BINARY, Node_Name char(20) BINARY, "
         "RTypeNo int(3) unsigned, TopoFlag int(4) unsigned, TopoType int(2) unsigned, Delay double(13,6), "
         "Valid int(1) unsigned",
         "INDEX(ID_Name,Node_Name,RTypeNo)"},
        {155, "RLY_ACTELM",
         "RNo int(8) unsigned, ElemType int(2) unsigned, ID_Name char(20) BINARY, ActType int(1), "
         "BreakerType int(2)",
         "INDEX(RNo)"},
        {150, "RLY_RSYSMODEDLS",
         "SysNo int(6) unsigned, SysName char(20) BINARY, M10 int(1) unsigned, ID_Name char(20) BINARY, "
         "I_Name char(20) BINARY, J_Name char(20) BINARY, UNIT int(1) unsigned, R double(13,6), X double(13,6), "
         "Flg int(1) unsigned",
         "INDEX(SysNo),INDEX(SysName)"},
        {117, "RLY_DUMRLY",
         "Valid int(1) unsigned, RTypeNo int(3) unsigned, ID_Name char(20) BINARY, I_Name char(20) BINARY, "
         "J_Name char(20) BINARY, Side int(1)",
         "INDEX(ID_Name,I_Name,J_Name)"},
        {118, "RLY_RUD",
         "Valid int(1) unsigned, RNo int(8) unsigned, RTypeCode char(40) BINARY, RNote char(20), "
         "RTypeNo int(3) unsigned, RType int(2) unsigned, ID_Name char(20) BINARY, I_Name char(20) BINARY, "
         "J_Name char(20) BINARY, Side int(1), CTPri double(13,6), CTSec double(13,6), PTPri double(13,6), "
         "PTSec double(13,6), Model_No int(4) unsigned, Dev_Name1 char(40) BINARY NULL, "
         "Dev_Name2 char(40) BINARY NULL, Dev_Name3 char(40) BINARY NULL, Dev_Name4 char(40) BINARY NULL, "
         "Dev_Name5 char(40) BINARY NULL, PartVal1 int(1), PartVal2 int(1), PartVal3 int(1), PartVal4 int(1), "
         "PartVal5 int(1)",
         "PRIMARY KEY(RNo),INDEX(ID_Name,I_Name,J_Name,Side)", "PRIMARY KEY(RNo)"},
        {119, "RLY_RDZ",
         "RNo int(8) unsigned, DzNo int(3) unsigned, Cdz char(10) BINARY, NRdz11 double(13,6), "
         "NRdz21 double(13,6), NRdz31 double(13,6), NRdz41 double(13,6), NRdz51 double(13,6), NRdz12 double(13,6), "
         "NRdz22 double(13,6), NRdz32 double(13,6), NRdz42 double(13,6), NRdz52 double(13,6), BRdz11 double(13,6), "
         "BRdz21 double(13,6), BRdz31 double(13,6), BRdz41 double(13,6), BRdz51 double(13,6), BRdz12 double(13,6), "
         "BRdz22 double(13,6), BRdz32 double(13,6), BRdz42 double(13,6), BRdz52 double(13,6)",
         "PRIMARY KEY(RNo,Cdz)"},
        {120, "RLY_FKLM",
         "ID_Name char(20) BINARY, I_Name char(20) BINARY, J_Name char(20) BINARY, Side int(1), "
         "RFault double(13,6), RuleNo int(5) unsigned",
         "INDEX(ID_Name,I_Name,J_Name,Side)"},
    };
    return sources;
}

}  // namespace tables
