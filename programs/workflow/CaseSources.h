#pragma once

#include <QStringList>
#include <QVector>

/// The networks on which a case may stand, and the relay types for which one may be defined.
namespace CaseSources {

struct LoadFlow {
    int number = 0;  ///< 0 belongs to the schemes and is not offered
    QString name;
};
/// By number. When there is none the dock says so.
QVector<LoadFlow> loadFlows();
/// Those whose flow has been calculated; likewise.
QVector<LoadFlow> calculatedLoadFlows();
QStringList namesOf(const QVector<LoadFlow>& loadFlows);
/// Number of a load-flow case; -1 when no case bears the name.
int loadFlowNumber(const QString& name);

/// By name. When there is none the dock says so.
QStringList schemes();

struct RelayType {
    int number = 0;
    QString code;
};
/// By number.
QVector<RelayType> relayTypes();

}  // namespace CaseSources
