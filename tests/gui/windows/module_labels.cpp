#include <QMenu>

#include "programs/netview/ui/CMorvaneHandleGraph.h"
#include "tests/gui/windows/module_fixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kLive = 0x02;

class Labels : public ModuleFixture {
  protected:
    static void show(int kind, const QVector<int>& types) {
        exec("UPDATE RLY_RLYDSP SET AllDsp=?,RlyDspNo=0", {kind});
        for (qsizetype k = 0; k < types.size(); ++k)
            exec("UPDATE RLY_RLYDSP SET RlyDspNo=? WHERE RTypeNo=?", {k + 1, types[k]});
    }
    static void set(int relay, const QString& setting, const QVariantList& parts) {
        exec("UPDATE RLY_RDZ SET NRDz12=?,NRDz22=?,NRDz32=?,NRDz42=?,NRDz52=? WHERE RNo=? AND CDz=?",
             parts + QVariantList{relay, setting});
    }
    static QVector<norvdb::addition_graph> all() {
        QVector<norvdb::addition_graph> records;
        dbCursor<norvdb::addition_graph> cursor(*realTime);
        cursor.select(" order by recid ");
        while (cursor.next()) records << *cursor.get();
        return records;
    }
    static QStringList live() {
        QStringList texts;
        for (const auto& label : all())
            if (label.flags & kLive) texts << label.text;
        return texts;
    }
    static CHandleGraphInfo labelInfo(int recid) {
        CHandleGraphInfo info;
        info.recid = recid;
        return info;
    }
};

TEST_F(Labels, OfTheConfigurationListTheShownTypesOfALocationInTheirOrder) {
    const Location at = end("青龙", 2);
    install(at, 1);
    install(at, 3);
    install(end("青白I", 1), 2);  // a type that is not shown
    exec("INSERT INTO RLY_DUMRLY (Valid,RTypeNo,ID_Name,I_Name,J_Name,Side) VALUES(1,0,'T线','甲','乙',1)");
    show(1, {3, 1});
    load();
    ASSERT_THAT(live(), ElementsAre("线路零序电流保护 \n线路相间距离保护 \n"));
    const auto label = all().first();
    EXPECT_EQ(label.recid, 2);
    EXPECT_EQ(label.module_num, 14);
    EXPECT_EQ(label.ele_num, 6);
    EXPECT_EQ(label.type_info, 7);
    EXPECT_EQ(label.percent_pos, 97);
    EXPECT_EQ(label.id_name + label.i_name + label.j_name, at.ID_Name + at.I_Name + at.J_Name);
    EXPECT_EQ(label.style2 * 10 + label.style3 + label.shown, 42);

    exec("UPDATE RLY_RLYDSP SET RlyDspNo=3 WHERE RTypeNo=0");
    module->RefreshSLG();
    EXPECT_THAT(live(), ElementsAre("线路零序电流保护 \n线路相间距离保护 \n", "虚拟保护"));
    EXPECT_EQ(all().last().type_info * 1000 + all().last().percent_pos * 10 + all().last().ele_num, 12036);
}

TEST_F(Labels, OfTheSettingsShowALineForEachPart) {
    const Location at = end("青龙", 1);
    set(install(at, 1), "Zdz", {3.5, 8, 12.25, 0, 0});
    const int earth = install(at, 3);
    set(earth, "Idz", {1234567, 2, 3, -1, 0});
    set(earth, "t", {0, 0.5, 1, 2, 0});
    show(2, {1, 3});
    exec("UPDATE RLY_RLYDSP SET DzDspNo=0 WHERE NOT (RTypeNo=3 AND CDz IN ('Idz','t') OR RTypeNo=1 AND CDz='Zdz')");
    load();
    EXPECT_THAT(live(), ElementsAre("3.5 ohm \n8 ohm \n12.25 ohm \n\n1.23457e+06 A/0 s \n2 A/0.5 s \n3 A/1 s \n \n"));

    // the settings have their own order, and the relays their names
    exec("UPDATE RLY_RLYDSP SET DzDspNo=3-DzDspNo WHERE RTypeNo=3 AND CDz IN ('Idz','t')");
    dbCursor<norvdb::addition_graph>(*realTime, dbCursorForUpdate).removeAll();
    CMorvaneObject::iRlyDspLoc = 1;
    module->RefreshSLG();
    EXPECT_THAT(live(), ElementsAre("线路相间距离保护 \n3.5 ohm \n8 ohm \n12.25 ohm \n"
                                    "线路零序电流保护 \n0 s/1.23457e+06 A \n0.5 s/2 A \n1 s/3 A \n2 s \n"));
}

