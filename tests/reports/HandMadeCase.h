#pragma once

#include "tests/reports/BookFixture.h"

/// Working rows written by hand, of case 7: what the delivered rules and one run cannot bring together. Relays 1 and 2
/// have one rule each in part 1, relay 2 has a further one in part 2:
///   3901 of relay 1: fault variables in modes 1 to 7, one per kind of fault, with outages of each kind of element;
///   3902 of relay 2: no variables, no parameters;
///   3903 of relay 2, part 2: elements, a coordinated relay, branch coefficients of both kinds and sequences.
class HandMadeCase : public BookFixture {
  protected:
    void SetUp() override {
        BookFixture::SetUp();
        rules({"RULEINF", "RuleNo,Note,Formula"},
              {{3901, "故障量", "Idz=A×B"}, {3902, "没有变量", "Idz=常数"}, {3903, "配合", "Idz=Kk×KF×I"}});
        rules({"PARAINF", "RuleNo,ParNo,C,K,KNo"},
              {{3901, 1, "Kk", 9, 1}, {3901, 2, "dt", 0.3, 2}, {3901, 2, "Kk", 1.25, 1}});
        rules({"VAROUT", "RuleNo,DzNo,Cdz"}, {{3901, 1, "Idz"}, {3901, 2, "t"}, {3902, 1, "Idz"}, {3903, 1, "Xx"}});
        project({"RLY_RRBRANCH_TEM", "ID_Name,ID_No,I_Name,J_Name,I_No,J_No,Flg"},
                {{"甲线", 1, "甲站", "乙站", 11, 12, 1},
                 {"乙变", 2, "乙站", "乙站10kV", 12, 13, 2},
                 {"丙变高压侧", 3, "乙站", "*丙", 12, 14, 3},
                 {"电容", 4, "乙站", "乙站", 12, 12, 4},
                 {"电抗", 5, "乙站", "乙站", 12, 12, 5},
                 {"1号机", 6, "乙站10kV", "乙站10kV", 13, 13, 6},
                 {"名称超过十二个字符的线路名", 7, "丁站", "乙站", 15, 12, 1}});
        project({"RLY_RSYSMODEDLS", "SysNo,SysName"}, {{31, "大方式"}, {31, "大方式"}, {32, "小方式"}});
        project({"RLY_CASEINF", "Case_No,RNo,PNo,RuleNo,ParNo"},
                {{6, 1, 1, 3901, 1}, {7, 2, 1, 3901, 1}, {7, 1, 1, 3901, 2}, {7, 2, 1, 3902, 0}});
        project({"RLY_RUD", "RNo,RTypeNo,ID_Name,I_Name,J_Name,Side"}, {{5, 3, "甲线", "甲站", "乙站", 2}});
        faultModes();
        elementsAndCoefficients();
        results();
    }

    struct Table {
        QString name, columns;
    };
    static void rules(const Table& table, const QVector<QVariantList>& rows) {
        ASSERT_TRUE(sql::insertRows(tables::ruleConnection, table.name, table.columns.split(','), rows));
    }
    static void project(const Table& table, const QVector<QVariantList>& rows) {
        ASSERT_TRUE(sql::insertRows({}, table.name, table.columns.split(','), rows));
    }

    void faultModes() const {
        QVector<QVariantList> variables, values, choices, faults;
        for (int kind = 1; kind <= 7; ++kind) {
            variables.append({3901, kind, kind, 8, 1, "电流" + QString::number(kind)});
            values.append({7, 1, 1, 3901, kind == 1 ? 0.5 : kind, kind});
            const bool out = kind < 7;
            choices.append({7, 1, 1, 3901, kind, kind, out ? 21 : 0, 0, kind == 2 ? 99 : 31});
            faults.append({7, 1, 1, 3901, kind, kind, 1, 11, 12, 35, kind, 0.05, 0.125});
            faults.append({7, 1, 1, 3901, kind, kind + 1, 1, 11, 12, 1, 1, 0, 0});  // not the one chosen
            const int nodes[][2] = {{11, 12}, {12, 13}, {12, 14}, {12, 12}, {12, 12}, {13, 13}};
            for (int row = 0; out && row < 2; ++row)
                faults.append({7, 1, 1, 3901, kind, 21, kind, nodes[kind - 1][0], nodes[kind - 1][1], row, 5,
                               99999.9999, 99999.9999});
        }
        faults.append({6, 1, 1, 3901, 1, 1, 7, 15, 12, 50, 1, 0, 0});  // of another case
        rules({"VARIN", "RuleNo,ModeNo,VarNo,VType,VPos,Cin"}, variables);
        project({"RLY_RRVIN", "Case_No,RNo,PNo,RuleNo,V,VarNo"}, values);
        project({"RLY_FAULTINF", "Case_No,RNo,PNo,RuleNo,RMNo,NSela,NSelb,NSelc,NSys"}, choices);
        project({"RLY_CRUDRM", "Case_No,RNo,PNo,RuleNo,RMode,MType,ID_No,I_No,J_No,K_Loc,FType,R,X"}, faults);
    }

