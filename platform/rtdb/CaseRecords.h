#pragma once

#include <QString>

/// Records of the real-time tables that tell the case in work and the labels on the diagram.
namespace norvdb {

/// A label on the diagram.
struct addition_graph {
    static constexpr const char* table = "addition_graph";
    QString text;
    int style1 = 0, style2 = 0, style3 = 0, style4 = 0;
    int flags = 0;  ///< 0x02: drawn
    int place1 = 0, place2 = 0, place3 = 0, place4 = 0, recid = 0, module_num = 0, ele_num = 0;
    QString id_name, i_name, j_name;
    int percent_pos = 0, type_info = 0, shown = 1;
    template <class V>
    void visit(V&& v) {
        v("text", text);
        v("style1", style1);
        v("style2", style2);
        v("style3", style3);
        v("style4", style4);
        v("flags", flags);
        v("place1", place1);
        v("place2", place2);
        v("place3", place3);
        v("place4", place4);
        v("recid", recid);
        v("module_num", module_num);
        v("ele_num", ele_num);
        v("id_name", id_name);
        v("i_name", i_name);
        v("j_name", j_name);
        v("percent_pos", percent_pos);
        v("type_info", type_info);
        v("shown", shown);
    }
};

/// Header of the stability case: the columns of ST_CASE in order, and one further real.
struct case_st {
    static constexpr const char* table = "case_st";
    int case_no = 0, lf_no = 0;
    QString st_sc;
    double t_total = 0, dt_step = 0;
    int f60 = 0, eq_method = 0, eq_continu = 0, ctrl_fault = 0, ctrl_ud = 0, ctrl_dist = 0, up_cal = 0;
    double calculate = 0;
    int udout = 0;
    QString cal_date, cal_time, ud_time;
    int nup = 0, nbus = 0, ngenerat = 0, nload = 0, nacline = 0, ndcline = 0, ntrans = 0, nsvc = 0, nfault = 0,
        ndist = 0, istable = 0;
    double tstable = 0;
    QString note;
    double accuracy = 0;
    template <class V>
    void visit(V&& v) {
        v("case_no", case_no);
        v("lf_no", lf_no);
        v("st_sc", st_sc);
        v("t_total", t_total);
        v("dt_step", dt_step);
        v("f60", f60);
        v("eq_method", eq_method);
        v("eq_continu", eq_continu);
        v("ctrl_fault", ctrl_fault);
        v("ctrl_ud", ctrl_ud);
        v("ctrl_dist", ctrl_dist);
        v("up_cal", up_cal);
        v("calculate", calculate);
        v("udout", udout);
        v("cal_date", cal_date);
        v("cal_time", cal_time);
        v("ud_time", ud_time);
        v("nup", nup);
        v("nbus", nbus);
        v("ngenerat", ngenerat);
        v("nload", nload);
        v("nacline", nacline);
        v("ndcline", ndcline);
        v("ntrans", ntrans);
        v("nsvc", nsvc);
        v("nfault", nfault);
        v("ndist", ndist);
        v("istable", istable);
        v("tstable", tstable);
        v("note", note);
        v("accuracy", accuracy);
    }
};

/// Header of the load-flow case: the columns of LF_CASE in order.
struct case_lf {
    static constexpr const char* table = "case_lf";
    int case_no = 0;
    QString scheme;
    double vmax = 0, vmin = 0, tolerance = 0;
    int method = 0, iteration = 0, ctrl_area = 0, ctrl_ud = 0, ctrl_sub = 0, ctrl_fact = 0, eq_method = 0, up_call = 0,
        calculate = 0, l23chged = 0, udout = 0;
    QString cal_date, cal_time, ud_time;
    int nup = 0, nbus = 0, ngenerat = 0, nload = 0, nacline = 0, ndcline = 0, ntrans = 0;
    QString chg_dt, note;
    template <class V>
    void visit(V&& v) {
        v("case_no", case_no);
        v("scheme", scheme);
        v("vmax", vmax);
        v("vmin", vmin);
        v("tolerance", tolerance);
        v("method", method);
        v("iteration", iteration);
        v("ctrl_area", ctrl_area);
        v("ctrl_ud", ctrl_ud);
        v("ctrl_sub", ctrl_sub);
        v("ctrl_fact", ctrl_fact);
        v("eq_method", eq_method);
        v("up_call", up_call);
        v("calculate", calculate);
        v("l23chged", l23chged);
        v("udout", udout);
        v("cal_date", cal_date);
        v("cal_time", cal_time);
        v("ud_time", ud_time);
        v("nup", nup);
        v("nbus", nbus);
        v("ngenerat", ngenerat);
        v("nload", nload);
        v("nacline", nacline);
        v("ndcline", ndcline);
        v("ntrans", ntrans);
        v("chg_dt", chg_dt);
        v("note", note);
    }
};

}  // namespace norvdb
