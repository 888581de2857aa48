#pragma once

#include <QString>

/// Records of the network's real-time tables; units, numbers and suffixes as exchange/RealTimeTables.h says.
namespace norvdb {

/// A node; id is its name.
struct nd {
    static constexpr const char* table = "nd";
    QString id;
    int flags = 0;  ///< 0x10 bus node; 0x02 a generator, 0x04 a shunt, 0x08 a load is connected
    int no = 0, ibs = 0;
    double base_kv = 0;
    double v_mag = 1;    ///< per unit
    double v_angle = 0;  ///< degrees
    double v_min_kv = 0;
    int node_type = 0;
    int star = 0;  ///< 1: star point of a three-winding transformer
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("flags", flags);
        v("no", no);
        v("ibs", ibs);
        v("base_kv", base_kv);
        v("v_mag", v_mag);
        v("v_angle", v_angle);
        v("v_min_kv", v_min_kv);
        v("node_type", node_type);
        v("star", star);
    }
};

/// A bus bar.
struct bus {
    static constexpr const char* table = "bus";
    QString id;
    int ibs = 0;
    QString node;
    int nno = 0;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("node", node);
        v("nno", nno);
    }
};

/// A generating unit.
struct un {
    static constexpr const char* table = "un";
    QString id;
    int ibs = 0;
    QString node;
    int nno = 0, valid = 1;
    double r1 = 0, x1 = 0, r0 = 0, x0 = 0;
    int grounded = 0;
    double rated_mva = 0, rated_kv = 0, p_mw = 0, q_mvar = 0;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("node", node);
        v("nno", nno);
        v("valid", valid);
        v("r1", r1);
        v("x1", x1);
        v("r0", r0);
        v("x0", x0);
        v("grounded", grounded);
        v("rated_mva", rated_mva);
        v("rated_kv", rated_kv);
        v("p_mw", p_mw);
        v("q_mvar", q_mvar);
    }
};

/// A shunt element.
struct cp {
    static constexpr const char* table = "cp";
    QString id;
    int ibs = 0;
    QString node;
    int nno = 0, valid = 1, id_no = 0;
    double x1 = 0, r0 = 0, x0 = 0;
    int grounded = 0;
    double rated_mvar = 0, rated_kv = 0;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("node", node);
        v("nno", nno);
        v("valid", valid);
        v("id_no", id_no);
        v("x1", x1);
        v("r0", r0);
        v("x0", x0);
        v("grounded", grounded);
        v("rated_mvar", rated_mvar);
        v("rated_kv", rated_kv);
    }
};

/// A load.
struct ld {
    static constexpr const char* table = "ld";
    QString id;
    int ibs = 0;
    QString node;
    int nno = 0, valid = 1;
    double p_mw = 0, q_mvar = 0;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("node", node);
        v("nno", nno);
        v("valid", valid);
        v("p_mw", p_mw);
        v("q_mvar", q_mvar);
    }
};

/// An AC line.
struct ln {
    static constexpr const char* table = "ln";
    QString id;
    int ibs = 0, zbs = 0;
    QString inode, jnode;
    int inno = 0, jnno = 0, valid = 1, i_break = 1, j_break = 1, id_no = 0;
    double r1 = 0, x1 = 0, r0 = 0, x0 = 0, length_km = 0, rated_a = 0, max_load_a = 0;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("zbs", zbs);
        v("inode", inode);
        v("jnode", jnode);
        v("inno", inno);
        v("jnno", jnno);
        v("valid", valid);
        v("i_break", i_break);
        v("j_break", j_break);
        v("id_no", id_no);
        v("r1", r1);
        v("x1", x1);
        v("r0", r0);
        v("x0", x0);
        v("length_km", length_km);
        v("rated_a", rated_a);
        v("max_load_a", max_load_a);
    }
};

/// A two-winding transformer (kind 1) or one winding of a three-winding one (kind 31 to 33, I end at the star).
struct xf {
    static constexpr const char* table = "xf";
    QString id;
    int ibs = 0, zbs = 0;
    QString inode, jnode;
    int inno = 0, jnno = 0, valid = 1, kind = 1, id_no = 0;
    double r1 = 0, x1 = 0, r0 = 0, x0 = 0;
    int zc_type = 0;
    double rated_mva = 0, rated_kv_i = 0, rated_kv_j = 0, max_load_a = 0;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("zbs", zbs);
        v("inode", inode);
        v("jnode", jnode);
        v("inno", inno);
        v("jnno", jnno);
        v("valid", valid);
        v("kind", kind);
        v("id_no", id_no);
        v("r1", r1);
        v("x1", x1);
        v("r0", r0);
        v("x0", x0);
        v("zc_type", zc_type);
        v("rated_mva", rated_mva);
        v("rated_kv_i", rated_kv_i);
        v("rated_kv_j", rated_kv_j);
        v("max_load_a", max_load_a);
    }
};

/// A further kind of line.
struct dln {
    static constexpr const char* table = "dln";
    QString id;
    int ibs = 0, zbs = 0;
    QString inode, jnode;
    int inno = 0, jnno = 0, valid = 1;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("ibs", ibs);
        v("zbs", zbs);
        v("inode", inode);
        v("jnode", jnode);
        v("inno", inno);
        v("jnno", jnno);
        v("valid", valid);
    }
};

/// A breaker or switch.
struct cb {
    static constexpr const char* table = "cb";
    QString id;
    int flags = 0;  ///< 0x01 breaker, 0x04 switch, 0x100 left out of the station's graph
    int ibs = 0, zbs = 0;
    QString inode, jnode;
    int inno = 0, jnno = 0, closed = 1;
    template <class V>
    void visit(V&& v) {
        v("id", id);
        v("flags", flags);
        v("ibs", ibs);
        v("zbs", zbs);
        v("inode", inode);
        v("jnode", jnode);
        v("inno", inno);
        v("jnno", jnno);
        v("closed", closed);
    }
};

/// Zero-sequence mutual impedance of two lines, named by their id_no.
struct mu {
    static constexpr const char* table = "mu";
    int first_no = 0, second_no = 0;
    double r0 = 0, x0 = 0;
    int sense = 1;
    double first_from = 0, first_to = 100, second_from = 0, second_to = 100;
    template <class V>
    void visit(V&& v) {
        v("first_no", first_no);
        v("second_no", second_no);
        v("r0", r0);
        v("x0", x0);
        v("sense", sense);
        v("first_from", first_from);
        v("first_to", first_to);
        v("second_from", second_from);
        v("second_to", second_to);
    }
};

}  // namespace norvdb
