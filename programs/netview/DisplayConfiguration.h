#pragma once

#include <QString>
#include <QVector>

/// What the labels of the diagram show and in which order, in the table RLY_RLYDSP.
namespace DisplayConfiguration {

/// A relay type, or a setting of one.
struct Row {
    QString name;
    int number = 0;  ///< place among those shown, from 1; 0 it is not shown
    QString key;     ///< `RTypeNo` of a type, `CDz` of a setting
};

struct Options {
    int AllDsp = -1;  ///< 0 no labels, 1 relay types, 2 settings, else not set yet
    bool RlyAss = false, RlyLoc = false;
};

/// All relay types, those shown first, by their numbers.
QVector<Row> types();
/// Settings of a type likewise; the virtual relay, type 0, has none.
QVector<Row> settings(int rTypeNo);
Options options();

/// Shows a row behind all others, or hides it and closes the gap.
void toggle(QVector<Row>& rows, qsizetype row);

bool storeSettings(int rTypeNo, const QVector<Row>& settings);
/// Everything in one transaction. \param rTypeNo  the type whose settings are given
bool store(int rTypeNo, const QVector<Row>& settings, const QVector<Row>& types, const Options& options);

}  // namespace DisplayConfiguration