    static void elementsAndCoefficients() {
        rules({"VARIN", "RuleNo,ModeNo,VarNo,VType,VPos,Cin"}, {{3903, 0, 1, 101, 1, "阻抗"},
                                                                {3903, 21, 2, 101, 3, "相邻元件"},
                                                                {3903, 41, 3, 101, 1, "本元件"},
                                                                {3903, 45, 4, 101, 1, "没有元件"},
                                                                {3903, 40, 5, 401, 1, "相邻定值"},
                                                                {3903, 31, 6, 457, 1, "其他系数"},
                                                                {3903, 31, 7, 452, 1, "零序分支系数"},
                                                                {3903, 31, 8, 454, 1, "零序助增系数"}});
        project({"RLY_RRVIN", "Case_No,RNo,PNo,RuleNo,V,VarNo"}, {{7, 2, 2, 3903, 30.0767, 1},
                                                                  {7, 2, 2, 3903, 12, 2},
                                                                  {7, 2, 2, 3903, 13, 3},
                                                                  {7, 2, 2, 3903, 300, 5},
                                                                  {7, 2, 2, 3903, 2, 6},
                                                                  {7, 2, 2, 3903, 0.8, 7},
                                                                  {7, 2, 2, 3903, 1.25, 8}});
        project(
            {"RLY_FAULTINF", "Case_No,RNo,PNo,RuleNo,RMNo,NSela,NSelb,NSelc,NSys"},
            {{7, 2, 2, 3903, 21, 12, 13, 2, 31}, {7, 2, 2, 3903, 41, 15, 12, 7, 31}, {7, 2, 2, 3903, 40, 5, 0, 0, 31}});
        project({"RLY_KFINF", "Case_No,FzNo,NLRNo,FZ1,NSel1a,NSel1b,NSys1,FZ0,NSel0a,NSel0b,NSys0"},
                {{7, 3, 2, 0.8, 1, 21, 31, 0.25, 2, 22, 32},
                 {7, 4, 2, 0.5, 1, 0, 0, 0, 1, 0, 0},
                 {7, 4, 9, 0.9, 1, 0, 0, 0.9, 1, 0, 0}});
        project({"RLY_CFZXSRM", "Case_No,FzNo,MType,ID_No,FINo,FJNo,K_Loc,FType,R,X"},
                {{7, 3, 1, 1, 11, 12, 99, 1, 0, 0},
                 {7, 3, 1, 1, 11, 12, 99, 5, 99999.9999, 99999.9999},
                 {7, 3, 2, 3, 12, 14, 100, 2, 0, 0.01},
                 {7, 3, 21, 7, 15, 12, 1, 5, 99999.9999, 99999.9999},
                 {7, 3, 21, 7, 15, 12, 99, 5, 99999.9999, 99999.9999},
                 {7, 3, 22, 6, 13, 13, 0, 5, 99999.9999, 99999.9999},
                 {7, 4, 1, 2, 12, 13, 100, 3, 0, 0},
                 {6, 3, 1, 2, 12, 13, 100, 3, 0, 0}});
    }

    /// The settings, and sensitivities with every outcome: as stored, computed anew with either parameter, parameter 0,
    /// setting 0.
    static void results() {
        project({"RLY_RDZTEM", "Case_No,RNo,ID_Name,I_Name,J_Name,Side,PNo,Cdz,RuleNo,Rdz"},
                {{7, 1, "甲线", "甲站", "乙站", 1, 1, "Idz", 3901, 625},
                 {7, 1, "甲线", "甲站", "乙站", 1, 1, "t", 3901, 0.3},
                 {7, 2, "甲线", "甲站", "乙站", 2, 1, "Idz", 3902, 120},
                 {7, 2, "甲线", "甲站", "乙站", 2, 2, "Xx", 3903, 330}});
        project({"RLY_RLYOBJ_TEM", "RNo,DzNo,Cdz,NDz11,NDz21,NDz12,NDz22"}, {{1, 1, "Idz", 625, 0, 2.604167, 0},
                                                                             {1, 2, "t", 0.3, 0, 0.3, 0},
                                                                             {2, 1, "Idz", 120, 0, 0.5, 0},
                                                                             {2, 2, "Yy", 4, 5, 6, 7}});
        rules({"USEFKLM", "RTypeNo,PNo,Cdz,RuleNo,DRuleNo,KlmFlg"}, {{3, 1, "t", 21, 22, 2}, {3, 2, "Yy", 21, 22, 2}});
        project({"RLY_RKLMTEM_TEM", "RNo,PNo,Cdz,RFault1,Note1,RuleNo,RFault2,Note2,DRuleNo,Valsense,Flg"},
                {{1, 1, "Idz", 937.5, "参量甲", 21, 500, "参量乙", 22, 1.75, 11},
                 {1, 1, "t", 0, "参量甲", 21, 0.15, "参量乙", 22, 0, 12},
                 {2, 1, "Idz", 937.5, "参量甲", 21, 180, "参量乙", 22, 0, 21},
                 {2, 2, "Idz", 937.5, "参量甲", 21, 180, "参量乙", 22, 0, 22},
                 {2, 2, "Yy", 2, "参量甲", 21, 4, "参量乙", 22, 0, 22}});
    }
};
