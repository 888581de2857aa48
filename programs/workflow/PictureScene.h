#pragma once

#include <QPointF>
#include <QString>
#include <QStringList>
#include <QVector>

/// What a shape stands for; its colour follows from it. Stages and neighbours have a number of their own as well.
struct PictureInk {
    enum class Kind { Line, Stage, Neighbour, Fault, Bad, Quiet };
    Kind kind = Kind::Quiet;
    int number = 0;
};

/// A shape in the units of the axes.
struct PictureShape {
    enum class Form { Line, Circle, Arc, Mark, Band };  ///< Band: the rectangle between two points
    Form form = Form::Line;
    QVector<QPointF> points{};  ///< of a circle and of an arc the centre
    PictureInk ink{};
    QString tip{};                      ///< what the pointer tells
    double radius = 0;                  ///< of circles and arcs
    double fromAngle = 0, toAngle = 0;  ///< degrees, counter-clockwise from the x axis
    double width = 1.5;                 ///< pixels
    bool dashed = false;
    bool openEnd = false;  ///< goes on behind its last point
    int lift = 0;          ///< pixels upwards, so that lines on one another are told apart
};

struct PictureLabel {
    QPointF at;
    QString text;
    PictureInk ink;
};

struct PictureLegendEntry {
    QString text;
    PictureInk ink;
    PictureShape::Form form = PictureShape::Form::Line;
    bool dashed = false;
};

/// A picture without pixels and colours.
struct PictureScene {
    QString title{}, subtitle{}, xTitle{}, yTitle{};
    QString empty{};  ///< why there is nothing to draw; then no shapes
    bool equalScales = false;
    bool logX = false;
    double left = 0, right = 1, bottom = 0, top = 1;  ///< what the axes show at first
    QVector<PictureShape> shapes{};
    QVector<PictureLabel> labels{};
    QVector<PictureLegendEntry> legend{};
    QStringList findings{};  ///< what is wrong with the settings
    QStringList notes{};
};

/// What of a relay's surroundings the user wants to see.
struct PictureChoice {
    int part = 0;        ///< part in hand, 0 none
    int neighbour = -1;  ///< place among the neighbours, -1 all
    bool secondary = false;
};
