#include "platform/host/diagram/ElementText.h"

#include <cmath>

namespace diagram {

namespace {

QString number(double value) { return QString::number(value, 'g', 6); }
QString text(const std::string& value) { return QString::fromStdString(value); }

QString impedance(double r, double x) {
    if (std::isnan(r) || std::isnan(x)) return QStringLiteral("—");
    return QStringLiteral("%1 %2 j%3").arg(number(r), x < 0 ? "-" : "+", number(std::abs(x)));
}

}  // namespace

QString nameOf(const host::NetworkModel& model, const NetworkIndex& index, const Figure& figure) {
    switch (figure.kind) {
        case Kind::Bar:
            return text(index.isGroup(figure.index) ? model.nodes[figure.index].bus : model.nodes[figure.index].name);
        case Kind::Point:
            return text(model.nodes[figure.index].name);
        case Kind::Line:
            return text(model.lines[figure.index].name);
        case Kind::Transformer2:
            return text(model.transformers2[figure.index].name);
        case Kind::Transformer3:
            return text(model.transformers3[figure.index].name);
        case Kind::Switch:
            return text(model.switches[figure.index].name);
        case Kind::Generator:
            return text(model.generators[figure.index].name);
        case Kind::Shunt:
            return text(model.shunts[figure.index].name);
        case Kind::Load:
            return text(model.loads[figure.index].name);
    }
    return {};
}

CHandleGraphInfo infoOf(const host::NetworkModel& model, const NetworkIndex& index, const Figure& figure,
                        const Hit& hit) {
    CHandleGraphInfo info;
    info.name = nameOf(model, index, figure);
    info.percent = hit.percent;
    switch (figure.kind) {
        case Kind::Bar:
            info.type = 0;
            info.nodeKind = index.isGroup(figure.index) ? 0 : model.nodes[figure.index].physicalBus ? 1 : 2;
            break;
        case Kind::Point:
            info.type = 0, info.nodeKind = 2;
            break;
        case Kind::Line:
            info.type = 6;
            break;
        case Kind::Transformer2:
            info.type = 10;
            break;
        case Kind::Transformer3:
            info.type = 12, info.winding = hit.winding;
            break;
        case Kind::Generator:
            info.type = 1;
            break;
        case Kind::Shunt:
            info.type = model.shunts[figure.index].x1 < 0 ? 4 : 5;
            break;
        case Kind::Switch:
            if (model.switches[figure.index].breaker)
                info.type = 13;
            else
                info.name.clear();
            break;
        case Kind::Load:
            info.name.clear();
            break;
    }
    return info;
}

QString ElementText::kindName(const Figure& figure) const {
    switch (figure.glyph) {
        case Glyph::Breaker:
            return tr("断路器");
        case Glyph::Disconnector:
            return tr("隔离刀闸");
        case Glyph::Transformer2:
            return tr("双绕组变压器");
        case Glyph::Transformer3:
            return tr("三绕组变压器");
        case Glyph::Generator:
            return tr("发电机");
        case Glyph::Motor:
            return tr("电动机");
        case Glyph::Feeder:
            return tr("等值电源");
        case Glyph::Load:
            return tr("负荷");
        case Glyph::Capacitor:
            return tr("并联电容器");
        case Glyph::Reactor:
            return tr("并联电抗器");
        case Glyph::TNode:
            return model_.nodes[figure.index].nodeType == 1 ? tr("T接点") : tr("节点");
        case Glyph::None:
            break;
    }
    return figure.kind == Kind::Line ? tr("线路") : tr("母线");
}

QString ElementText::title(const Figure& figure) const {
    return kindName(figure) + ' ' + nameOf(model_, index_, figure);
}

QStringList ElementText::rows(const Figure& figure) const {
    QStringList out;
    switch (figure.kind) {
        case Kind::Bar:
        case Kind::Point:
            out = node(model_.nodes[figure.index], figure.kind == Kind::Bar && index_.isGroup(figure.index));
            break;
        case Kind::Line:
            out = line(model_.lines[figure.index]);
            break;
        case Kind::Transformer2:
            out = transformer2(model_.transformers2[figure.index]);
            break;
        case Kind::Transformer3:
            out = transformer3(model_.transformers3[figure.index]);
            break;
        case Kind::Switch:
            out << tr("节点：%1 — %2").arg(text(model_.switches[figure.index].i), text(model_.switches[figure.index].j))
                << (figure.open ? tr("状态：断开") : tr("状态：闭合"));
            break;
        case Kind::Generator:
            out = generator(model_.generators[figure.index]);
            break;
        case Kind::Shunt:
            out = shunt(model_.shunts[figure.index]);
            break;
        case Kind::Load:
            out = load(model_.loads[figure.index]);
            break;
    }
    if (figure.openAtI) out << tr("I 侧断开");
    if (figure.openAtJ) out << tr("J 侧断开");
    if (figure.off) out << tr("停运");
    return out;
}

QString ElementText::toolTip(const Figure& figure) const {
    QString out = "<p style='white-space:pre'><b>" + title(figure).toHtmlEscaped() + "</b>";
    for (const QString& row : rows(figure)) out += "<br>" + row.toHtmlEscaped();
    return out + "</p>";
}

QString ElementText::baseKv(const std::string& name) const {
    const int n = index_.node(name);
    return n < 0 ? QString() : number(model_.nodes[n].baseKv) + " kV";
}

QStringList ElementText::node(const host::Node& node, bool group) const {
    QStringList out{tr("基准电压：%1 kV").arg(number(node.baseKv))};
    if (!node.station.empty()) out << tr("厂站：%1").arg(text(node.station));
    if (!group) return out;
    QStringList members;
    for (const host::Node& other : model_.nodes)
        if (other.bus == node.bus) members << text(other.name);
    return out << tr("节点：%1").arg(members.join(QStringLiteral("、")));
}

QStringList ElementText::line(const host::Line& l) const {
    QStringList out{tr("节点：%1 — %2").arg(text(l.i), text(l.j)), tr("电压：%1").arg(baseKv(l.i)),
                    tr("正序阻抗：%1（标幺值）").arg(impedance(l.r1, l.x1)),
                    tr("零序阻抗：%1（标幺值）").arg(impedance(l.r0, l.x0))};
    if (l.lengthKm > 0) out << tr("长度：%1 km").arg(number(l.lengthKm));
    if (l.ratedA > 0) out << tr("额定电流：%1 A").arg(number(l.ratedA));
    if (l.maxLoadA > 0) out << tr("最大负荷电流：%1 A").arg(number(l.maxLoadA));
    return out;
}

QStringList ElementText::winding(const host::Winding& w) const {
    const QString grounding = w.grounding == host::Grounding::Delta      ? tr("三角形")
                              : w.grounding == host::Grounding::Grounded ? tr("星形接地")
                                                                         : tr("星形不接地");
    return {tr("%1：%2 kV，%3 MVA，%4").arg(text(w.node), number(w.ratedKv), number(w.ratedMva), grounding)};
}

QStringList ElementText::transformer2(const host::Transformer2& t) const {
    return winding(t.i) + winding(t.j) +
           QStringList{tr("正序阻抗：%1（标幺值）").arg(impedance(t.r1, t.x1)),
                       tr("零序阻抗：%1（标幺值）").arg(impedance(t.r0, t.x0))};
}

QStringList ElementText::transformer3(const host::Transformer3& t) const {
    QStringList out{tr("中性点：%1").arg(text(t.star))};
    for (int w = 0; w < 3; ++w)
        out += winding(t.winding[w]) + QStringList{tr("正序阻抗：%1（标幺值）").arg(impedance(t.r1[w], t.x1[w]))};
    return out;
}

QStringList ElementText::generator(const host::Generator& g) const {
    return {tr("节点：%1").arg(text(g.node)), tr("额定：%1 MVA，%2 kV").arg(number(g.ratedMva), number(g.ratedKv)),
            tr("次暂态阻抗：%1（标幺值）").arg(impedance(g.r1, g.x1)),
            tr("出力：%1 MW，%2 Mvar").arg(number(g.pMw), number(g.qMvar))};
}

QStringList ElementText::shunt(const host::Shunt& s) const {
    return {tr("节点：%1").arg(text(s.node)), tr("额定：%1 Mvar，%2 kV").arg(number(s.ratedMvar), number(s.ratedKv))};
}

QStringList ElementText::load(const host::Load& l) const {
    return {tr("节点：%1").arg(text(l.node)), tr("功率：%1 MW，%2 Mvar").arg(number(l.pMw), number(l.qMvar))};
}

}  // namespace diagram