TEST_F(Labels, OfTwoRelaysOfOneTypeStandOneBelowTheOther) {
    const Location at = end("青龙", 1);
    const int first = install(at, 1);
    set(first, "Zdz", {1, 2, 3, 0, 0});
    set(first, "t", {0, 0.5, 1, 0, 0});
    exec("CREATE TEMPORARY TABLE Twin SELECT * FROM RLY_RUD");
    exec("UPDATE Twin SET RNo=RNo+1");
    exec("INSERT INTO RLY_RUD SELECT * FROM Twin");
    exec("INSERT INTO RLY_RDZ (RNo,DzNo,CDz,NRDz12,NRDz22) VALUES(?,1,'Zdz',7,8)", {first + 1});
    exec("DROP TABLE Twin");
    show(2, {1});
    exec("UPDATE RLY_RLYDSP SET DzDspNo=0 WHERE CDz NOT IN ('Zdz','t')");
    load();
    EXPECT_THAT(live(), ElementsAre("1 ohm/0 s \n2 ohm/0.5 s \n3 ohm/1 s \n\n7 ohm \n8 ohm \n0 ohm \n"));
}

TEST_F(Labels, StayInTheTableWithTheirTextWhenTheyAreNotLive) {
    const Location at = end("青龙", 1);
    set(install(at, 1), "Zdz", {1, 1, 1, 0, 0});
    show(1, {1});
    load();
    window.flags.clear();
    show(0, {1});
    module->RefreshSLG();
    EXPECT_EQ(all().size(), 1);
    EXPECT_THAT(live(), IsEmpty());
    show(2, {1});
    module->RefreshSLG();
    EXPECT_THAT(live(), ElementsAre("线路相间距离保护 \n"));  // the record at a place keeps its text
    EXPECT_THAT(window.flags, ElementsAre(4, 4));
    show(7, {1});
    module->RefreshSLG();
    EXPECT_THAT(live(), IsEmpty());
    EXPECT_EQ(window.flags.size(), 2);  // an unknown kind is not told to the host
    show(1, {1});
    module->RefreshSLG();
    exec("RENAME TABLE RLY_RLYDSP TO Away");
    module->RefreshSLG();
    exec("RENAME TABLE Away TO RLY_RLYDSP");
    EXPECT_EQ(live().size(), 1);  // what cannot be read changes nothing
}

TEST_F(Labels, LeaveOtherModulesAloneAndNumberBehindTheirOwn) {
    dbCursor<norvdb::addition_graph> cursor(*realTime, dbCursorForUpdate);
    for (const auto& [owner, number] : {std::pair{14, 7}, {3, 90}}) {
        norvdb::addition_graph label;
        label.module_num = owner;
        label.recid = number;
        label.flags = 0x12;
        cursor.insert(label);
    }
    install(end("青龙", 1), 1);
    show(1, {1});
    load();
    const auto records = all();
    ASSERT_EQ(records.size(), 3);
    EXPECT_EQ(records[0].flags, 0x10);
    EXPECT_EQ(records[1].recid, 8);
    EXPECT_EQ(records[2].flags, 0x12);
}

TEST_F(Labels, AreThoseOfTheNetworkWhenTheCaseStandsOnALoadFlow) {
    install(end("青龙", 1), 1);
    Location gone = end("青白I", 1);
    install(gone, 1);
    exec("UPDATE RLY_RUD SET ID_Name='拆除' WHERE ID_Name='青白I'");
    show(1, {1});
    addCase(1, "方案", 0, -1, "基础方案");
    addCase(2, "潮流", 1, 1, " ");
    addCase(3, "同一方案", 0, 1, "基础方案");
    load();
    for (const char* name : {"方案", "同一方案"}) {
        module->Refreshfdb(name);
        module->RefreshSLG();
        EXPECT_EQ(live().size(), 2) << name;
    }
    module->Refreshfdb("潮流");
    EXPECT_EQ(live().size(), 1);
    exec("UPDATE RLY_RUD SET RType=0 WHERE ID_Name='拆除'");  // a bus needs no branch
    module->RefreshSLG();
    EXPECT_EQ(live().size(), 2);
}

