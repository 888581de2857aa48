#pragma once

#include <QString>
#include <QVector>

#include "programs/engine/CRelayInputCal.h"
#include "programs/frame/EditSession.h"
#include "programs/frame/Location.h"

/// The stored sensitivity parameters, RLY_FKLM, of the places of a sensitivity run while the user confirms them: as the
/// run computed them beside those of before.
class SensitivityParameters {
  public:
    struct Parameter {
        int RuleNo = 0;
        QString Note;
        QString value;          ///< as stored now
        QString before;         ///< as stored before the run
        bool isStored = false;  ///< without a row there is nothing that could be confirmed

        /// The run gave nothing above 0, and the user neither.
        [[nodiscard]] bool lacksValue() const { return isStored && !isUsable(value); }
    };
    struct Place {
        Location at;
        QString label;
        QVector<Parameter> parameters;  ///< by rule

        [[nodiscard]] bool lacksValue() const;
    };

    /// \param caseNo  number under which the results of the run stand  \param workDir  ending in a slash
    SensitivityParameters(int rTypeNo, int caseNo, const QString& workDir);

    /// Copies what is stored, then stores the results of the run in its place.
    /// \return false when that failed; nothing can be confirmed then
    bool open();
    [[nodiscard]] const QVector<Place>& places() const { return places_; }

    /// Stores the parameters of a place, all or none. One that is as it came stays as it came.
    /// \param values  as typed, in the order of the place's parameters
    /// \return the first typed value that is not a number above 0 (told with a message), -1 when all are stored
    static constexpr int notStored = -2;  ///< refused by the database, which has told why
    int SavePara(int place, const QStringList& values);
    /// Whether a sensitivity can be formed with it: a number above 0.
    [[nodiscard]] static bool isUsable(const QString& value);

    /// Keeps what is stored and makes the sensitivity rows anew from it. Says at how many places a parameter lacks its
    /// value. \return false when it could not be kept
    bool confirm();
    /// Everything back to before open().
    bool cancel();

  private:
    bool read();
    void tellMissing() const;

    int rTypeNo_, caseNo_;
    CRelayInputCal input_;
    EditSession session_;
    QVector<Place> places_;
};
