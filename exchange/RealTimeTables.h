#pragma once

/// Layout of the real-time file: an SQLite database that the module writes and VASKEL.EXE reads.
/// Text is stored as BLOB in GBK bytes, so that names compare and sort as bytes. Impedances are per unit on 100 MVA and
/// the base voltage of the (I) node, angles degrees, lengths km, currents A, voltages kV, powers MW and Mvar.
///
/// Numbers: `no` of nd and `nno`, `inno`, `jnno` are node numbers, the 0-based place of the node in nd ordered by id;
/// `ibs`, `zbs` are bus numbers written by the topology pass: 2 and above in the network, 1 or below outside it.
/// Element ids carry the suffix of their kind: ln "_ac", xf "_2w", "_3w1", "_3w2", "_3w3", "_sf", cb "_brk" or "_sw",
/// dln "_sc"; nd, bus, un, cp, ld none. `id_no` is the element number of the calculation tables (0 where there is
/// none). `valid` 1 takes part.
namespace exchange::rtdb {

inline constexpr const char* kCreate[] = {
    "CREATE TABLE IF NOT EXISTS meta(name TEXT PRIMARY KEY, value TEXT)",  // 'version', 'load_flow' ("0"/"1"), 'scheme'
    "CREATE TABLE IF NOT EXISTS nd(oid INTEGER PRIMARY KEY, id BLOB UNIQUE, flags INTEGER DEFAULT 0, no INTEGER "
    "DEFAULT 0,"
    " ibs INTEGER DEFAULT 0, base_kv REAL DEFAULT 0, v_mag REAL DEFAULT 1, v_angle REAL DEFAULT 0,"
    " v_min_kv REAL DEFAULT 0, node_type INTEGER DEFAULT 0, star INTEGER DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS bus(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, node BLOB,"
    " nno INTEGER DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS un(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, node BLOB,"
    " nno INTEGER DEFAULT 0, valid INTEGER DEFAULT 1, r1 REAL, x1 REAL, r0 REAL, x0 REAL, grounded INTEGER DEFAULT 0,"
    " rated_mva REAL DEFAULT 0, rated_kv REAL DEFAULT 0, p_mw REAL DEFAULT 0, q_mvar REAL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS cp(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, node BLOB,"
    " nno INTEGER DEFAULT 0, valid INTEGER DEFAULT 1, id_no INTEGER DEFAULT 0, x1 REAL, r0 REAL, x0 REAL,"
    " grounded INTEGER DEFAULT 0, rated_mvar REAL DEFAULT 0, rated_kv REAL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS ld(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, node BLOB,"
    " nno INTEGER DEFAULT 0, valid INTEGER DEFAULT 1, p_mw REAL DEFAULT 0, q_mvar REAL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS ln(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, zbs INTEGER DEFAULT 0,"
    " inode BLOB, jnode BLOB, inno INTEGER DEFAULT 0, jnno INTEGER DEFAULT 0, valid INTEGER DEFAULT 1,"
    " i_break INTEGER DEFAULT 1, j_break INTEGER DEFAULT 1, id_no INTEGER DEFAULT 0, r1 REAL, x1 REAL, r0 REAL, x0 "
    "REAL,"
    " length_km REAL DEFAULT 0, rated_a REAL DEFAULT 0, max_load_a REAL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS xf(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, zbs INTEGER DEFAULT 0,"
    " inode BLOB, jnode BLOB, inno INTEGER DEFAULT 0, jnno INTEGER DEFAULT 0, valid INTEGER DEFAULT 1,"
    " kind INTEGER DEFAULT 1, id_no INTEGER DEFAULT 0, r1 REAL, x1 REAL, r0 REAL, x0 REAL, zc_type INTEGER DEFAULT 0,"
    " rated_mva REAL DEFAULT 0, rated_kv_i REAL DEFAULT 0, rated_kv_j REAL DEFAULT 0, max_load_a REAL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS dln(oid INTEGER PRIMARY KEY, id BLOB, ibs INTEGER DEFAULT 0, zbs INTEGER DEFAULT 0,"
    " inode BLOB, jnode BLOB, inno INTEGER DEFAULT 0, jnno INTEGER DEFAULT 0, valid INTEGER DEFAULT 1)",
    "CREATE TABLE IF NOT EXISTS cb(oid INTEGER PRIMARY KEY, id BLOB, flags INTEGER DEFAULT 0, ibs INTEGER DEFAULT 0,"
    " zbs INTEGER DEFAULT 0, inode BLOB, jnode BLOB, inno INTEGER DEFAULT 0, jnno INTEGER DEFAULT 0,"
    " closed INTEGER DEFAULT 1)",
    // Mutual zero-sequence impedance of two lines, by their id_no; from/to in percent from the I end of each line.
    "CREATE TABLE IF NOT EXISTS mu(oid INTEGER PRIMARY KEY, first_no INTEGER, second_no INTEGER, r0 REAL, x0 REAL,"
    " sense INTEGER DEFAULT 1, first_from REAL DEFAULT 0, first_to REAL DEFAULT 100, second_from REAL DEFAULT 0,"
    " second_to REAL DEFAULT 100)",
    // Labels on the diagram, drawn by the host where bit 0x02 of flags is set.
    "CREATE TABLE IF NOT EXISTS addition_graph(oid INTEGER PRIMARY KEY, text BLOB, style1 INTEGER DEFAULT 0,"
    " style2 INTEGER DEFAULT 0, style3 INTEGER DEFAULT 0, style4 INTEGER DEFAULT 0, flags INTEGER DEFAULT 0,"
    " place1 INTEGER DEFAULT 0, place2 INTEGER DEFAULT 0, place3 INTEGER DEFAULT 0, place4 INTEGER DEFAULT 0,"
    " recid INTEGER DEFAULT 0, module_num INTEGER DEFAULT 0, ele_num INTEGER DEFAULT 0, id_name BLOB, i_name BLOB,"
    " j_name BLOB, percent_pos INTEGER DEFAULT 0, type_info INTEGER DEFAULT 0, shown INTEGER DEFAULT 1)",
    // Headers of the case in work.
    "CREATE TABLE IF NOT EXISTS case_st(oid INTEGER PRIMARY KEY, case_no INTEGER DEFAULT 0, lf_no INTEGER DEFAULT 0,"
    " st_sc BLOB, t_total REAL DEFAULT 0, dt_step REAL DEFAULT 0, f60 INTEGER DEFAULT 0, eq_method INTEGER DEFAULT 0,"
    " eq_continu INTEGER DEFAULT 0, ctrl_fault INTEGER DEFAULT 0, ctrl_ud INTEGER DEFAULT 0,"
    " ctrl_dist INTEGER DEFAULT 0, up_cal INTEGER DEFAULT 0, calculate REAL DEFAULT 0, udout INTEGER DEFAULT 0,"
    " cal_date BLOB, cal_time BLOB, ud_time BLOB, nup INTEGER DEFAULT 0, nbus INTEGER DEFAULT 0,"
    " ngenerat INTEGER DEFAULT 0, nload INTEGER DEFAULT 0, nacline INTEGER DEFAULT 0, ndcline INTEGER DEFAULT 0,"
    " ntrans INTEGER DEFAULT 0, nsvc INTEGER DEFAULT 0, nfault INTEGER DEFAULT 0, ndist INTEGER DEFAULT 0,"
    " istable INTEGER DEFAULT 0, tstable REAL DEFAULT 0, note BLOB, accuracy REAL DEFAULT 0)",
    "CREATE TABLE IF NOT EXISTS case_lf(oid INTEGER PRIMARY KEY, case_no INTEGER DEFAULT 0, scheme BLOB,"
    " vmax REAL DEFAULT 0, vmin REAL DEFAULT 0, tolerance REAL DEFAULT 0, method INTEGER DEFAULT 0,"
    " iteration INTEGER DEFAULT 0, ctrl_area INTEGER DEFAULT 0, ctrl_ud INTEGER DEFAULT 0, ctrl_sub INTEGER DEFAULT 0,"
    " ctrl_fact INTEGER DEFAULT 0, eq_method INTEGER DEFAULT 0, up_call INTEGER DEFAULT 0, calculate INTEGER DEFAULT 0,"
    " l23chged INTEGER DEFAULT 0, udout INTEGER DEFAULT 0, cal_date BLOB, cal_time BLOB, ud_time BLOB,"
    " nup INTEGER DEFAULT 0, nbus INTEGER DEFAULT 0, ngenerat INTEGER DEFAULT 0, nload INTEGER DEFAULT 0,"
    " nacline INTEGER DEFAULT 0, ndcline INTEGER DEFAULT 0, ntrans INTEGER DEFAULT 0, chg_dt BLOB, note BLOB)",
};

/// Version of this layout, in meta 'version'.
inline constexpr int kVersion = 1;

}  // namespace exchange::rtdb