class Gestures : public Labels {
  protected:
    /// Places that the relay dialog was opened on, as texts.
    QStringList opened;
    bool accepted = false;

    CMorvaneHandleGraph& graph() {
        auto& handler = static_cast<CMorvaneHandleGraph&>(*module->handler);
        handler.setRelayDialog([this](const DiagramPlace& place) {
            opened << QString("%1|%2|%3|%4|%5")
                          .arg(place.at.ID_Name, place.at.I_Name, place.at.J_Name)
                          .arg(place.at.Side)
                          .arg(place.rType);
            return accepted;
        });
        return handler;
    }
    static CHandleGraphInfo element(int type, const QString& name) {
        CHandleGraphInfo info;
        info.type = type;
        info.name = name;
        return info;
    }
};

TEST_F(Gestures, AClickOnALabelTellsLocationAndCoordination) {
    const Location at = end("青龙", 1);
    const int own = install(at, 1), partner = install(end("青白I", 2), 1), earth = install(at, 3);
    show(1, {1, 3});
    for (const auto& [part, coPart] : {std::pair{2, 1}, {2, 2}, {3, 2}})
        exec("INSERT INTO RLY_RLYCOP (RNo,PartNo,CoRNo,CoPartNo) VALUES(?,?,?,?)", {own, part, partner, coPart});
    exec("INSERT INTO RLY_RLYCOP (RNo,PartNo,CoRNo,CoPartNo) VALUES(?,1,9999,2)", {earth});
    load();
    lines.clear();
    module->SubStation(1);  // in both working modes
    EXPECT_TRUE(graph().OnLabelClicked(labelInfo(all().first().recid)));
    EXPECT_THAT(lines, ElementsAre("青龙线 青山青龙线侧 "));
    CMorvaneObject::iRlyDspAss = 1;
    lines.clear();
    graph().OnLabelClicked(labelInfo(all().first().recid));
    const QString code = "线路相间距离保护", other = "      青白I线 白水青白I线侧   " + code + "  ";
    EXPECT_THAT(lines, ElementsAre("青龙线 青山青龙线侧 ", "  " + code + "的配合关系:", "    2段与以下保护配合:  ",
                                   other + "1段  ", other + "2段  ", "    3段与以下保护配合:  ", other + "2段  ",
                                   "  线路零序电流保护的配合关系:", "    1段与以下保护配合:  ", "          2段  "));
    lines.clear();
    graph().OnLabelClicked(labelInfo(0));
    EXPECT_THAT(lines, IsEmpty());
    graph().OnLabelClicked(labelInfo(999));  // a record that is gone
    EXPECT_THAT(lines, ElementsAre(""));
    module->SubStation(0);
    EXPECT_FALSE(graph().OnElementOpen(labelInfo(999)));
}

TEST_F(Gestures, ALabelInTheMiddleBelongsToTheFirstEnd) {
    load();
    norvdb::addition_graph label;
    label.module_num = 14;
    label.ele_num = 6;
    label.id_name = "线";
    label.i_name = "甲";
    label.j_name = "乙";
    for (const int percent : {50, 51}) {
        label.recid = label.percent_pos = percent;
        dbCursor<norvdb::addition_graph>(*realTime, dbCursorForUpdate).insert(label);
        graph().OnElementOpen(labelInfo(percent));
    }
    EXPECT_THAT(opened, ElementsAre("线|甲|乙|1|6", "线|甲|乙|2|6"));
}

