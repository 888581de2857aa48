#pragma once

#include <QHash>
#include <QString>
#include <QVector>
#include <optional>

/// A part of a relay with a value and, if it is known, a time.
struct PictureStage {
    int PNo = 0;
    double value = 0;            ///< ohm or A, primary; above 0
    std::optional<double> time;  ///< s
};

/// A relay whose parts can be drawn.
struct PictureRelay {
    int RNo = 0;
    int RTypeNo = 0;
    bool impedance = false;  ///< the values are impedances, else currents
    QString label;
    double toSecondary = 1;  ///< factor of its values
    bool inCase = false;     ///< the values are the working ones of the case, else the stored ones
    QVector<PictureStage> stages;
    QStringList missing;  ///< parts without a value or a time, a sentence each

    [[nodiscard]] const PictureStage* stage(int pNo) const;
};

/// The relays with their parts, by number, from the working table of the case where they stand in it, else as stored.
/// A time of 0 s counts where a rule gave it, or for the first part as long as no rule has given that part anything.
QHash<int, PictureRelay> pictureRelays(int caseNo, const QVector<int>& relays);

/// "Ⅱ段"
QString stageName(int pNo);
