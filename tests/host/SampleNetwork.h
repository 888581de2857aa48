#pragma once

#include <string>

#include "platform/host/NetworkModel.h"

/// A network of every kind of element whose names hold what databases and files stumble over.
namespace sample {

inline const std::string kBarA = " 前空格'单引号";
inline const std::string kBarA2 = "双引\"号\\反斜杠%_";
inline const std::string kBarB = "一二三四五六七八九十甲乙丙丁戊己庚辛壬癸";
inline const std::string kGeneratorNode = "乗丂誠\\";  // GBK bytes that end in 0x5C and 0x7C
inline const std::string kMiddleNode = "D;--", kLowNode = "E?:1", kStar = "主变'中性点";
inline const std::string kLine1 = "壹贰叁肆伍陆柒捌玖拾甲乙丙丁戊己庚辛壬癸", kLine2 = "线'2", kShifter = "移相%s";
inline const std::string kTransformer = "变\\\"1", kThree = "三绕组'?", kBreaker = "开关?1", kSwitch = "刀闸'1";
inline const std::string kGenerator = "机\\%_;--", kCapacitor = "容'", kReactor = " 抗", kLoad = "荷\"";
inline const std::string kBase = "基础方案", kReduced = "停'运%";

inline host::NetworkModel network() {
    using host::Grounding;
    host::NetworkModel m;
    m.stations = {{"青'山变", 10, 20.5, true}, {"白水厂", 0, 0, false}};
    m.nodes = {{kBarB, 110, 1, "B组", true, "白水厂", 1.25, -3, true, 99.5},
               {kBarA, 110, 0, "A组", true, "青'山变", 0, 0, false, 0},
               {kBarA2, 110, 0, "", false, "青'山变", 0, 0, false, 0},
               {kGeneratorNode, 10, 0, "", true, "白水厂", 0, 0, false, 0},
               {kMiddleNode, 35, 0, "", true, "青'山变", 0, 0, false, 0},
               {kLowNode, 10, 0, "", true, "青'山变", 0, 0, false, 0}};
    m.lines = {{kLine1, kBarA, kBarB, 0.01, 1.0 / 3, 0.002, 0.03, 0.9, 0.001, 25.5, 600, 450, false, false, true, 80},
               {kLine2, kBarA, kBarB, 0.02, 0.4, 0, 0.06, 1.2, 0, 26, 600, 400, false, false, true}};
    m.transformers2.resize(2);
    auto& t = m.transformers2[0];
    t.name = kShifter, t.i.node = kBarA2, t.j.node = kBarB, t.x1 = t.x0 = 0.5, t.phaseShift = -30,
    t.phaseShifter = true;
    auto& u = m.transformers2[1];
    u.name = kTransformer, u.r1 = 0.004, u.x1 = 0.3, u.r0 = 0.004, u.x0 = 0.27, u.tapRatio = 1.025, u.tapChanger = true;
    u.i = {kBarB, 115, 40, Grounding::Grounded, 2, 12.1};
    u.j = {kGeneratorNode, 10.5, 40, Grounding::Delta, 7, 7};
    u.maxLoadA = 180, u.unit = true;
    m.transformers3.resize(1);
    auto& w = m.transformers3[0];
    w.name = kThree, w.star = kStar;
    w.winding[0] = {kBarA, 110, 31.5, Grounding::Grounded, 0, 6.05};
    w.winding[1] = {kMiddleNode, 38.5, 31.5, Grounding::Isolated, 3, 3};
    w.winding[2] = {kLowNode, 10.5, 15, Grounding::Delta, 0, 0};
    for (int k = 0; k < 3; ++k)
        w.r1[k] = 0.01 * k, w.x1[k] = 0.2 - 0.1 * k, w.r0[k] = 0.01 * k, w.x0[k] = 0.18 - 0.1 * k;
    m.generators = {{kGenerator, kGeneratorNode, 40, 10.5, 0.8, 0.01, 0.35, 0, 0.2, true, 0, 0.5, 30, 5, "generator",
                     true, 0.075, 12.5, 9.5}};
    m.shunts = {{kCapacitor, kMiddleNode, -8, 0, 0, false, 10, 38.5, true},
                {kReactor, kBarB, 5, 0.1, 5, true, 20, 110, true}};
    m.loads = {{kLoad, kMiddleNode, 12, 3, true}};
    m.switches = {{kSwitch, kBarB, kLowNode, false, false}, {kBreaker, kBarA, kBarA2, true, true}};
    m.mutuals = {{kLine1, kLine2, 0.02, 0.5, -1, 0, 80, 20, 100}};
    m.schemes = {{kBase, {}},
                 {kReduced,
                  {{"line", kLine1, false},
                   {"switch", kBreaker, false},
                   {"transformer3", kThree, false},
                   {"generator", kGenerator, false},
                   {"shunt", kReactor, false}}}};
    m.loadFlow = {
        {1, "大方式'1", kReduced, {{kBarA, 1.02, 3}}, {}},
        {4, "潮流4", kBase, {{kBarA, 1.05, 10}, {kBarB, 1.01, -5}, {kMiddleNode, 0.98, 4}}, {{kGenerator, 33, -4}}}};
    return m;
}

}  // namespace sample