TEST_F(Gestures, ADoubleClickFindsThePlaceOfEachKindOfElement) {
    load();
    CHandleGraphInfo line = element(6, "青龙"), winding = element(12, "青山1号主变");
    line.percent = 51;
    winding.winding = 2;
    CHandleGraphInfo physical = element(0, "青山变220kV II母");
    physical.nodeKind = 3;
    for (const CHandleGraphInfo& info :
         {line, element(6, "青龙"), element(1, "石桥1号机"), element(4, "龙泉35kV电容器"), element(10, "石桥1号主变"),
          winding, element(13, "青山220母联开关"), physical, element(0, "青山变220kV I母")})
        EXPECT_TRUE(graph().OnElementOpen(info)) << info.name.toStdString();
    EXPECT_THAT(opened, ElementsAre("青龙|青山青龙线|龙泉青龙线|2|6", "青龙|青山青龙线|龙泉青龙线|1|6",
                                    "石桥1号机|石桥厂1号机10kV|石桥厂1号机10kV|1|1",
                                    "龙泉35kV电容器|龙泉变35kV母线|龙泉变35kV母线|1|4",
                                    "石桥1号主变|石桥厂220kV母线|石桥厂1号机10kV|1|10",
                                    "青山1号主变|青山1号主变中性点|青山变110kV母线|2|12",
                                    "青山220母联开关|青山220母联开关I母侧|青山220母联开关II母侧|1|13",
                                    "青山变220kV II母|青山变220kV II母|青山变220kV II母|1|0",
                                    "青山变220kV I母|青山变220kV I母|青山变220kV I母|1|0"));
    EXPECT_THAT(errors, IsEmpty());
}

TEST_F(Gestures, RefuseWhatLeadsToNoPlace) {
    load();
    const QString bus = "青山变220kV I母",
                  phrase = "只有在仅有一条物理母线与该母线对应时，才能从单线图上为该母线装设保护";
    exec("UPDATE CDB_NODEBAK SET ISPhyBus=1 WHERE Node_Name='青山220母联开关I母侧'");
    EXPECT_FALSE(graph().OnElementOpen(element(0, bus)));
    exec("UPDATE CDB_NODEBAK SET ISPhyBus=0 WHERE Bus_Name=?", {bus});
    EXPECT_FALSE(graph().OnElementOpen(element(0, bus)));
    exec("UPDATE CDB_NODEBAK SET ISPhyBus=1 WHERE Node_Name=?", {bus});
    CHandleGraphInfo node = element(0, bus);
    node.nodeKind = 2;
    EXPECT_FALSE(graph().OnElementOpen(node));
    EXPECT_FALSE(graph().OnElementOpen(element(6, "没有'的线")));
    EXPECT_FALSE(graph().OnElementOpen(element(8, "青龙")));
    EXPECT_THAT(errors, ElementsAre(phrase, phrase, "普通节点上不能装设保护", "元件数据有误，不能启动保护装设对话框"));
    EXPECT_THAT(opened, IsEmpty());
    module->SubStation(1);
    EXPECT_FALSE(graph().OnElementOpen(element(6, "青龙")));
    EXPECT_THAT(opened, IsEmpty());
}

TEST_F(Gestures, LabelsAreRedrawnAfterAnAcceptedRelayDialog) {
    load();
    window.flags.clear();
    graph().OnElementOpen(element(6, "青龙"));
    EXPECT_THAT(window.flags, IsEmpty());
    accepted = true;
    graph().OnElementOpen(element(6, "青龙"));
    EXPECT_THAT(window.flags, ElementsAre(4));
}

TEST_F(Gestures, TheMenuOffersWhatTheModuleHasWhileRelaysAreEdited) {
    load();
    QMenu menu;
    const auto offered = [&](const CHandleGraphInfo& info) {
        menu.clear();
        module->handler->OnContextMenu(info, &menu);
        QStringList texts;
        for (const QAction* action : menu.actions()) texts << action->text();
        return texts;
    };
    EXPECT_THAT(offered(element(6, "青龙")), ElementsAre("显示设置"));
    EXPECT_FALSE(module->handler->OnElementOpen(element(6, "青龙")));
    graph();
    EXPECT_THAT(offered(element(6, "")), IsEmpty());
    EXPECT_THAT(offered(element(6, "青龙")), ElementsAre("保护设置", "显示设置"));
    menu.actions().first()->trigger();
    EXPECT_THAT(opened, ElementsAre("青龙|青山青龙线|龙泉青龙线|1|6"));
    whenOpen([](QDialog& dialog) { EXPECT_EQ(dialog.objectName(), "WinDlgSetDsp"); });
    menu.actions().last()->trigger();
    module->SubStation(1);
    EXPECT_THAT(offered(element(6, "青龙")), IsEmpty());
}

}  // namespace
