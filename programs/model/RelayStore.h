#pragma once

#include <QString>
#include <QVector>

#include "programs/frame/Location.h"

/// A relay to be installed.
struct RelayRequest {
    Location at;
    int RTypeNo = 0;
    double ctRatio = 1;
    double ptRatio = 1;
    QString origin;  ///< where the wish stands, "FILE:LINE", for messages; may be empty
};

/// A row of RLY_RUD.
struct InstalledRelay {
    int RNo = 0;
    int RTypeNo = 0;
    QString RTypeCode;
    int RType = 0;
    Location at;
    bool Valid = true;
    double ctRatio = 1;
    double ptRatio = 1;
};

/// The installed relays of the project. All or nothing: an operation that returns false or -1 has changed nothing and
/// has said why in the dock.
class RelayStore {
  public:
    /// Every place for a relay at elements of one kind (`RType`; 12 three-winding transformers), from the base network.
    static QVector<Location> locations(int elementCode);
    /// Line ends at nodes of a nominal voltage, in kV. Ends at a T node are left out: no breaker stands there.
    static QVector<Location> lineEnds(double level);
    /// The places of one element on which relays of this type stand; side 0 both ends.
    static QVector<Location> placesOf(const QString& element, int side, int rType);

    /// Installs with default settings and sensitivity parameters; a relay of that type that stands there already keeps
    /// what it has. A virtual relay at the place gives way. \return number of relays installed, -1 on refusal
    static int install(const QVector<RelayRequest>& requests);
    /// Removes relays with their settings, faults and the sensitivity parameters of their types at their places.
    static bool remove(const QVector<int>& relays);
    /// \param rTypeNo  -1: all types
    static QVector<InstalledRelay> list(int rTypeNo = -1);

    /// Limits of a voltage level, in kV. \return false with a message for a level that is none
    static bool voltageBand(double level, double* lowest, double* highest);
};
