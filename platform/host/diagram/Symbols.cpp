#include "platform/host/diagram/Symbols.h"

#include <QPainter>
#include <QPainterPath>

namespace diagram {

namespace {

constexpr double winding = 9;  ///< radius of a winding's circle

void pen(QPainter& p, const SymbolLook& look, int end, bool filled = false) {
    p.setPen(QPen(look.colours[end], look.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(filled ? QBrush(look.colours[end]) : QBrush(look.background));
}

void breaker(QPainter& p, const SymbolLook& look) {
    pen(p, look, 0, !look.open);
    p.drawRect(QRectF(-4.5, -6.5, 9, 13));
}

void disconnector(QPainter& p, const SymbolLook& look) {
    p.setPen(Qt::NoPen);
    p.setBrush(look.background);
    p.drawRect(QRectF(-1.5, -6, 3, 12));
    pen(p, look, 0);
    p.drawLine(QPointF(-4, -6), QPointF(4, -6));
    p.drawLine(QPointF(0, 6), look.open ? QPointF(6.5, -3.5) : QPointF(0, -6));
    pen(p, look, 0, true);
    p.drawEllipse(QPointF(0, 6), 1.2, 1.2);
}

void windingSign(QPainter& p, const QPointF& at, char sign, double angle) {
    p.save();
    p.translate(at);
    p.rotate(-angle);
    if (sign == 'D') p.drawPolygon(QPolygonF{{{0, -3.6}, {3.4, 2.4}, {-3.4, 2.4}}});
    if (sign == 'Y' || sign == 'N') {
        for (const QPointF& tip : {QPointF(-3, -3.2), QPointF(3, -3.2), QPointF(0, 3.8)})
            p.drawLine(QPointF(0, 0), tip);
    }
    if (sign == 'N') p.drawLine(QPointF(-2.4, 3.8), QPointF(2.4, 3.8));
    p.restore();
}

void windings(QPainter& p, const SymbolLook& look, std::initializer_list<QPointF> middles, double angle) {
    int k = 0;
    for (const QPointF& at : middles) {
        pen(p, look, k++);
        p.drawEllipse(at, winding, winding);
    }
    // Once more without filling: the circles overlap.
    k = 0;
    for (const QPointF& at : middles) {
        pen(p, look, k);
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(at, winding, winding);
        windingSign(p, at + QPointF(0, at.y() < 0 ? -1.5 : 1.5), look.windings[k], angle);
        ++k;
    }
}

void machine(QPainter& p, const SymbolLook& look, double angle, bool motor) {
    pen(p, look, 0);
    p.drawEllipse(QPointF(0, 0), 10, 10);
    p.save();
    p.rotate(-angle);
    QPainterPath sign(motor ? QPointF(-4, 4.5) : QPointF(-6, 0));
    if (motor) {
        for (const QPointF& at : {QPointF(-4, -4), QPointF(0, 1.5), QPointF(4, -4), QPointF(4, 4.5)}) sign.lineTo(at);
    } else {
        sign.cubicTo({-3.5, -6}, {-2, -6}, {0, 0});
        sign.cubicTo({2, 6}, {3.5, 6}, {6, 0});
    }
    p.setBrush(Qt::NoBrush);
    p.drawPath(sign);
    p.restore();
}

void feeder(QPainter& p, const SymbolLook& look) {
    pen(p, look, 0);
    p.drawRect(QRectF(-10, -10, 20, 20));
    for (double k : {-10.0, 0.0, 10.0}) {
        p.drawLine(QPointF(std::max(-10.0, k - 10), std::min(10.0, k + 10)),
                   QPointF(std::min(10.0, k + 10), std::max(-10.0, k - 10)));
    }
}

void load(QPainter& p, const SymbolLook& look) {
    pen(p, look, 0, true);
    p.drawPolygon(QPolygonF{{{-6, -8}, {6, -8}, {0, 4}}});
}

void capacitor(QPainter& p, const SymbolLook& look) {
    p.setPen(Qt::NoPen);
    p.setBrush(look.background);
    p.drawRect(QRectF(-9, -10, 18, 18));
    pen(p, look, 0);
    p.drawLine(QPointF(0, -10), QPointF(0, -4));
    p.drawLine(QPointF(-8, -4), QPointF(8, -4));
    p.drawLine(QPointF(-8, 0), QPointF(8, 0));
    p.drawLine(QPointF(0, 0), QPointF(0, 7));
    for (int k = 0; k < 3; ++k) p.drawLine(QPointF(-6 + 2 * k, 7 + 3 * k), QPointF(6 - 2 * k, 7 + 3 * k));
}

void reactor(QPainter& p, const SymbolLook& look) {
    pen(p, look, 0);
    p.drawEllipse(QPointF(0, 0), 9, 9);
    p.setPen(Qt::NoPen);
    p.drawRect(QRectF(-11, -11, 11, 11).adjusted(0, 0, -0.8, -0.8));
    pen(p, look, 0);
    p.drawLine(QPointF(0, -10), QPointF(0, 0));
    p.drawLine(QPointF(0, 0), QPointF(-9, 0));
    p.drawLine(QPointF(0, 9), QPointF(0, 13));
    p.drawLine(QPointF(-5, 13), QPointF(5, 13));
}

}  // namespace

void paintSymbol(QPainter& painter, Glyph glyph, const SymbolLook& look, double angle) {
    switch (glyph) {
        case Glyph::Breaker:
            return breaker(painter, look);
        case Glyph::Disconnector:
            return disconnector(painter, look);
        case Glyph::Transformer2:
            return windings(painter, look, {QPointF(0, -6), QPointF(0, 6)}, angle);
        case Glyph::Transformer3:
            return windings(painter, look, {QPointF(0, -6), QPointF(-7, 5), QPointF(7, 5)}, angle);
        case Glyph::Generator:
        case Glyph::Motor:
            return machine(painter, look, angle, glyph == Glyph::Motor);
        case Glyph::Feeder:
            return feeder(painter, look);
        case Glyph::Load:
            return load(painter, look);
        case Glyph::Capacitor:
            return capacitor(painter, look);
        case Glyph::Reactor:
            return reactor(painter, look);
        case Glyph::TNode:
            pen(painter, look, 0, true);
            painter.drawEllipse(QPointF(0, 0), 2.2, 2.2);
            return;
        case Glyph::None:
            return;
    }
}

}  // namespace diagram
